#pragma once

#include <boost/log/core/record.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <locale>
#include <memory>

#include "foundation/log/basic_diagnostic_logger.hpp"

namespace foundation::log {

// Opens a record at a level; empty if logging is off or the core refuses it. Holds the logger's lock only meanwhile.
boost::log::record open_record(basic_diagnostic_logger<char>& logger, level which);

// Changes the calling thread's nesting depth in the logger.
void add_depth(basic_diagnostic_logger<char>& logger, long change);

// Imbues the locale of messages: no digit grouping, and a UTF-16 conversion that accepts any text, so that no message
// fails on its content.
void imbue_message_locale(boost::log::record_ostream& stream);

// An open record and the stream that writes its message. The destructor returns the stream and drops a record that
// wasn't pushed.
class record_composer {
public:
    // The record must not be empty.
    record_composer(basic_diagnostic_logger<char>& logger, boost::log::record record);
    record_composer(const record_composer&) = delete;
    record_composer& operator=(const record_composer&) = delete;
    ~record_composer() = default;

    boost::log::record_ostream& stream() noexcept { return m_compound->stream; }
    void push();

private:
    using stream_provider = boost::log::aux::stream_provider<char>;

    // The provider reuses the stream, perhaps after this library is unloaded, so the library's locale is removed
    // first.
    struct return_compound {
        void operator()(stream_provider::stream_compound* compound) const noexcept {
            compound->stream.imbue(std::locale::classic());
            stream_provider::release_compound(compound);
        }
    };

    basic_diagnostic_logger<char>& m_logger;
    boost::log::record m_record;
    std::unique_ptr<stream_provider::stream_compound, return_compound> m_compound;  // on loan from the provider
};

}  // namespace foundation::log
