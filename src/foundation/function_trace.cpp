#include "foundation/function_trace.hpp"

#include <boost/log/core/core.hpp>
#include <utility>

#include "foundation/diagnostic.hpp"
#include "foundation/log/logger_parts.hpp"
#include "foundation/record_composer.hpp"

namespace foundation::log {

void function_trace::enter() {
    if (diagnostic entry(*logger, level::enter); entry) {
        entry.write(function);
    }
    add_depth(*logger, 1);
}

void function_trace::leave() noexcept {
    try {
        add_depth(*logger, -1);
        log_exit();
    } catch (...) {  // the record is lost; the operation's outcome is unaffected
    }
}

void function_trace::log_exit() {
    boost::log::record record = open_record(*logger, level::exit);
    if (!record) {
        return;
    }
    boost::log::record_ostream stream(record);
    stream << function << (std::uncaught_exceptions() > uncaught ? " [throw]" : "");
    stream.flush();
    logger->parts().core->push_record(std::move(record));
}

}  // namespace foundation::log
