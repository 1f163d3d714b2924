#include "json/Value.hpp"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

#include "json/render.hpp"

using namespace foundation::json;
using namespace std::literals;
using Array = std::vector<Value>;
using Object = std::map<std::string, Value>;

namespace {

template <class T>
concept Gettable = requires(const Value& value) {
    value.get<T>();
};

static_assert(Gettable<std::string> && Gettable<Array> && Gettable<Object>);
static_assert(!Gettable<bool> && !Gettable<double> && !Gettable<long long>);
static_assert(!std::is_constructible_v<Value, const char*>);

const std::string s_long = "long enough to live on the heap, whatever the library";

struct Held {
    Value value;
    int index;
    std::string type, left_by_a_move;
};

const Held s_alternatives[] = {
    {Value(), 0, "undefined", "undefined"},
    {Value(Null()), 1, "null", "null"},
    {Value(true), 2, "bool", "true"},
    {Value(1.5), 3, "double", "1.5"},
    {Value(s_long), 4, "string", "\"\""},
    {Value(""s), 4, "string", "\"\""},
    {Value(Array{Value(1.0), Value(s_long)}), 5, "array", "[]"},
    {Value(Array()), 5, "array", "[]"},
    {Value(Object{{"key", Value(Null())}}), 6, "object", "{}"},
    {Value(Object()), 6, "object", "{}"},
    {Value(-1LL), 8, "signed integer", "s-1"},
    {Value(1ULL), 9, "unsigned integer", "u1"},
};

template <class Read>
std::string outcome(Read read) {
    try {
        return render(read());
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

TEST(Value, IsReadAsWhatItHoldsAndAsNothingElse) {
    for (const Held& held : s_alternatives) {
        const Value& value = held.value;
        const std::string content = render(value);
        const auto expected = [&](const char* asked) {
            return held.type == asked ? content : "invalid conversion: " + held.type + " to " + asked;
        };
        EXPECT_EQ(value.storage().which(), held.index);
        EXPECT_EQ(outcome([&] { return value.get<std::string>(); }), expected("string"));
        EXPECT_EQ(outcome([&] { return value.get<Array>(); }), expected("array"));
        EXPECT_EQ(outcome([&] { return value.get<Object>(); }), expected("object"));
        EXPECT_EQ(outcome([&] { return value["no"]; }), held.index == 6 ? "undefined" : expected("object"));
        EXPECT_EQ(value.contains("key"), content == "{\"key\":null}");
        EXPECT_EQ(render(value), content);
    }
}

TEST(Value, CopiesAndMovesOverItselfAndAnyOther) {
    for (const auto& [value, index, type, left] : s_alternatives) {
        for (const Held& other : s_alternatives) {
            Value copied = other.value;
            copied = value;
            copied = static_cast<const Value&>(copied);
            EXPECT_EQ(render(copied), render(value)) << other.type;
            Value moved = other.value;
            moved = std::move(copied);
            moved = static_cast<Value&&>(moved);
            EXPECT_EQ(render(moved), render(value)) << other.type;
            const bool exchanged = index == other.index && (type == "array" || type == "object");
            EXPECT_EQ(render(copied), exchanged ? render(other.value) : left) << other.type;
            const Value constructed = std::move(moved);
            EXPECT_EQ(render(constructed) + render(moved), render(value) + left);
        }
    }
}

TEST(Value, AnAbsentKeyIsTheOneUndefinedAndACopyATreeOfItsOwn) {
    const Value first(Object{{"a", Value(Array{Value(s_long)})}});
    EXPECT_EQ(&first["absent"], &Value::UNDEFINED);
    Value copy = first;
    const_cast<Value&>(copy["a"].get<Array>()[0]) = Value(2.0);
    EXPECT_EQ(render(copy) + render(first), "{\"a\":[2]}{\"a\":[\"" + s_long + "\"]}");
}

}  // namespace
