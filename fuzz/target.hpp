#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

// Examines one input. Each target defines it. libFuzzer calls it with generated inputs, the replay with files.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

inline constexpr std::string_view s_spaces = " \t\n\v\f\r";

// Ends the process unless the property holds. Doesn't write to std::cerr, which a target may have redirected.
inline void check(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "broken property: %s\n", property);
        std::abort();
    }
}

// Prints both texts and ends the process unless they are equal.
inline void checkEqual(const std::string& actual, const std::string& expected, const char* property) {
    if (actual != expected) {
        std::fprintf(stderr, "expected: %s\nactual:   %s\n", expected.c_str(), actual.c_str());
        check(false, property);
    }
}

inline std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(s_spaces), text.size()));
    return text.substr(0, text.find_last_not_of(s_spaces) + 1);
}

}  // namespace fuzz
