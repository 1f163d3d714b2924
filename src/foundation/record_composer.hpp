#pragma once

#include <boost/log/core/record.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <locale>
#include <memory>

#include "foundation/log/basic_diagnostic_logger.hpp"

namespace foundation::log {

// Opens a record at a level: empty if logging is off or the core refuses it. The logger's lock is held for the
// opening alone.
boost::log::record open_record(basic_diagnostic_logger<char>& logger, level which);

// Changes the calling thread's nesting depth in the logger.
void add_depth(basic_diagnostic_logger<char>& logger, long change);

// Gives the stream the locale in which messages are written: plain numbers, and a conversion of UTF-16 that is total,
// so that no text in a message can fail.
void imbue_message_locale(boost::log::record_ostream& stream);

// An open record with the stream that writes its message. Gives the stream back at the end of its life; a record that
// wasn't pushed by then is dropped.
class record_composer {
public:
    // Takes over a record that isn't empty.
    record_composer(basic_diagnostic_logger<char>& logger, boost::log::record record);
    record_composer(const record_composer&) = delete;
    record_composer& operator=(const record_composer&) = delete;
    ~record_composer() = default;

    boost::log::record_ostream& stream() noexcept { return m_compound->stream; }
    void push();

private:
    using stream_provider = boost::log::aux::stream_provider<char>;

    // The provider keeps the stream for the thread's next record, perhaps longer than this library stays loaded: it
    // goes back without the library's locale.
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
