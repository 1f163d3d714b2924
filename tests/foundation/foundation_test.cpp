#include <gtest/gtest.h>

#include <locale>
#include <thread>

#include "fl/i18n.hpp"
#include "foundation/diagnostic.hpp"
#include "foundation/function_trace.hpp"
#include "foundation/text_file.hpp"
#include "support/Host.hpp"

namespace {

using foundation::log::utf16_piece;
using enum foundation::log::level;
using support::maskOf, support::RecordLog;
using Logger = foundation::log::basic_diagnostic_logger<char>;

const std::string s_name = "doc_products_shared";

Logger s_logger(s_name);

// In the last, characters cross the ends of conversion buffers.
const fl::ustring s_texts[] = {u"a\xD83D", u"\xDE00z\xDC80\xDCFF\xD800\xDC00\xD800\xDBFF\xDFFF",
                               fl::ustring(1, u'a').append(1000, u'\u20AC')};

const auto s_core = boost::log::core::get();

// Only "_" and all bytes from 0x80 on are spaces.
struct OtherSpaces : std::ctype<char> {
    OtherSpaces() : std::ctype<char>(s_table) {
        std::fill(s_table + 0x80, s_table + table_size, s_table[+'_'] = space);
    }
    static inline mask s_table[table_size];
};

TEST(Trimmer, UsesTheGlobalLocaleButRemovesOnlyAscii) {
    std::locale::global(std::locale(std::locale::classic(), new OtherSpaces));
    const foundation::trimmer trim;
    std::locale::global(std::locale::classic());
    std::string text = "_\x80_a _";
    trim(text);
    EXPECT_EQ(text, "\x80_a ");
}

TEST(Diagnostic, WritesItsPiecesInOrder) {
    RecordLog log(maskOf(note));
    const fl::ustring value = u"/a\u00E9";
    DIAGNOSTIC(note, std::string("a"), " is ", fl::filesystem::upath(value), " or ", utf16_piece{value}, true, false);
    EXPECT_EQ(log.take(), "note: a is /a\u00E9 or /a\u00E9truefalse\n");
    for (const fl::ustring& text : s_texts) {
        DIAGNOSTIC(note, text, utf16_piece{text});
        EXPECT_EQ(log.take(), "note: " + fl::i18n::to_string(text) + fl::i18n::to_string(text) + "\n");
    }
}

TEST(Diagnostic, EvaluatesItsPiecesOnlyForARecordAndDropsItIfOneThrows) {
    RecordLog log(maskOf(error));
    int evaluated = 0;
    const auto piece = [&] {
        DIAGNOSTIC(error, "within");  // the logger isn't locked here
        return std::string(++evaluated == 1 ? "first" : "later");
    };
    DIAGNOSTIC(note, piece());
    s_core->set_filter([](const auto&) { return false; });
    DIAGNOSTIC(error, piece());
    s_core->reset_filter();
    DIAGNOSTIC(error, piece());
    EXPECT_THROW(DIAGNOSTIC(error, piece().substr(9)), std::out_of_range);
    EXPECT_EQ(log.take(), "error: within\nerror: first\nerror: within\n");
}

TEST(Logger, StartsWithErrorsWhateverTheOthersHave) {
    const Logger unset("unset");
    vorlan::setLevelMask("other", ~0U);
    EXPECT_TRUE(unset.enabled(error) && !unset.enabled(note) && !unset.enabled(detail) && !unset.enabled(enter));
}

void cleanUp(void*) {
    FUNCTION_TRACE("cleanup");
    vorlan::setLevelMask(s_name, maskOf(note));
}

void leave() {
    FUNCTION_TRACE("left");
    s_core->set_logging_enabled(true);
    std::thread([] { DIAGNOSTIC(note, "a depth of its own"); }).join();
    const std::shared_ptr<void> cleanup(nullptr, cleanUp);
    throw 7;
}

// The level is tested on construction only. The depth is counted even while the core accepts no records.
TEST(FunctionTrace, CountsDepthAndMarksTheExceptionThatLeavesItsScope) {
    RecordLog log(maskOf(note));
    try {
        FUNCTION_TRACE("untraced");
        vorlan::setLevelMask(s_name, maskOf(enter, exit, note));
        DIAGNOSTIC(note, "depth unchanged");
        s_core->set_logging_enabled(false);
        leave();
    } catch (int) {
        FUNCTION_TRACE("untraced");
        DIAGNOSTIC(note, "back");
    }
    EXPECT_EQ(log.take(),
              "note: depth unchanged\nnote: a depth of its own\n  > cleanup\n  < cleanup\n"
              "< left [throw]\nnote: back\n");
}

TEST(FunctionTrace, DropsAnExitRecordThatFails) {
    vorlan::setLevelMask(s_name, maskOf(enter));
    FUNCTION_TRACE("whose exit throws");
    s_core->set_filter([](const auto&) -> bool { throw 7; });
}

}  // namespace
