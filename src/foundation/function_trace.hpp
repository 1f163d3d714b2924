#pragma once

#include <cstdint>
#include <exception>
#include <string_view>

#include "foundation/log/basic_diagnostic_logger.hpp"

namespace foundation::log {

// Marks an operation in the log: a record at `enter` where it is created, one at `exit` where it goes, both with the
// operation's signature, and everything logged between them one level deeper. The exit record ends in " [throw]"
// where an exception leaves the scope. The texts are literals, which the scope refers to. Lives on the stack of one
// thread.
//
// Whether the `enter` level is on counts at the creation alone, so depth always comes out even. The exit record
// doesn't ask for the `exit` level: only the core can refuse it.
class function_trace {
public:
    // Throws what the entry record throws; nothing is traced then.
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
    [[maybe_unused]] std::string_view file;  // where the scope stands: for a debugger, in no record
    [[maybe_unused]] std::int32_t line;
    std::int32_t uncaught;  // exceptions in flight at the start; not asked for while the level is off
};

}  // namespace foundation::log

// Opens a trace scope on the module's s_logger, to the end of the enclosing block.
#define FUNCTION_TRACE(signature) \
    const ::foundation::log::function_trace functionTrace(s_logger, signature, __FILE_NAME__, __LINE__)
