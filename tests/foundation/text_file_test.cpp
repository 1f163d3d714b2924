#include "foundation/text_file.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <locale>

namespace {

// Classes "_" and every byte of 0x80 and above as space.
class WideSpace : public std::ctype<char> {
public:
    WideSpace() : std::ctype<char>(table()) {}

private:
    static const mask* table() {
        static mask s_table[table_size];
        std::copy_n(classic_table(), table_size, s_table);
        s_table[static_cast<unsigned char>('_')] = space;
        std::fill(s_table + 0x80, s_table + table_size, space);
        return s_table;
    }
};

TEST(Trimmer, AsksTheGlobalLocaleButNeverTakesABytePastAscii) {
    std::locale::global(std::locale(std::locale::classic(), new WideSpace));
    const foundation::trimmer trim;
    std::locale::global(std::locale::classic());
    std::string text = "_ \x80_a_";
    trim(text);
    EXPECT_EQ(text, "\x80_a");
}

}  // namespace
