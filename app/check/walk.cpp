#include "check/walk.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "check/Problems.hpp"
#include "check/Reader.hpp"
#include "check/pointer.hpp"
#include "doc_products_shared/catalogue_keys.hpp"
#include "near_names.hpp"

namespace app::check {

namespace {

namespace json = foundation::json;
namespace keys = doc_products_shared::catalogue_keys;

enum class Kind { string, array, object };

struct ObjectRule;

// A key that the library reads. `content` describes an object, or each element of an array.
struct KeyRule {
    std::string_view key;
    Kind kind;
    bool isRequired;
    const ObjectRule* content = nullptr;
};

struct ObjectRule {
    std::string_view name;  // the key that leads here; empty for the document and for elements
    std::span<const KeyRule> keys;
};

constexpr std::array s_familyKeys = {KeyRule{keys::family, Kind::string, true},
                                     KeyRule{keys::group, Kind::string, false}};
constexpr ObjectRule s_family{keys::productFamily, s_familyKeys};
constexpr std::array s_familyEntryKeys = {KeyRule{keys::productFamily, Kind::object, true, &s_family}};
constexpr ObjectRule s_familyEntry{"", s_familyEntryKeys};
constexpr std::array s_productKeys = {  // those of Field come first
    KeyRule{keys::displayName, Kind::string, true},
    KeyRule{keys::helpLocation, Kind::string, true},
    KeyRule{keys::shortName, Kind::string, true},
    KeyRule{keys::baseCode, Kind::string, true},
    KeyRule{keys::altShortName, Kind::string, false},
    KeyRule{keys::status, Kind::string, false},
    KeyRule{keys::productFamilyList, Kind::array, true, &s_familyEntry}};
constexpr ObjectRule s_product{keys::product, s_productKeys};
constexpr std::array s_entryKeys = {KeyRule{keys::product, Kind::object, true, &s_product}};
constexpr ObjectRule s_entry{"", s_entryKeys};
constexpr std::array s_setKeys = {KeyRule{keys::productList, Kind::array, true, &s_entry},
                                  KeyRule{keys::format, Kind::string, true},
                                  KeyRule{keys::release, Kind::string, true}};
constexpr ObjectRule s_set{keys::documentationSet, s_setKeys};
constexpr std::array s_documentKeys = {KeyRule{keys::documentationSet, Kind::object, true, &s_set}};
constexpr ObjectRule s_document{"", s_documentKeys};

// A key that isn't read.
struct Unknown {
    Place key;
    std::size_t value = std::string::npos;  // where it is, unless it has faults of syntax
};

// The state of an object that is walked through.
struct ObjectState {
    const ObjectRule& rule;
    std::size_t faults;  // of syntax, before the object
    std::vector<Text> texts = std::vector<Text>(rule.keys.size());
    std::vector<std::optional<Place>> places = std::vector<std::optional<Place>>(rule.keys.size());  // of known keys
    std::map<std::string, Unknown, std::less<>> unknown = {};
    bool isTyped = false;  // a key announces a typed array or its data
};

constexpr const char* kindName(Kind kind) {
    return kind == Kind::string ? "a string" : kind == Kind::array ? "an array" : "an object";
}

// By the index of the alternative that a Value holds.
constexpr std::array s_valueNames = {"nothing",  "null",      "a boolean", "a number", "a string",
                                     "an array", "an object", "a number",  "a number", "a number"};

bool isIndex(const std::string& segment) {
    return segment.find_first_not_of("0123456789") == std::string::npos;
}

bool isExpectedUnknown(std::string_view key) {
    return key == "$schema" || key == "description" || key.starts_with("base_product_");
}

class Walk {
public:
    Walk(const std::string& text, Problems& problems, const std::function<void(Product&)>& visit)
        : m_problems(problems), m_visit(visit), m_reader(text, [this](Problem problem) { add(std::move(problem)); }) {}

    std::size_t run();

private:
    std::string pointer() const;

    // Report a problem at the current part of the document.
    void add(Problem problem);
    void report(const Code& code, const Place& place, std::string message, std::vector<Related> related = {});
    void reportType(const Place& place, Kind expected, const json::Value& value);

