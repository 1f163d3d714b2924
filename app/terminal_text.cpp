#include "terminal_text.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cwchar>
#include <vector>

#include "UnicodeLocale.hpp"
#include "fl/i18n.hpp"
#include "text.hpp"

namespace app {

namespace {

// True if every byte is printable ASCII, as in most texts: nothing needs an escape, and each byte takes one column.
bool isPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char byte) { return byte >= ' ' && byte <= '~'; });
}

// The text's characters in UTF-16, one or two units each. A byte that isn't UTF-8 is the unit U+DC00 + byte.
std::vector<fl::ustring> characters(std::string_view text) {
    const fl::ustring units = fl::i18n::to_ustring(std::string(text));
    std::vector<fl::ustring> result;
    for (std::size_t start = 0; start < units.size(); start += result.back().size()) {
        const bool isPair = units[start] >= 0xD800 && units[start] <= 0xDBFF;  // never unpaired, see to_ustring
        result.push_back(units.substr(start, isPair ? 2 : 1));
    }
    return result;
}

struct Range {
    char16_t first;
    char16_t last;
};

// Characters that a terminal doesn't show, or that make it rearrange others. Joiners are left out: emoji need them.
constexpr std::array s_escaped = {
    Range{0x0000, 0x001F}, Range{0x007F, 0x009F},  // controls
    Range{0x061C, 0x061C}, Range{0x200E, 0x200F},  // bidirectional marks
    Range{0x2028, 0x202E}, Range{0x2066, 0x2069},  // separators, bidirectional embeddings and isolates
    Range{0xDC80, 0xDCFF}, Range{0xFEFF, 0xFEFF},  // bytes that aren't UTF-8, the byte order mark
};

bool needsEscape(const fl::ustring& character) {
    return std::any_of(s_escaped.begin(), s_escaped.end(), [unit = character.front()](const Range& range) {
        return unit >= range.first && unit <= range.last;
    });
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

// 1 if the locale doesn't know the width.
std::size_t columns(char32_t character) {
    const int width = wcwidth(static_cast<wchar_t>(character));
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

}  // namespace

std::string printable(std::string_view text) {
    if (isPlain(text)) {
        return std::string(text);
    }
    std::string result;
    for (const fl::ustring& character : characters(text)) {
        const std::string bytes = fl::i18n::to_string(character);
        result += needsEscape(character) ? escaped(bytes) : bytes;
    }
    return result;
}

std::size_t displayWidth(std::string_view text) {
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

std::string truncated(std::string_view text, std::size_t width) {
    const UnicodeLocale locale;
    std::string result;
    std::size_t used = 0;
    forEachPrintablePart(text, [&](const std::string& part) {
        for (const fl::ustring& character : characters(part)) {
            used += columns(codePoint(character));
            result += used < width ? fl::i18n::to_string(character) : "";
        }
    });
    return result + "…";
}

void forEachPrintablePart(std::string_view text, const std::function<void(const std::string&)>& visit) {
    constexpr std::size_t s_most = 4096;
    while (!text.empty()) {
        std::size_t size = std::min(s_most, text.size());
        while (size < text.size() && size < s_most + 3 && isContinuation(text[size])) {
            ++size;  // a character stays whole
        }
        visit(printable(text.substr(0, size)));
        text.remove_prefix(size);
    }
}

}  // namespace app
