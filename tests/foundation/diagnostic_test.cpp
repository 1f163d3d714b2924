#include "foundation/diagnostic.hpp"

#include <gtest/gtest.h>

#include <boost/log/core.hpp>
#include <boost/log/expressions.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <cwchar>
#include <future>
#include <locale>
#include <mutex>
#include <stdexcept>
#include <thread>

#include "foundation/function_trace.hpp"
#include "foundation/log/logger_parts.hpp"
#include "foundation/record_composer.hpp"
#include "support/RecordLog.hpp"
#include "vorlan/host.hpp"

namespace {

using foundation::log::utf16_piece;
using enum foundation::log::level;
using support::RecordLog;

constexpr const char* s_name = "some_logger";

foundation::log::basic_diagnostic_logger<char> s_logger(s_name);

struct GermanWords : std::numpunct<char> {
    std::string do_truename() const override { return "wahr"; }
};

TEST(Diagnostic, WritesItsPiecesInOrderAndInNoLocalesWords) {
    RecordLog log({note}, s_name);
    std::locale::global(std::locale(std::locale::classic(), new GermanWords));
    const std::string name = "DocRoot";
    const fl::ustring value = u"/a\u00E9";
    DIAGNOSTIC(note, name, " is ", value, " or ", fl::filesystem::upath(value), " or ", utf16_piece{value}, ": ",
               true, false);
    std::locale::global(std::locale::classic());
    EXPECT_EQ(log.take(), "note: DocRoot is /a\xC3\xA9 or /a\xC3\xA9 or /a\xC3\xA9: truefalse\n");
}

TEST(Diagnostic, NeverFailsForTheTextOfAPiece) {
    RecordLog log({note}, s_name);
    for (const fl::ustring& text :
         {fl::ustring(u"a\xD83D"), fl::ustring(u"\xDE00z"), fl::ustring(u"\xDC80\xDCFF"), fl::ustring(u"\U0001F600"),
          fl::ustring(u"a\0b", 3), fl::ustring(300, u'\u20AC')}) {
        DIAGNOSTIC(note, "", text);
        const std::string narrow = log.take();
        DIAGNOSTIC(note, "", utf16_piece{text});
        EXPECT_EQ(log.take(), narrow);
        EXPECT_GT(narrow.size(), 7U);
    }
}

TEST(Diagnostic, ConvertsNoFurtherThanTheBufferReaches) {
    boost::log::record_ostream stream;
    foundation::log::imbue_message_locale(stream);
    const auto& facet = std::use_facet<std::codecvt<char16_t, char, std::mbstate_t>>(stream.getloc());
    const fl::ustring text = u"\u20AC\u20AC";
    const char16_t* rest = nullptr;
    char* end = nullptr;
    std::string buffer(5, '.');
    std::mbstate_t state{};
    EXPECT_EQ(facet.out(state, text.data(), text.data() + 2, rest, buffer.data(), buffer.data() + 5, end),
              std::codecvt_base::partial);
    EXPECT_EQ(rest - text.data(), 1);
    EXPECT_EQ(end - buffer.data(), 3);
    EXPECT_EQ(buffer, "\xE2\x82\xAC..");
}

TEST(Diagnostic, EvaluatesNoPieceWithoutARecord) {
    RecordLog log({error}, s_name);
    int evaluated = 0;
    const auto piece = [&] {
        ++evaluated;
        return "piece";
    };
    DIAGNOSTIC(note, piece());
    boost::log::core::get()->set_filter([](const auto&) { return false; });
    DIAGNOSTIC(error, piece());
    boost::log::core::get()->reset_filter();
    boost::log::core::get()->set_logging_enabled(false);
    DIAGNOSTIC(error, piece());
    boost::log::core::get()->set_logging_enabled(true);
    EXPECT_EQ(evaluated, 0);
    DIAGNOSTIC(error, piece());
    EXPECT_EQ(evaluated, 1);
    EXPECT_EQ(log.take(), "error: piece\n");
}

TEST(Diagnostic, HoldsTheLockWhileARecordIsOpenedAndNoLonger) {
    RecordLog log({note}, s_name);
    const auto isFree = [] {
        const auto tried = [] { return std::unique_lock(s_logger.parts().lock, std::try_to_lock).owns_lock(); };
        return std::async(std::launch::async, tried).get();
    };
    bool freeAtTheFilter = true, freeAtAPiece = false;
    boost::log::core::get()->set_filter([&](const auto&) {
        freeAtTheFilter = isFree();
        return true;
    });
    DIAGNOSTIC(note, "piece", freeAtAPiece = isFree());
    boost::log::core::get()->reset_filter();
    EXPECT_FALSE(freeAtTheFilter);
    EXPECT_TRUE(freeAtAPiece);
}

TEST(Diagnostic, DropsTheRecordOfAFailedPiece) {
    RecordLog log({note}, s_name);
    const auto fails = []() -> std::string { throw std::runtime_error("piece"); };
    EXPECT_THROW(DIAGNOSTIC(note, "before ", fails()), std::runtime_error);
    DIAGNOSTIC(note, "next");
    EXPECT_EQ(log.take(), "note: next\n");
}

TEST(FunctionTrace, ScopeEnteredDuringUnwindingEndsPlain) {
    struct Cleanup {
        ~Cleanup() { FUNCTION_TRACE("cleanup"); }
    };
    RecordLog log({enter, exit}, s_name);
    try {
        const Cleanup cleanup;
        throw std::runtime_error("unwinding");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(log.take(), "> cleanup\n< cleanup\n");
    }
}

TEST(FunctionTrace, EnterLevelAtTheStartDecides) {
    RecordLog log({note}, s_name);
    {
        FUNCTION_TRACE("untraced");
        vorlan::setLevelMask(s_name, support::maskOf({enter, exit, note}));
        DIAGNOSTIC(note, "depth unchanged");
    }
    EXPECT_EQ(log.take(), "note: depth unchanged\n");
    {
        FUNCTION_TRACE("traced");
        vorlan::setLevelMask(s_name, 0);
    }
    EXPECT_EQ(log.take(), "> traced\n< traced\n");
}

TEST(FunctionTrace, DepthChangesWhileTheCoreTakesNothing) {
    RecordLog log({enter, note}, s_name);
    boost::log::core::get()->set_logging_enabled(false);
    {
        FUNCTION_TRACE("silent");
        boost::log::core::get()->set_logging_enabled(true);
        DIAGNOSTIC(note, "one deeper");
        std::thread([] { DIAGNOSTIC(note, "a depth of its own"); }).join();
    }
    DIAGNOSTIC(note, "back");
    EXPECT_EQ(log.take(), "  note: one deeper\nnote: a depth of its own\n< silent\nnote: back\n");
}

}  // namespace
