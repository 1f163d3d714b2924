#include "check/portable.hpp"

#include <fmt/format.h>

#include <boost/locale/utf.hpp>
#include <charconv>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "check/Problems.hpp"
#include "check/pointer.hpp"
#include "json/lexical_reader.hpp"

namespace app::check {

namespace {

// Goes through strings and what is between them. There is no need to know more of the structure.
class Scan {
public:
    Scan(std::string_view text, Problems& problems) : m_text(text), m_problems(problems) {}

    void run();

private:
    // An object or array, and where the scan is in it.
    struct Level {
        bool isArray;
        std::size_t index = 0;
        std::string_view key = {};  // as written, with its quotes; empty before the colon
    };

    void report(const Code& code, std::size_t length, std::string message);
    std::string pointer() const;
    void readInString();
    void readOutside();
    void readPunctuation(char byte);
    void readNumber();
    void readEscape();
    void readCharacter();
    void countStray();

    std::string_view m_text;
    Problems& m_problems;
    std::size_t m_offset = 0;
    bool m_isInString = false;
    std::size_t m_stringBegin = 0;  // of the string that is read, or of the last one
    std::vector<Level> m_levels;
    std::size_t m_strayBytes = 0;  // that aren't UTF-8
    Problem m_firstStray{&code("invalid-utf8"), {0, 1}, {}, {}};
};

bool isControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20;
}

bool isNumeric(char byte) {
    return (byte >= '0' && byte <= '9') || byte == '-';
}

// The key as the reader decodes it. Its syntax is right.
std::string decoded(std::string_view quoted) {
    const std::string text(quoted);
    auto position = text.begin();
    std::string key;
    foundation::json::parse_string(key, position, text.end(), 0);
    return key;
}

std::string adviceFor(char control) {
    return control == '\n'   ? "a line feed in a string: write it as \\n"
           : control == '\t' ? "a tab in a string: write it as \\t"
                             : fmt::format("a control character: write it as \\u{:04x}", control);
}

void Scan::run() {
    while (m_offset < m_text.size()) {
        m_isInString ? readInString() : readOutside();
    }
    if (m_strayBytes > 0) {
        m_firstStray.message =
            m_strayBytes == 1
                ? "a byte that isn't UTF-8: save the file as UTF-8"
                : fmt::format("the first of {} bytes that aren't UTF-8: save the file as UTF-8", m_strayBytes);
        m_problems.add(std::move(m_firstStray));
    }
}

void Scan::report(const Code& code, std::size_t length, std::string message) {
    m_problems.add(
        {&code, {m_offset, length}, std::move(message), m_problems.mayKeep(code, m_offset) ? pointer() : ""});
}

// Of the value that is read; in a key, of its object.
std::string Scan::pointer() const {
    std::string text;
    for (const Level& level : m_levels) {
        if (level.isArray) {
            appendTo(text, std::to_string(level.index));
        } else if (!level.key.empty()) {
            appendTo(text, decoded(level.key));
        }
    }
    return text;
}

void Scan::readInString() {
    const char byte = m_text[m_offset];
    if (byte == '\\') {
        readEscape();
    } else if (isControl(byte)) {
        report(code("control-character"), 1, adviceFor(byte));
        ++m_offset;
    } else {
        m_isInString = byte != '"';
        readCharacter();
    }
}

void Scan::readOutside() {
    const char byte = m_text[m_offset];
    if (byte == '\f' || byte == '\v') {
        report(code("not-rfc8259"), 1, "form feed and vertical tab are no white space in JSON");
    }
    if (isNumeric(byte)) {
        readNumber();
    } else {
        readPunctuation(byte);
        ++m_offset;
    }
}

void Scan::readPunctuation(char byte) {
    switch (byte) {
        case '"':
            m_isInString = true;
            m_stringBegin = m_offset;
            break;
        case '{':
        case '[':
            m_levels.push_back({byte == '['});
            break;
        case '}':
        case ']':
            m_levels.pop_back();
            break;
        case ':':
            m_levels.back().key = m_text.substr(m_stringBegin, m_offset - m_stringBegin);
            break;
        case ',':
            ++m_levels.back().index;
            m_levels.back().key = {};
            break;
        default:
            break;
    }
}

void Scan::readNumber() {
    const std::size_t end = std::min(m_text.find_first_not_of("0123456789+-.eE", m_offset), m_text.size());
    const std::string_view number = m_text.substr(m_offset, end - m_offset);
    const std::string_view digits = number.substr(number.front() == '-' ? 1 : 0);
    if (digits.size() > 1 && digits[0] == '0' && digits[1] >= '0' && digits[1] <= '9') {
        report(code("not-rfc8259"), number.size(), "a number with leading zeros");
    }
    double value = 0;
    if (std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc::result_out_of_range) {
        report(code("number-range"), number.size(), "a number that no double holds");
    }
    m_offset = end;
}

// The unit of the \u escape at the offset; 0 if there is none.
unsigned unitAt(std::string_view text, std::size_t offset) {
    unsigned unit = 0;
    if (text.substr(std::min(offset, text.size()), 2) == "\\u" && text.size() >= offset + 6) {
        std::from_chars(&text[offset + 2], &text[offset + 2] + 4, unit, 16);
    }
    return unit;
}

void Scan::readEscape() {
    const unsigned unit = unitAt(m_text, m_offset);
    const bool isHigh = unit >= 0xD800 && unit <= 0xDBFF;
    const unsigned second = isHigh ? unitAt(m_text, m_offset + 6) : 0;
    const bool isPair = second >= 0xDC00 && second <= 0xDFFF;
    if ((unit >= 0xD800 && unit <= 0xDFFF) && !isPair) {
        report(code("replaced-surrogate"), 6, "half of a surrogate pair, which becomes U+FFFD");
    }
    m_offset += unit == 0 ? 2 : isPair ? 12 : 6;
}

// One problem for the file: to save it in another encoding mends all.
void Scan::countStray() {
    if (m_strayBytes++ == 0) {
        m_firstStray.place.offset = m_offset;
        m_firstStray.pointer = pointer();
    }
}

void Scan::readCharacter() {
    namespace utf = boost::locale::utf;
    const char* const begin = m_text.data() + m_offset;
    const char* end = begin;
    const auto point = utf::utf_traits<char>::decode(end, m_text.data() + m_text.size());
    if (point == utf::illegal || point == utf::incomplete) {
        countStray();
        end = begin + 1;
    }
    m_offset += static_cast<std::size_t>(end - begin);
}

}  // namespace

void checkPortable(std::string_view text, Problems& problems) {
    Scan(text, problems).run();
}

}  // namespace app::check