    // Read what is at the reader's place. If they return true, the path is as before; otherwise the reader is lost.
    bool readObject(const ObjectRule& rule);
    bool readMembers(const ObjectRule& rule, std::size_t begin);
    bool readMember(ObjectState& state);
    bool readFirst(const KeyRule& rule, ObjectState& state, std::size_t index, const Place& key);
    bool readUnknown(ObjectState& state, const Text& key);
    bool readKnown(const KeyRule& rule, Text& text);
    bool readArray(const ObjectRule& rule);
    bool readList();
    bool readElement(const ObjectRule& rule, std::size_t index);
    bool readOther(Kind expected);
    bool skip();

    void endObject(ObjectState& state, const Place& bracket);
    std::string nameOf(const ObjectState& state) const;
    void reportDuplicate(const Place& later, const Place& first);
    void reportMissing(const ObjectState& state, const Place& bracket);
    void reportUnknown(ObjectState& state);
    bool isFlat(const ObjectState& state) const;
    void readFlat(const ObjectState& state, const Place& bracket);
    void readNear(ObjectState& state, const std::string& key, std::size_t value);

    Problems& m_problems;
    const std::function<void(Product&)>& m_visit;
    Reader m_reader;
    std::vector<std::string> m_path;
    Product m_product;
    std::size_t m_index = 0;  // of the entry of the product list
};

std::string Walk::pointer() const {
    std::string text;
    for (const std::string& segment : m_path) {
        appendTo(text, segment);
    }
    return text;
}

void Walk::add(Problem problem) {
    if (m_problems.mayKeep(*problem.code, problem.place.offset)) {
        problem.pointer = pointer();
    }
    m_problems.add(std::move(problem));
}

void Walk::report(const Code& code, const Place& place, std::string message, std::vector<Related> related) {
    add({&code, place, std::move(message), {}, std::move(related)});
}

void Walk::reportType(const Place& place, Kind expected, const json::Value& value) {
    const std::string subject = m_path.empty()           ? "the document"
                                : isIndex(m_path.back()) ? "an element here"
                                                         : '"' + m_path.back() + '"';
    report(code("wrong-type"), place,
           fmt::format("{} must be {}, and is {}", subject, kindName(expected),
                       s_valueNames.at(static_cast<std::size_t>(value.storage().which()))));
}

bool Walk::skip() {
    json::Value discarded;
    return m_reader.readValue(discarded, {});
}

bool Walk::readOther(Kind expected) {
    const std::size_t begin = m_reader.offset();
    const bool isMember = !m_path.empty() && !isIndex(m_path.back());
    json::Value value;
    const bool goesOn = m_reader.readValue(value, isMember ? Wanted{m_path.back(), kindName(expected)} : Wanted{});
    if (value.storage().which() != 0) {
        reportType(m_reader.placeFrom(begin), expected, value);
    }
    return goesOn;
}

bool Walk::readKnown(const KeyRule& rule, Text& text) {
    if (rule.kind == Kind::object) {
        return readObject(*rule.content);
    }
    if (!m_reader.isAt(rule.kind == Kind::string ? '"' : '[')) {
        return readOther(rule.kind);
    }
    return rule.kind == Kind::string ? m_reader.readString(text) : readArray(*rule.content);
}

bool Walk::readMember(ObjectState& state) {
    Text key;
    const Reader::Step step = m_reader.readKey(key);
    if (step == Reader::Step::lost) {
        return false;
    }
    const auto keys = state.rule.keys;
    const auto found = std::find_if(keys.begin(), keys.end(), [&](auto& rule) { return rule.key == key.text; });
    const auto index = static_cast<std::size_t>(found - keys.begin());
    if (step == Reader::Step::end) {
        return found == keys.end() || state.places[index].emplace(key.place).length > 0;
    }
    m_path.push_back(key.text);
    const bool goesOn = found == keys.end() ? readUnknown(state, key) : readFirst(*found, state, index, key.place);
    if (goesOn) {
        m_path.pop_back();
    }
    return goesOn;
}

// The library reads the first of equal keys.
bool Walk::readFirst(const KeyRule& rule, ObjectState& state, std::size_t index, const Place& key) {
    if (state.places[index]) {
        reportDuplicate(key, *state.places[index]);
        return skip();
    }
    state.places[index] = key;
    return readKnown(rule, state.texts[index]);
}

bool Walk::readUnknown(ObjectState& state, const Text& key) {
    if (!key.isThere) {
        return skip();
    }
    const bool isTyped = key.text == "zqtype" || key.text == "zqdata";
    state.isTyped = state.isTyped || isTyped;
    const auto [entry, isNew] = state.unknown.try_emplace(key.text, Unknown{key.place});
    if (!isNew && !isTyped) {
        reportDuplicate(key.place, entry->second.key);
    }
    const std::size_t begin = m_reader.offset();
    const std::size_t faults = m_reader.faults();
    const bool goesOn = skip();
    if (isNew && m_reader.faults() == faults) {
        entry->second.value = begin;
    }
    return goesOn;
}

void Walk::reportDuplicate(const Place& later, const Place& first) {
    report(code("duplicate-key"), later, fmt::format("\"{}\" is dropped: the object has it already", m_path.back()),
           {{"the first one is read", first}});
}

bool Walk::readObject(const ObjectRule& rule) {
    const std::size_t begin = m_reader.offset();
    if (m_reader.openMissing()) {
        return readMembers(rule, begin);
    }
    return m_reader.isAt('{') ? m_reader.open() && readMembers(rule, begin) : readOther(Kind::object);
}

// Reads the members of the object that begins there and is open.
bool Walk::readMembers(const ObjectRule& rule, std::size_t begin) {
    ObjectState state{rule, m_reader.faults()};
    if (&rule == &s_product) {
        m_product = {m_index, {begin, 1}, pointer(), {}, {}};
    }
    Reader::Step step{};
    while ((step = m_reader.next()) == Reader::Step::item) {
        if (!readMember(state)) {
            return false;
        }
    }
    if (step == Reader::Step::lost) {
        return false;
    }
    if (state.isTyped && m_reader.faults() == state.faults) {
        m_reader.readAgain(begin);
    }
    endObject(state, {begin, 1});
    return true;
}

// True for an element that holds the keys of the object that it should hold.
bool Walk::isFlat(const ObjectState& state) const {
    const KeyRule& wanted = state.rule.keys.front();
    const bool isElement = state.rule.name.empty() && !m_path.empty();
    return isElement && !state.places.front() &&
           std::any_of(wanted.content->keys.begin(), wanted.content->keys.end(),
                       [&](const KeyRule& rule) { return state.unknown.contains(rule.key); });
}

// Reads the element again as that object.
void Walk::readFlat(const ObjectState& state, const Place& bracket) {
    const KeyRule& wanted = state.rule.keys.front();
    report(code("missing-key"), bracket,
           fmt::format("this entry has no \"{0}\": put it into {{\"{0}\": ...}}", wanted.key));
    if (m_reader.faults() == state.faults) {
        m_reader.readAt(bracket.offset, [&] { readObject(*wanted.content); });
    }
}

void Walk::endObject(ObjectState& state, const Place& bracket) {
    const bool isIncomplete = m_reader.isIncomplete();
    if (isFlat(state)) {
        return readFlat(state, bracket);
    }
    reportUnknown(state);
    if (&state.rule == &s_family) {
        m_product.families.push_back(state.texts.front());
    } else if (&state.rule == &s_product) {
        std::move(state.texts.begin(), state.texts.begin() + fieldCount, m_product.fields.begin());
    }
    if (!isIncomplete) {
        reportMissing(state, bracket);
    }
    if (&state.rule == &s_product) {
        m_visit(m_product);
    }
}

std::string Walk::nameOf(const ObjectState& state) const {
    if (&state.rule == &s_product && !m_product.fields[displayName].text.empty()) {
        return "product \"" + m_product.fields[displayName].text + '"';
    }
    return m_path.empty() ? "the document" : state.rule.name.empty() ? "this entry" : '"' + m_path.back() + '"';
}

void Walk::reportMissing(const ObjectState& state, const Place& bracket) {
    std::vector<std::string> missing;
    for (std::size_t i = 0; i < state.rule.keys.size(); ++i) {
        if (state.rule.keys[i].isRequired && !state.places[i]) {
            missing.push_back(fmt::format("\"{}\"", state.rule.keys[i].key));
        }
    }
    if (!missing.empty()) {
        const std::string last = missing.size() == 1 ? "" : " or " + missing.back();
        missing.resize(std::max<std::size_t>(missing.size(), 2) - 1);
        report(code("missing-key"), bracket,
               fmt::format("{} has no {}{}", nameOf(state), fmt::join(missing, ", "), last));
    }
}

void Walk::reportUnknown(ObjectState& state) {
    if (state.unknown.empty()) {
        return;
    }
    std::vector<std::string> absent;
    for (std::size_t i = 0; i < state.rule.keys.size(); ++i) {
        if (!state.places[i]) {
            absent.emplace_back(state.rule.keys[i].key);
        }
    }
    for (const auto& [key, unknown] : state.unknown) {
        const auto meant = nearNames(key, absent);
        if (!meant.empty() || !isExpectedUnknown(key)) {
            m_path.push_back(key);
            report(meant.empty() ? code("unknown-key") : code("near-key"), unknown.key,
                   fmt::format("\"{}\" isn't read{}", key, suggestion(meant)));
            meant.empty() ? void() : readNear(state, meant.front(), unknown.value);
            m_path.pop_back();
        }
    }
}

// Reads the value of a misspelt key as that of the required one, which is missing: an optional one isn't read, so what
// is wrong with it doesn't count.
void Walk::readNear(ObjectState& state, const std::string& key, std::size_t value) {
    const auto keys = state.rule.keys;
    const auto rule = std::find_if(keys.begin(), keys.end(), [&](auto& candidate) { return candidate.key == key; });
    if (rule->isRequired && value != std::string::npos) {
        m_reader.readAt(value, [&] { readKnown(*rule, state.texts[static_cast<std::size_t>(rule - keys.begin())]); });
    }
}

bool Walk::readArray(const ObjectRule& rule) {
    if (!m_reader.open()) {
        return false;
    }
    if (&rule == &s_entry) {
        return readList();
    }
    for (std::size_t index = 0;; ++index) {
        if (const Reader::Step step = m_reader.next(); step != Reader::Step::item) {
            return step == Reader::Step::end;
        }
        if (!readElement(rule, index)) {
            return false;
        }
    }
}

bool Walk::readElement(const ObjectRule& rule, std::size_t index) {
    m_path.push_back(std::to_string(index));
    const bool goesOn = readObject(rule);
    if (goesOn) {
        m_path.pop_back();
    }
    return goesOn;
}

// The product list. If the reader is lost, goes on with the next entry.
bool Walk::readList() {
    const std::size_t levels = m_path.size();
    const std::size_t depth = m_reader.depth();
    for (;; ++m_index) {
        Reader::Step step = m_reader.next();
        if (step == Reader::Step::end) {
            return true;
        }
        while (step == Reader::Step::lost || !readElement(s_entry, m_index)) {
            m_path.resize(levels);
            if (!m_reader.find(keys::product, depth)) {
                return false;
            }
            m_index += step == Reader::Step::lost ? 0 : 1;
            step = Reader::Step::item;
        }
    }
}

std::size_t Walk::run() {
    if (!m_reader.start() || !readObject(s_document) || !m_reader.finish()) {
        while (m_reader.find(keys::product, 0)) {
            m_path = {keys::documentationSet, keys::productList};
            readElement(s_entry, m_index++);
        }
    }
    m_path.clear();
    m_reader.reportRest();
    return m_reader.soundEnd();
}

}  // namespace

std::string pointerTo(const Product& product) {
    return product.pointer;
}

std::string pointerTo(const Product& product, Field field) {
    return product.pointer + '/' + std::string(s_productKeys.at(field).key);
}

std::size_t walkCatalogue(const std::string& text, Problems& problems, const std::function<void(Product&)>& visit) {
    return Walk(text, problems, visit).run();
}

}  // namespace app::check
