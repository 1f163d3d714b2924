#pragma once

namespace fl::i18n::lcctype {

constexpr int isspace_ascii(char32_t character) noexcept {
    return character == U' ' || (character >= U'\t' && character <= U'\r');
}

constexpr int isdigit_ascii(char32_t character) noexcept {
    return character >= U'0' && character <= U'9';
}

}  // namespace fl::i18n::lcctype
