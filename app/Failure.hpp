#pragma once

#include <stdexcept>
#include <string>

namespace app {

// The exit statuses that --help documents.
enum class ExitStatus {
    done = 0,
    failure = 1,
    wrongUsage = 2,
    malformedCatalogue = 3,
    nothingFound = 4,
};

// Ends the command with a status and a message for standard error: printable lines, each with its line feed.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string& message) : std::runtime_error(message), m_status(status) {}

    ExitStatus status() const noexcept { return m_status; }

private:
    ExitStatus m_status;
};

}  // namespace app
