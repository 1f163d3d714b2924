#include "json/ParserException.hpp"

#include <gmock/gmock.h>
#include <pthread.h>

#include <boost/algorithm/string/replace.hpp>
#include <thread>

#include "json/parse.hpp"
#include "support/Allocations.hpp"
#include "support/Show.hpp"

using namespace foundation::json;
using namespace std::string_literals;
using Array = std::vector<Value>;
using Object = std::map<std::string, Value>;

// Tests values, and the reader on a small stack and out of memory. fuzz/reader.cpp tests what texts are read as, and
// where and why others are refused.
namespace {

constexpr support::Show render;

struct Held {
    Value value;
    std::string type, content, leftByMove = content;
};

const std::string s_long(100, 'a');

const Held s_alternatives[] = {
    {Value(), "undefined", "0undefined"},
    {Value(Null()), "null", "1null"},
    {Value(true), "bool", "21"},
    {Value(1.5), "double", "31.5"},
    {Value(s_long), "string", "4\"" + s_long + '"', "4\"\""},
    {Value(Array{Value(0.5), Value(Array{Value(s_long)})}), "array", "5(30.5,5(4\"" + s_long + "\",),)", "5()"},
    {Value(Object{{"key", Value(Null())}, {"a", Value(s_long)}}), "object", "6(a:4\"" + s_long + "\",key:1null,)",
     "6()"},
    {Value(-1LL), "signed integer", "8-1"},
    {Value(1ULL), "unsigned integer", "91"},
};

template <class Read>
void expectRead(const Held& held, const std::string& asked, Read read) {
    try {
        EXPECT_EQ(render(read()) + " as " + asked, held.content + " as " + held.type);
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(error.what(), held.type == asked ? "none" : "invalid conversion: " + held.type + " to " + asked);
    }
}

TEST(Value, IsReadAsWhatItHoldsAndAsNothingElse) {
    for (const Held& held : s_alternatives) {
        const Value& value = held.value;
        EXPECT_EQ(value.contains("key"), held.content.find("key:") != std::string::npos) << held.content;
        expectRead(held, "string", [&] { return Value(value.get<std::string>()); });
        expectRead(held, "array", [&] { return Value(value.get<Array>()); });
        expectRead(held, "object", [&] { return Value(value.get<Object>()); });
        expectRead(held, "object", [&] { return &value["no"] == &Value::UNDEFINED ? value : value["no"]; });
    }
}

// Out of memory, a change to a container loses the old content, a change to a string doesn't. A source that couldn't be
// copied or moved is unchanged.
long change(const Held& from, const Held& to, bool moves) {
    return support::failEachAllocation([&](const support::Attempt& attempt) {
        Value source = from.value, target = to.value;
        const std::string thrown = attempt([&] { moves ? target = std::move(source) : target = source; });
        const bool isContainer = from.type == "array" || from.type == "object", isSame = from.type == to.type;
        if (thrown.empty()) {
            EXPECT_EQ(render(target), from.content);
            EXPECT_EQ(render(source), !moves ? from.content : isContainer && isSame ? to.content : from.leftByMove);
        } else {
            EXPECT_EQ(thrown + " " + render(source), "std::bad_alloc " + from.content);
            EXPECT_EQ(target.storage().which(), isContainer && !isSame ? 2 : to.content[0] - '0');
            EXPECT_TRUE(isContainer || render(target) == to.content);
        }
    });
}

TEST(Value, IsCopiedAndMovedOverAnyOtherEvenOutOfMemory) {
    long failures = 0;
    for (const Held& from : s_alternatives) {
        for (const Held& to : s_alternatives) {
            SCOPED_TRACE(from.content + " over " + to.content);
            failures += change(from, to, false) + change(from, to, true);
        }
        Value value = from.value;
        value = static_cast<const Value&>(value);
        value = static_cast<Value&&>(value);
        const Value moved = std::move(value);
        EXPECT_EQ(render(moved) + render(value), from.content + from.leftByMove);
        failures += support::failEachAllocation([&](const support::Attempt& attempt) {
            Value target = from.value;
            const std::string thrown = attempt([&] { target.emplace<Array>(); });
            EXPECT_EQ(target.storage().which(), thrown.empty() ? 5 : 0);
        });
    }
    EXPECT_GE(failures, 200);
}

const auto times = [](std::size_t count, const std::string& text) {
    return boost::replace_all_copy(std::string(count, '.'), "."s, text);
};

// Parses, copies and destroys a document on the stack that the limit on nesting is designed for.
std::string outcomeOnSmallStack(const std::string& text) {
    std::string result;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    EXPECT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{JSON_STACK_KIB} * 1024), 0);
    pthread_setattr_default_np(&attributes);
    std::jthread([&text, &result] {
        try {
            const Value document = parse(text, 0);
            Value copy = document;
            copy = document;
            result = "accepted";
        } catch (const ParserException& error) {
            result = std::string(error.what()).substr(0, 27);
        }
    });  // joins
    return result;
}

