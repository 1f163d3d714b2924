#pragma once

#include <cstdint>
#include <exception>
#include <string_view>

#include "foundation/log/basic_diagnostic_logger.hpp"

namespace foundation::log {

// Traces a scope: logs the operation's signature at `enter` on construction and at `exit` on destruction, with
// everything logged in between one level deeper. The exit record ends in " [throw]" if an exception leaves the scope.
// Refers to the texts, which are literals. An object belongs to one thread.
//
// The `enter` level is tested once, on construction, so each increment of the depth has its decrement. The exit
// record ignores the `exit` level; only the core's filters can drop it.
class function_trace {
public:
    // Throws what the entry record throws; the scope isn't traced then.
    function_trace(basic_diagnostic_logger<char>& log, std::string_view signature, std::string_view module,
                   std::int32_t moduleLine)
        : logger(&log),
          enabled(log.enabled(level::enter)),
          function(signature),
          file(module),
          line(moduleLine),
          uncaught(enabled ? std::uncaught_exceptions() : 0) {
        if (enabled) {
            enter();
        }
    }
    function_trace(const function_trace&) = delete;
    function_trace& operator=(const function_trace&) = delete;
    ~function_trace() {
        if (enabled) {
            leave();
        }
    }

private:
    void enter();
    void leave() noexcept;
    void log_exit();

    basic_diagnostic_logger<char>* logger;
    bool enabled;
    std::string_view function;               // the signature
    [[maybe_unused]] std::string_view file;  // for a debugger; not logged
    [[maybe_unused]] std::int32_t line;
    std::int32_t uncaught;  // std::uncaught_exceptions() at construction; 0 if the level is off
};

}  // namespace foundation::log

// Traces the rest of the enclosing block with the module's s_logger.
#define FUNCTION_TRACE(signature) \
    const ::foundation::log::function_trace functionTrace(s_logger, signature, __FILE_NAME__, __LINE__)
