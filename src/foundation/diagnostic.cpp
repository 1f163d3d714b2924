#include "foundation/diagnostic.hpp"

#include "fl/i18n.hpp"
#include "foundation/record_composer.hpp"

namespace foundation::log {

void diagnostic::deleter::operator()(record_composer* record) const noexcept {
    delete record;
}

void diagnostic::open(basic_diagnostic_logger<char>& logger, level which) {
    if (boost::log::record record = open_record(logger, which)) {
        m_record.reset(new record_composer(logger, std::move(record)));
    }
}

void diagnostic::put(std::string_view text) {
    m_record->stream() << text;
}

void diagnostic::put(const fl::ustring& text) {
    put(fl::i18n::to_string(text));
}

void diagnostic::put(utf16_piece piece) {
    m_record->stream() << piece.text;
}

void diagnostic::push() {
    m_record->push();
}

}  // namespace foundation::log
