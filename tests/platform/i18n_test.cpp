#include "fl/i18n.hpp"

#include <gtest/gtest.h>

#include "support/row_name.hpp"

using fl::i18n::to_string;
using fl::i18n::to_ustring;

namespace {

struct Text {
    const char* name;
    std::string narrow;
    fl::ustring wide;
};

const Text s_texts[] = {
    {"Empty", "", u""},
    {"Ascii", "help/index.html", u"help/index.html"},
    {"Nul", std::string("a\0b", 3), fl::ustring(u"a\0b", 3)},
    {"TwoBytes", "\xC3\xA9", u"\u00E9"},
    {"ThreeBytes", "\xE2\x82\xAC", u"\u20AC"},
    {"FourBytes", "\xF0\x9F\x98\x80", u"\U0001F600"},
    {"LoneTrail", "a\x80z", u"a\xDC80z"},
    {"NoUtf8Byte", "\xFF", u"\xDCFF"},
    {"CutShort", "\xE2\x82", u"\xDCE2\xDC82"},
    {"BrokenThenGood", "\xE2\xC3\xA9", u"\xDCE2\u00E9"},
    {"Overlong", "\xC0\xAF", u"\xDCC0\xDCAF"},
    {"EncodedSurrogate", "\xED\xA0\x80", u"\xDCED\xDCA0\xDC80"},
    {"BeyondUnicode", "\xF4\x90\x80\x80", u"\xDCF4\xDC90\xDC80\xDC80"},
};

class BothWays : public testing::TestWithParam<Text> {};

TEST_P(BothWays, NarrowToWideAndBack) {
    EXPECT_EQ(to_ustring(GetParam().narrow), GetParam().wide);
    EXPECT_EQ(fl::i18n::utf8_to_ustring(GetParam().narrow), GetParam().wide);
    EXPECT_EQ(to_string(GetParam().wide), GetParam().narrow);
}

INSTANTIATE_TEST_SUITE_P(Texts, BothWays, testing::ValuesIn(s_texts), support::s_rowName);

TEST(ToString, ReplacesSurrogatesThatStandForNoByte) {
    EXPECT_EQ(to_string(u"a\xD83D"), "a\xEF\xBF\xBD");
    EXPECT_EQ(to_string(u"\xD83Dz"), "\xEF\xBF\xBDz");
    EXPECT_EQ(to_string(u"\xDE00"), "\xEF\xBF\xBD");
    EXPECT_EQ(to_string(u"\xDC7F\xDD00"), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(to_string(u"\xD83D\xD83D\xDE00"), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

}  // namespace
