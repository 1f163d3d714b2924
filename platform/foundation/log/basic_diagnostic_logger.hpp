#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "foundation/log/level.hpp"

namespace foundation::log {

struct logger_parts;

template <class CharT>
class basic_diagnostic_logger;

// A named source of log records on the Boost.Log core; diagnostic.hpp and function_trace.hpp write the records. They
// carry the attributes "Channel" (the name, std::string), "Severity" (the level's value, int) and "Depth" (the
// calling thread's nesting depth in this logger, long). Any thread may use a logger. The mask holds the enabled
// levels; the host sets it by name.
template <>
class basic_diagnostic_logger<char> {
public:
    explicit basic_diagnostic_logger(const std::string& name);
    basic_diagnostic_logger(const basic_diagnostic_logger&) = delete;
    basic_diagnostic_logger& operator=(const basic_diagnostic_logger&) = delete;
    ~basic_diagnostic_logger();

    // A relaxed load: each thread sees a change of the mask at some later statement.
    bool enabled(level which) const noexcept {
        return (m_levelMask.load(std::memory_order_relaxed) & static_cast<std::uint32_t>(which)) != 0;
    }
    void setLevelMask(std::uint32_t mask) noexcept { m_levelMask.store(mask, std::memory_order_relaxed); }

    // What records are opened with. Defined in logger_parts.hpp, for the few files that need Boost.Log.
    logger_parts& parts() noexcept { return *m_parts; }

private:
    std::atomic<std::uint32_t> m_levelMask;
    std::unique_ptr<logger_parts> m_parts;
};

}  // namespace foundation::log
