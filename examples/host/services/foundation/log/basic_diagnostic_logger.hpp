#pragma once

#include <memory>
#include <string>

#include "foundation/log/level.hpp"

namespace foundation::log {

struct logger_parts;

template <class CharT>
class basic_diagnostic_logger;

// Writes errors, and nothing else.
template <>
class basic_diagnostic_logger<char> {
public:
    explicit basic_diagnostic_logger(const std::string& name);
    ~basic_diagnostic_logger();

    bool enabled(level which) const noexcept { return which == level::error; }
    logger_parts& parts() noexcept { return *m_parts; }

private:
    std::unique_ptr<logger_parts> m_parts;
};

}  // namespace foundation::log
