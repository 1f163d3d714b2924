#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "fl/lcctype.hpp"

// The readers' inner loops: byte classes, and runs of blanks or plain text skipped eight bytes at a time.
namespace foundation::json {

using Position = std::string::const_iterator;

namespace detail {

using Word = std::uint64_t;

constexpr std::ptrdiff_t s_word_size = sizeof(Word);

// The next eight bytes.
inline Word load_word(Position position) {
    Word word = 0;
    std::memcpy(&word, std::to_address(position), sizeof word);
    return word;
}

// That byte, eight times.
constexpr Word repeat(char byte) {
    return ~Word{0} / 0xFF * static_cast<unsigned char>(byte);
}

// 0x80 for each byte that is 0, and 0 for the others.
constexpr Word zero_bytes(Word word) {
    constexpr Word low_bits = repeat(0x7F);
    return ~(((word & low_bits) + low_bits) | word | low_bits);
}

// How many bytes, in text order, precede the first non-zero byte of `word`.
constexpr int leading_zero_bytes(Word word) {
    return (std::endian::native == std::endian::little ? std::countr_zero(word) : std::countl_zero(word)) / 8;
}

inline bool is_space(char byte) {
    return fl::i18n::lcctype::isspace_ascii(static_cast<char32_t>(byte)) != 0;
}

inline bool is_digit(char byte) {
    return fl::i18n::lcctype::isdigit_ascii(static_cast<char32_t>(byte)) != 0;
}

inline Position skip_digits(Position position, Position end) {
    return std::find_if_not(position, end, is_digit);
}

inline Position skip_blanks(Position position, Position end) {
    while (end - position >= s_word_size) {
        const Word others = load_word(position) ^ repeat(' ');
        if (others != 0) {
            return position + leading_zero_bytes(others);
        }
        position += s_word_size;
    }
    return position;
}

// Indentation makes a run of blanks likely after any white space.
inline Position skip_spaces(Position position, Position end) {
    while (position != end && is_space(*position)) {
        position = skip_blanks(position + 1, end);
    }
    return position;
}

// The first quote or backslash, or the end.
inline Position skip_plain(Position position, Position end) {
    while (end - position >= s_word_size) {
        const Word word = load_word(position);
        const Word found = zero_bytes(word ^ repeat('"')) | zero_bytes(word ^ repeat('\\'));
        if (found != 0) {
            return position + leading_zero_bytes(found);
        }
        position += s_word_size;
    }
    return std::find_if(position, end, [](char byte) { return byte == '"' || byte == '\\'; });
}

}  // namespace detail

}  // namespace foundation::json
