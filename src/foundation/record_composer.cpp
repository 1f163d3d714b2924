#include "foundation/record_composer.hpp"

#include <algorithm>
#include <boost/log/sources/severity_feature.hpp>
#include <cwchar>
#include <locale>
#include <mutex>
#include <utility>

#include "fl/i18n.hpp"
#include "foundation/log/logger_parts.hpp"

namespace foundation::log {

namespace {

constexpr bool is_high_surrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool is_low_surrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Converts UTF-16 by the rules of fl::i18n::to_string; each text must be given whole. The standard facet throws on an
// unpaired surrogate and loops forever on a text that ends in a high one.
class total_codecvt : public std::codecvt<char16_t, char, std::mbstate_t> {
protected:
    result do_out(state_type& /*state*/, const char16_t* from, const char16_t* from_end, const char16_t*& from_next,
                  char* to, char* to_end, char*& to_next) const override {
        for (from_next = from, to_next = to; from_next != from_end;) {
            const bool pair =
                from_end - from_next > 1 && is_high_surrogate(from_next[0]) && is_low_surrogate(from_next[1]);
            const std::ptrdiff_t units = pair ? 2 : 1;
            const std::string bytes = fl::i18n::to_string(fl::ustring(from_next, from_next + units));
            if (to_end - to_next < static_cast<std::ptrdiff_t>(bytes.size())) {
                return partial;
            }
            to_next = std::copy(bytes.begin(), bytes.end(), to_next);
            from_next += units;
        }
        return ok;
    }
};

// Built at load time: it must outlive every object whose destructor waits for an event handler, which may log.
const std::locale s_messageLocale(std::locale::classic(), new total_codecvt);

}  // namespace

boost::log::record open_record(basic_diagnostic_logger<char>& logger, level which) {
    logger_parts& parts = logger.parts();
    if (!parts.core->get_logging_enabled()) {
        return {};
    }
    const std::lock_guard lock(parts.lock);
    boost::log::sources::aux::get_severity_level() = static_cast<std::uintmax_t>(which);
    return parts.core->open_record(parts.attributes);
}

void add_depth(basic_diagnostic_logger<char>& logger, long change) {
    auto& slot = logger.parts().depth;
    const long depth = reinterpret_cast<long>(slot.get());
    slot.reset(reinterpret_cast<long*>(depth + change));  // NOLINT(performance-no-int-to-ptr): it holds a number
}

void imbue_message_locale(boost::log::record_ostream& stream) {
    stream.imbue(s_messageLocale);
}

record_composer::record_composer(basic_diagnostic_logger<char>& logger, boost::log::record record)
    : m_logger(logger), m_record(std::move(record)), m_compound(stream_provider::allocate_compound(m_record)) {
    imbue_message_locale(stream());
}

void record_composer::push() {
    stream().flush();
    m_logger.parts().core->push_record(std::move(m_record));
}

}  // namespace foundation::log
