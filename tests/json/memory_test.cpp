#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <utility>

#include "json/ParserException.hpp"
#include "json/parse.hpp"
#include "json/render.hpp"
#include "support/Allocations.hpp"

using namespace foundation::json;

namespace {

const std::string s_bad_alloc = "std::bad_alloc";

// Every alternative that a text can give, and texts too long to live in place.
const std::string s_document =
    R"({"absent":null,"flags":[true,false],"numbers":[0,-1.5,1e300,1234567890123456789],"empty":[{},[],""],)"
    R"("tree":[[1,[2,{"deep":"a string that is too long to live in place","\u00e9scaped, and long as well":"\t\n"}]]],)"
    R"("first":{"zqtype":"int64","zqdata":[1,-2,3]},"again":{"zqdata":[4,5],"zqdata":{"x":[]},"zqtype":"a name"},)"
    R"("late":{"zqdata":[4,5,6],"zqtype":"uint8"},"behind":["another string that is too long to live in place"]})";

// Changes a value that holds `to`, `from` being at hand to copy or move. A failed change to a container loses the old
// content, one to a string doesn't; what it should have become stays as it is.
template <class Change>
long starveChange(const Value& from, const Value& to, Change change) {
    const int wanted = from.storage().which();
    const int former = to.storage().which();
    const bool isLost = wanted != former && (wanted == 5 || wanted == 6);
    return support::starve([&](support::Starvation& starved) {
        Value source = from, target = to;
        if (const std::string thrown = starved([&] { change(target, source); }); !thrown.empty()) {
            EXPECT_EQ(thrown, s_bad_alloc);
            EXPECT_EQ(render(source), render(from));
            EXPECT_EQ(target.storage().which(), isLost ? 2 : former);
            target = source;
        }
        EXPECT_EQ(render(target), render(from));
    });
}

TEST(Memory, RunsOutInAChangeOfAValue) {
    const Value document = parse(s_document, 0);
    const auto& tree = document["tree"].get<std::vector<Value>>();
    const Value values[] = {Value(1.5), Value(std::string(100, 'a')), tree[0], document["first"], document};
    long copies = 0, moves = 0, emptied = 0;
    for (const Value& from : values) {
        for (const Value& to : values) {
            copies += starveChange(from, to, [](Value& target, Value& source) { target = source; });
            moves += starveChange(from, to, [](Value& target, Value& source) { target = std::move(source); });
        }
        copies += starveChange(from, from, [](Value&, const Value& source) { const Value copy = source; });
        emptied += support::starve([&](support::Starvation& starved) {
            Value target = from;
            const std::string thrown = starved([&] { target.emplace<std::vector<Value>>(); });
            EXPECT_EQ(target.storage().which(), thrown.empty() ? 5 : 0);
        });
    }
    EXPECT_GE(copies, 600);
    EXPECT_GE(moves, 10);
    EXPECT_EQ(emptied, 2L * static_cast<long>(std::size(values)));
}

TEST(Memory, RunsOutInAnException) {
    const std::string text = "[1,\n 2 x]";
    const std::string whole = ParserException(text.begin(), text.begin() + 7, text.end(), ParseResult::InvalidEscape,
                                              "a description that is too long to live in place")
                                  .what();
    const long strikes = support::starve([&](support::Starvation& starved) {
        const std::string thrown = starved([&] {
            throw ParserException(text.begin(), text.begin() + 7, text.end(), ParseResult::InvalidEscape,
                                  "a description that is too long to live in place");
        });
        EXPECT_TRUE(thrown == whole || thrown == s_bad_alloc) << thrown;
    });
    EXPECT_GE(strikes, 4);
}

}  // namespace
