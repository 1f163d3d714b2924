#include "foundation/text_file.hpp"

#include <gtest/gtest.h>

#include <locale>

#include "support/TemporaryFolder.hpp"

namespace {

TEST(ReadTextFile, GivesEveryByteOrWhatCouldBeRead) {
    const support::TemporaryFolder folder;
    const std::string bytes("\xEF\xBB\xBF a\r\n\0\xFF\x1A\n", 11);
    folder.write("bytes", bytes);
    folder.write("empty");
    EXPECT_EQ(foundation::read_text_file(folder.path() / "bytes"), bytes);
    EXPECT_EQ(foundation::read_text_file(folder.path() / "empty"), "");
    EXPECT_EQ(foundation::read_text_file(folder.path() / "missing"), "");
    EXPECT_EQ(foundation::read_text_file(folder.path()), "");
}

std::string trimmed(std::string text) {
    foundation::trim(text);
    return text;
}

TEST(Trim, TakesWhiteSpaceOfTheClassicLocaleFromBothEnds) {
    EXPECT_EQ(trimmed(" \t\n\v\f\ra b\r\n \t\v\f"), "a b");
    EXPECT_EQ(trimmed(" \n"), "");
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed(std::string("\0 a", 3)), std::string("\0 a", 3));
    EXPECT_EQ(trimmed("\xC2\xA0 a \xE3\x80\x80"), "\xC2\xA0 a \xE3\x80\x80");
}

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

TEST(Trim, AsksTheGlobalLocaleButNeverTakesABytePastAscii) {
    std::locale::global(std::locale(std::locale::classic(), new WideSpace));
    EXPECT_EQ(trimmed("_ \xA0_a_"), "\xA0_a");
    std::locale::global(std::locale::classic());
}

}  // namespace
