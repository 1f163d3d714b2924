#include "json/ParserException.hpp"

#include <algorithm>
#include <iomanip>
#include <iterator>
#include <locale>
#include <sstream>

namespace foundation::json {

namespace {

using Position = std::string::const_iterator;

constexpr std::ptrdiff_t s_reach = 80;  // bytes of the line shown on either side of the failure

std::size_t bytes_between(Position first, Position last) {
    return static_cast<std::size_t>(last - first);
}

Position find_line_start(Position begin, Position current) {
    return std::find(std::make_reverse_iterator(current), std::make_reverse_iterator(begin), '\n').base();
}

Position find_piece_end(Position current, Position end) {
    return std::find(current, current + std::min(s_reach, end - current), '\n');
}

}  // namespace

struct ParserException::Location {
    std::size_t offset;
    std::size_t line;
    std::size_t column;
    std::size_t caret;
    std::string source;

    Location(Position begin, Position current, Position end)
        : offset(bytes_between(begin, current)),
          line(1 + static_cast<std::size_t>(std::count(begin, current, '\n'))),
          column(bytes_between(find_line_start(begin, current), current)),
          caret(std::min(column, static_cast<std::size_t>(s_reach))),
          source(current - static_cast<std::ptrdiff_t>(caret), find_piece_end(current, end)) {}

    std::string message(ParseResult result, const std::string& description) const {
        std::ostringstream text;
        text.exceptions(std::ios_base::badbit);  // so that bad_alloc propagates instead of truncating the message
        text.imbue(std::locale::classic());      // the global locale may group digits
        text << "JSON ParserException (E" << std::setw(4) << std::setfill('0') << static_cast<std::uint32_t>(result)
             << "): " << description << " (Line " << line << ", Column " << column << ")\n\t" << source << "\n\t"
             << std::string(caret, ' ') << '^';
        return text.str();
    }
};

ParserException::ParserException(const Position& begin, const Position& current, const Position& end,
                                 ParseResult result, const std::string& description)
    : ParserException(result, Location(begin, current, end), description) {}

ParserException::ParserException(ParseResult result, const Location& location, const std::string& description)
    : std::runtime_error(location.message(result, description).c_str()),
      m_result(result),
      m_offset(location.offset),
      m_line(location.line),
      m_column(location.column),
      m_caret(location.caret),
      m_source(location.source) {}

ParserException::~ParserException() = default;

}  // namespace foundation::json