// How many times, at most, an opening and a closing may enclose a text; the opening; the text; the closing.
const std::tuple<std::size_t, std::string, std::string, std::string> s_nestings[] = {
    {255, "[", "[]", ",[]]"},
    {255, R"({"zqdata":)", "{}", "}"},
    {255, R"({"zqtype":)", "{}", "}"},
    {255, R"({"a":1,"a":)", "{}", "}"},
    {254, "[", R"({"zqdata":[1],"zqtype":"int8"})", "]"},
    {255, R"({"a":1,"b":1,"c":1,"d":1,"e":1,"f":1,"g":1,"h":1,"i":1,"j":1,"k":1,"l":1,"m":1,"z":)", "[]", "}"},
};

TEST(Nesting, IsLimitedTo256LevelsWhichFitASmallStack) {
    for (const auto& [count, opening, innermost, closing] : s_nestings) {
        SCOPED_TRACE(opening + innermost);
        const std::string nested = times(count, opening) + innermost + times(count, closing);
        EXPECT_EQ(outcomeOnSmallStack(nested), "accepted");
        EXPECT_EQ(outcomeOnSmallStack(opening + nested), "JSON ParserException (E0021");
        EXPECT_EQ(outcomeOnSmallStack(times(100'000, opening)), "JSON ParserException (E0021");
    }
    EXPECT_STREQ(get_parse_result_description(static_cast<ParseResult>(22)), "Unknown error");
}

// Out of memory, a parse ends as usual, throws bad_alloc, refuses the text at the start of a typed array's data, or
// leaves the data undefined if its type follows it.
TEST(Memory, RunsOutDuringAParse) {
    const std::string text = R"({"numbers":[0,-1.5,1e300],"arrays":[{},[],"",[1],[2],[3],[4],[5],[6],[7]],
        "tree":[[1,[2,{"deep":"a string that is too long to live in place","\u00e9scaped and too long":"\t\n"}]]],
        "first":{"zqtype":"int64","zqdata":[1,-2,3]},"again":{"zqdata":[4,5],"zqdata":{"x":[]},"zqtype":"a name"},
        "late":{"zqdata":[4,5,6],"zqtype":"uint8"}})";
    const std::string whole = render(parse(text, 0)), refused = "JSON ParserException (E0019";
    const std::string late = boost::replace_first_copy(whole, "5(94,95,96,)", "0undefined");
    std::map<std::string, int> ends{{whole, 0}, {late, 0}, {"std::bad_alloc", 0}, {refused, 0}};
    const long failures = support::failEachAllocation([&](const support::Attempt& attempt) {
        Value value;
        const std::string thrown = attempt([&] { value = parse(text, 0); });
        const auto upToCaret = thrown.substr(thrown.find('\n') + 1, thrown.size() - thrown.rfind('\n') - 2);
        const bool isAtData = thrown.starts_with(refused) && upToCaret.ends_with("\"zqdata\":");
        ++ends[thrown.empty() ? render(value) : isAtData ? refused : thrown];
    });
    EXPECT_THAT(ends, testing::AllOf(testing::SizeIs(4), testing::Each(testing::Pair(testing::_, testing::Gt(0)))));
    EXPECT_GE(failures, 150);
}

}  // namespace
