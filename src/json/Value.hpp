#pragma once

#include <boost/variant/recursive_wrapper.hpp>
#include <boost/variant/variant.hpp>
#include <concepts>
#include <map>
#include <string>
#include <vector>

namespace foundation::json {

class Value;

// The tags of an absent value and of the literal null. Their constructors are deliberately not noexcept: after a
// failed assignment boost::variant falls back to its first alternative with a noexcept default constructor, which
// must be bool.
struct Undefined {
    Undefined();
};
struct Null {
    Null();
};
inline Undefined::Undefined() = default;
inline Null::Null() = default;

// The name of an alternative of Value, for messages. Only the ten alternatives have one.
template <class T>
struct traits;

template <>
struct traits<Undefined> {
    static constexpr const char* name = "undefined";
};
template <>
struct traits<Null> {
    static constexpr const char* name = "null";
};
template <>
struct traits<bool> {
    static constexpr const char* name = "bool";
};
template <>
struct traits<double> {
    static constexpr const char* name = "double";
};
template <>
struct traits<std::string> {
    static constexpr const char* name = "string";
};
template <>
struct traits<std::vector<Value>> {
    static constexpr const char* name = "array";
};
template <>
struct traits<std::map<std::string, Value>> {
    static constexpr const char* name = "object";
};
template <>
struct traits<float> {
    static constexpr const char* name = "float";
};
template <>
struct traits<long long> {
    static constexpr const char* name = "signed integer";
};
template <>
struct traits<unsigned long long> {
    static constexpr const char* name = "unsigned integer";
};

// The types that `get` serves. Bools and numbers are stored, but reachable through `storage` alone.
template <class T>
concept Readable = std::same_as<T, std::string> || std::same_as<T, std::vector<Value>> ||
    std::same_as<T, std::map<std::string, Value>>;

// A JSON document in memory: one of ten alternatives, with value semantics. A Value owns everything under it, copies
// the whole tree, and shares no part with another Value.
//
//     index  holds                          comes from
//     0      Undefined                      nothing: the default, and what an absent key yields
//     1      Null                           null
//     2      bool                           true, false
//     3      double                         a number
//     4      std::string, UTF-8             a string
//     5      std::vector<Value>             an array, in its order; also the data of a typed array
//     6      std::map<std::string, Value>   an object, by the byte order of its keys
//     7      float                          nothing
//     8      long long                      an element of a signed typed array
//     9      unsigned long long             an element of an unsigned typed array
//
// Reading is strict: no alternative is converted to another, and an empty string, array or object is a value like any
// other. Any number of threads may read a Value that nobody writes to. Copying and destruction recurse once per
// level. `parse` bounds the depth; whoever builds a tree by hand must bound it too.
class Value {
public:
    using Storage =
        boost::variant<Undefined, Null, bool, double, std::string, boost::recursive_wrapper<std::vector<Value>>,
                       boost::recursive_wrapper<std::map<std::string, Value>>, float, long long, unsigned long long>;

    // Undefined. Looking up an absent key returns a reference to this object.
    static const Value UNDEFINED;

    // From an rvalue the content is moved in; a vector or a map moves into a new heap object.
    Value();
    Value(Null null);
    Value(bool boolean);
    Value(double number);
    Value(long long number);
    Value(unsigned long long number);
    Value(std::string text);
    Value(std::vector<Value> elements);
    Value(std::map<std::string, Value> members);
    Value(const char*) = delete;  // would become a bool

    // A moved-from Value keeps its alternative, and its string, vector or map is empty, except that a move assignment
    // between two vectors or two maps swaps them. Any other move of a vector or map allocates, so moves aren't
    // noexcept. Self-assignment changes nothing; a Value must not be assigned a part of itself. If a change to a
    // vector or map throws, the old content is lost and the target holds an unspecified bool. If copying a string
    // throws, the target is unchanged.
    Value(const Value& other);
    Value(Value&& other);  // NOLINT(performance-noexcept-move-constructor)
    Value& operator=(const Value& other);
    Value& operator=(Value&& other);  // NOLINT(performance-noexcept-move-constructor)
    ~Value();

    // The content, valid until this Value changes. Throws std::runtime_error "invalid conversion: <held> to <asked>"
    // if it isn't a T.
    template <Readable T>
    const T& get() const;

    // The member with that key, or UNDEFINED if there is none. Never inserts. Throws like get of a map if this isn't
    // an object.
    const Value& operator[](const std::string& key) const;

    // True if this is an object that has the key, even with the value null. Doesn't throw.
    bool contains(const std::string& key) const;

    // Replaces the content with a T, in place, and returns it; a vector or map costs one heap object. If that throws,
    // the Value is Undefined. For readers, which build a document from the root.
    template <class T>
    T& emplace(T content = T());

    // For tests and tools that walk any document.
    const Storage& storage() const noexcept { return m_storage; }

private:
    Storage m_storage;
};

}  // namespace foundation::json
