#pragma once

#include <stdexcept>
#include <string>

namespace app {

enum class ExitStatus {
    done = 0,
    failure = 1,
    wrongUsage = 2,
    malformedCatalogue = 3,
    nothingFound = 4,
};

// Ends the command with a status and with a message: printable lines for standard error, each with its line end.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string& message) : std::runtime_error(message), m_status(status) {}

    ExitStatus status() const noexcept { return m_status; }

private:
    ExitStatus m_status;
};

}  // namespace app
