#pragma once

// Character tests of the ASCII range, without any locale. Each takes a byte sign-extended from char, so bytes of
// 0x80 and above arrive as large values and belong to no class. Nonzero means yes.
namespace fl::i18n::lcctype {

// Blank, tab, line feed, vertical tab, form feed, carriage return.
constexpr int isspace_ascii(char32_t character) noexcept {
    return character == U' ' || (character >= U'\t' && character <= U'\r');
}

constexpr int isdigit_ascii(char32_t character) noexcept {
    return character >= U'0' && character <= U'9';
}

}  // namespace fl::i18n::lcctype
