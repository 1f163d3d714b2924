#include "json/Value.hpp"

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>
#include <memory>
#include <stdexcept>
#include <utility>

namespace foundation::json {

namespace {

using Elements = std::vector<Value>;
using Members = std::map<std::string, Value>;

template <class T>
struct Get : boost::static_visitor<const T&> {
    const T& operator()(const T& content) const { return content; }

    template <class Held>
    const T& operator()(const Held&) const {
        throw std::runtime_error(std::string("invalid conversion: ") + traits<Held>::name + " to " + traits<T>::name);
    }
};

// Member by member: std::map's copy recurses over its own tree, which on top of the document's nesting takes too much
// stack.
struct Copy : boost::static_visitor<Value::Storage> {
    Value::Storage operator()(const Members& members) const { return Members(members.begin(), members.end()); }

    template <class Held>
    Value::Storage operator()(const Held& content) const {
        return content;
    }
};

}  // namespace

const Value Value::UNDEFINED;

Value::Value() = default;
Value::Value(Null null) : m_storage(null) {}
Value::Value(bool boolean) : m_storage(boolean) {}
Value::Value(double number) : m_storage(number) {}
Value::Value(long long number) : m_storage(number) {}
Value::Value(unsigned long long number) : m_storage(number) {}
Value::Value(std::string text) : m_storage(std::move(text)) {}
Value::Value(Elements elements) : m_storage(std::move(elements)) {}
Value::Value(Members members) : m_storage(std::move(members)) {}

Value::Value(const Value& other) : m_storage(boost::apply_visitor(Copy(), other.m_storage)) {}
Value::Value(Value&& other) = default;  // NOLINT(performance-noexcept-move-constructor)
Value& Value::operator=(const Value& other) = default;
Value::~Value() = default;

// Self-move would leave a string empty.
Value& Value::operator=(Value&& other) {  // NOLINT(performance-noexcept-move-constructor)
    if (this != &other) {
        m_storage = std::move(other.m_storage);
    }
    return *this;
}

template <Readable T>
const T& Value::get() const {
    return boost::apply_visitor(Get<T>(), m_storage);
}

template const std::string& Value::get<std::string>() const;
template const Elements& Value::get<Elements>() const;
template const Members& Value::get<Members>() const;

template <class T>
T& Value::emplace(T content) {
    std::destroy_at(&m_storage);
    try {
        std::construct_at(&m_storage, std::move(content));
    } catch (...) {
        std::construct_at(&m_storage);
        throw;
    }
    return boost::get<T>(m_storage);
}

template bool& Value::emplace(bool);
template Null& Value::emplace(Null);
template double& Value::emplace(double);
template std::string& Value::emplace(std::string);
template Elements& Value::emplace(Elements);
template Members& Value::emplace(Members);

const Value& Value::operator[](const std::string& key) const {
    const auto& members = get<Members>();
    const auto found = members.find(key);
    return found == members.end() ? UNDEFINED : found->second;
}

bool Value::contains(const std::string& key) const {
    const Members* members = boost::get<Members>(&m_storage);
    return members != nullptr && members->contains(key);
}

}  // namespace foundation::json
