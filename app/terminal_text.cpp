#include "terminal_text.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <clocale>
#include <cwchar>
#include <vector>

#include "fl/i18n.hpp"

namespace app {

namespace {

// True for what most texts are: every byte is a character that stays and takes one column.
bool isPlain(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char byte) { return byte >= ' ' && byte <= '~'; });
}

// The text's characters in UTF-16, one or two units each; a byte that is no UTF-8 is the unit U+DC00 + byte.
std::vector<fl::ustring> characters(const std::string& text) {
    const fl::ustring units = fl::i18n::to_ustring(text);
    std::vector<fl::ustring> result;
    for (std::size_t start = 0; start < units.size(); start += result.back().size()) {
        const bool isPair = units[start] >= 0xD800 && units[start] <= 0xDBFF;  // the conversion leaves none alone
        result.push_back(units.substr(start, isPair ? 2 : 1));
    }
    return result;
}

bool needsEscape(const fl::ustring& character) {
    const char16_t unit = character.front();
    return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F) || (unit >= 0xDC80 && unit <= 0xDCFF);
}

std::string escaped(const std::string& bytes) {
    std::string result;
    for (const char byte : bytes) {
        result += fmt::format("\\x{:02x}", static_cast<unsigned char>(byte));
    }
    return result;
}

char32_t codePoint(const fl::ustring& character) {
    if (character.size() == 1) {
        return character.front();
    }
    return 0x10000 + ((character[0] - 0xD800U) << 10) + (character[1] - 0xDC00U);
}

// Gives the calling thread's wide characters their Unicode meaning for as long as it lives. Where the system lacks
// the locale the thread's own stays. The locale is opened once, which takes longer than a whole row of a table.
class UnicodeLocale {
public:
    UnicodeLocale() : m_previous(uselocale(unicode())) {}
    UnicodeLocale(const UnicodeLocale&) = delete;
    UnicodeLocale& operator=(const UnicodeLocale&) = delete;
    ~UnicodeLocale() { uselocale(m_previous); }

private:
    static locale_t unicode() {
        static const locale_t s_locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return s_locale;
    }

    locale_t m_previous;
};

// One where the locale knows no width.
std::size_t columns(char32_t character) {
    const int width = wcwidth(static_cast<wchar_t>(character));
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

}  // namespace

std::string printable(const std::string& text) {
    if (isPlain(text)) {
        return text;
    }
    std::string result;
    for (const fl::ustring& character : characters(text)) {
        const std::string bytes = fl::i18n::to_string(character);
        result += needsEscape(character) ? escaped(bytes) : bytes;
    }
    return result;
}

std::size_t displayWidth(const std::string& text) {
    if (isPlain(text)) {
        return text.size();
    }
    const UnicodeLocale locale;
    std::size_t width = 0;
    for (const fl::ustring& character : characters(text)) {
        width += columns(codePoint(character));
    }
    return width;
}

}  // namespace app
