#include "check/walk.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <boost/algorithm/string/replace.hpp>
#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "check/Problems.hpp"
#include "check/syntax.hpp"
#include "doc_products_shared/catalogue_keys.hpp"
#include "json/lexical_reader.hpp"
#include "json/structure_parser.hpp"
#include "near_names.hpp"

namespace app::check {

namespace {

namespace json = foundation::json;
namespace keys = doc_products_shared::catalogue_keys;
using json::ParseResult;
using json::Position;

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

// The state of an object that is walked through.
struct ObjectState {
    const ObjectRule& rule;
    std::vector<Text> texts = std::vector<Text>(rule.keys.size());
    std::vector<std::optional<Place>> places = std::vector<std::optional<Place>>(rule.keys.size());  // of known keys
    std::map<std::string, Place, std::less<>> unknown = {};                                          // other keys
    bool isTyped = false;  // a key announces a typed array or its data
};

constexpr const char* kindName(Kind kind) {
    return kind == Kind::string ? "a string" : kind == Kind::array ? "an array" : "an object";
}

// By the index of the alternative that a Value holds.
constexpr std::array s_valueNames = {"nothing",  "null",      "a boolean", "a number", "a string",
                                     "an array", "an object", "a number",  "a number", "a number"};

constexpr char openingOf(Kind kind) {
    return kind == Kind::string ? '"' : kind == Kind::array ? '[' : '{';
}

bool isExpectedUnknown(std::string_view key) {
    return key == "$schema" || key == "description" || key.starts_with("base_product_");
}

class Walk {
public:
    Walk(const std::string& text, Problems& problems, const std::function<void(Product&)>& visit)
        : m_text(text), m_problems(problems), m_visit(visit) {}

    std::size_t run();

private:
    std::size_t offset(Position position) const { return static_cast<std::size_t>(position - m_text.begin()); }
    Place place(Position begin, Position end) const { return {offset(begin), static_cast<std::size_t>(end - begin)}; }
    std::string pointer() const;

    // Report a problem at the current part of the document.
    void report(const Code& code, const Place& place, std::string message, std::vector<Related> related = {});
    void reportSyntax(ParseResult result, Position position);
    void reportType(const Place& place, Kind expected, const json::Value& value);

    // Readers like those of the library. On success the path is as before; after a failure it names the part that
    // failed.
    ParseResult readObject(const ObjectRule& rule, Position& position, unsigned int depth);
    ParseResult readMember(ObjectState& state, const json::Key& key, Position& position, unsigned int depth);
    ParseResult readKnown(const KeyRule& rule, Text& text, Position& position, unsigned int depth);
    ParseResult readFirst(const KeyRule& rule, ObjectState& state, std::size_t index, Position& position,
                          unsigned int depth);
    ParseResult readUnknown(ObjectState& state, Position& position, unsigned int depth);
    ParseResult readArray(const ObjectRule& rule, Position& position, unsigned int depth);
    ParseResult readElement(const ObjectRule& rule, Position& position, unsigned int depth);
    ParseResult readEntry(Position& position, unsigned int depth);
    ParseResult readOther(Kind expected, Position& position, unsigned int depth);
    ParseResult skip(Position& position, unsigned int depth) const;

    bool isDelimited(Position position) const;
    bool findNextEntry(Position& position) const;

    void endObject(ObjectState& state, Position begin, unsigned int depth);
    void checkTyped(Position begin, unsigned int depth);
    std::string nameOf(const ObjectState& state) const;
    void reportDuplicate(const Place& first);
    void reportMissing(const ObjectState& state, const Place& place);
    void reportUnknown(const ObjectState& state);

    const std::string& m_text;
    Problems& m_problems;
    const std::function<void(Product&)>& m_visit;
    std::vector<std::string> m_path;
    Product m_product;
    std::size_t m_index = 0;                  // of the entry of the product list
    Place m_lastString;                       // a key, or a value of a known key
    std::size_t m_sound = std::string::npos;  // where the first fault of syntax is
    bool m_isReported = false;                // the failure that is being returned
};

std::string escaped(const std::string& segment) {
    return boost::algorithm::replace_all_copy(boost::algorithm::replace_all_copy(segment, "~", "~0"), "/", "~1");
}

std::string Walk::pointer() const {
    std::string text;
    for (const std::string& segment : m_path) {
        text += '/' + escaped(segment);
    }
    return text;
}

void Walk::report(const Code& code, const Place& place, std::string message, std::vector<Related> related) {
    m_problems.add({&code, place, std::move(message), pointer(), std::move(related)});
}

void Walk::reportSyntax(ParseResult result, Position position) {
    json::skip_whitespace(position, m_text.end(), 0);
    m_sound = std::min(m_sound, offset(position));
    Problem problem = syntaxProblem(m_text, result, offset(position), m_lastString);
    problem.pointer = pointer();
    m_problems.add(std::move(problem));
}

void Walk::reportType(const Place& place, Kind expected, const json::Value& value) {
    const bool isElement = !m_path.empty() && m_path.back().find_first_not_of("0123456789") == std::string::npos;
    const std::string subject = m_path.empty() ? "the document"
                                : isElement    ? "an element here"
                                               : '"' + m_path.back() + '"';
    report(code("wrong-type"), place,
           fmt::format("{} must be {}, and is {}", subject, kindName(expected),
                       s_valueNames.at(static_cast<std::size_t>(value.storage().which()))));
}

ParseResult Walk::skip(Position& position, unsigned int depth) const {
    json::Value discarded;
    return json::parse_value(discarded, position, m_text.end(), 0, depth);
}

ParseResult Walk::readOther(Kind expected, Position& position, unsigned int depth) {
    const Position begin = position;
    json::Value value;
    const ParseResult result = json::parse_value(value, position, m_text.end(), 0, depth);
    if (result == ParseResult::Ok) {
        reportType(place(begin, position), expected, value);
    }
    return result;
}

ParseResult Walk::readKnown(const KeyRule& rule, Text& text, Position& position, unsigned int depth) {
    if (position == m_text.end() || *position != openingOf(rule.kind)) {
        return readOther(rule.kind, position, depth);
    }
    if (rule.kind == Kind::object) {
        return readObject(*rule.content, position, depth);
    }
    if (rule.kind == Kind::array) {
        return readArray(*rule.content, position, depth);
    }
    const Position begin = position;
    const ParseResult result = json::parse_string(text.text, position, m_text.end(), 0);
    text.place = m_lastString = place(begin, position);
    text.isThere = result == ParseResult::Ok;
    return result;
}

ParseResult Walk::readMember(ObjectState& state, const json::Key& key, Position& position, unsigned int depth) {
    m_lastString = place(key.begin, key.end);
    const auto keys = state.rule.keys;
    const auto found = std::find_if(keys.begin(), keys.end(), [&](auto& rule) { return rule.key == key.text; });
    m_path.emplace_back(key.text);
    const ParseResult result =
        found == keys.end() ? readUnknown(state, position, depth)
                            : readFirst(*found, state, static_cast<std::size_t>(found - keys.begin()), position, depth);
    if (result == ParseResult::Ok) {
        m_path.pop_back();
    }
    return result;
}

// The library reads the first of equal keys.
ParseResult Walk::readFirst(const KeyRule& rule, ObjectState& state, std::size_t index, Position& position,
                            unsigned int depth) {
    if (state.places[index]) {
        reportDuplicate(*state.places[index]);
        return skip(position, depth);
    }
    state.places[index] = m_lastString;
    return readKnown(rule, state.texts[index], position, depth);
}

ParseResult Walk::readUnknown(ObjectState& state, Position& position, unsigned int depth) {
    const std::string& key = m_path.back();
    const bool isTyped = key == "zqtype" || key == "zqdata";
    state.isTyped = state.isTyped || isTyped;
    const auto [entry, isNew] = state.unknown.try_emplace(key, m_lastString);
    if (!isNew && !isTyped) {
        reportDuplicate(entry->second);
    }
    return skip(position, depth);
}

void Walk::reportDuplicate(const Place& first) {
    report(code("duplicate-key"), m_lastString,
           fmt::format("\"{}\" is dropped: the object has it already", m_path.back()),
           {{"the first one is read", first}});
}

ParseResult Walk::readObject(const ObjectRule& rule, Position& position, unsigned int depth) {
    const Position begin = position;
    ObjectState state{rule};
    if (&rule == &s_product) {
        m_product = {m_index, place(begin, begin + 1), {}, {}};
    }
    const ParseResult result = json::visit_members(
        position, m_text.end(), 0, depth,
        [&](const json::Key& key, Position& value) { return readMember(state, key, value, depth + 1); });
    if (result == ParseResult::Ok) {
        endObject(state, begin, depth);
    }
    return result;
}

void Walk::endObject(ObjectState& state, Position begin, unsigned int depth) {
    if (state.isTyped) {
        checkTyped(begin, depth);
    }
    if (&state.rule == &s_family) {
        m_product.families.push_back(state.texts.front());
    } else if (&state.rule == &s_product) {
        std::move(state.texts.begin(), state.texts.begin() + fieldCount, m_product.fields.begin());
    }
    reportMissing(state, place(begin, begin + 1));
    reportUnknown(state);
    if (&state.rule == &s_product) {
        m_visit(m_product);
    }
}

// The typed data has been read like any other value. Only the library's reader knows when it is read as integers.
void Walk::checkTyped(Position begin, unsigned int depth) {
    if (const ParseResult result = skip(begin, depth); result != ParseResult::Ok) {
        reportSyntax(result, begin);
    }
}

std::string Walk::nameOf(const ObjectState& state) const {
    if (&state.rule == &s_product && !m_product.fields[displayName].text.empty()) {
        return "product \"" + m_product.fields[displayName].text + '"';
    }
    return m_path.empty() ? "the document" : state.rule.name.empty() ? "this entry" : '"' + m_path.back() + '"';
}

void Walk::reportMissing(const ObjectState& state, const Place& place) {
    for (std::size_t i = 0; i < state.rule.keys.size(); ++i) {
        if (state.rule.keys[i].isRequired && !state.places[i]) {
            report(code("missing-key"), place, fmt::format("{} has no \"{}\"", nameOf(state), state.rule.keys[i].key));
        }
    }
}

void Walk::reportUnknown(const ObjectState& state) {
    if (state.unknown.empty()) {
        return;
    }
    std::vector<std::string> absent;
    for (std::size_t i = 0; i < state.rule.keys.size(); ++i) {
        if (!state.places[i]) {
            absent.emplace_back(state.rule.keys[i].key);
        }
    }
    for (const auto& [key, place] : state.unknown) {
        const std::string meant = suggestion(nearNames(key, absent));
        if (!meant.empty() || !isExpectedUnknown(key)) {
            m_path.push_back(key);
            report(meant.empty() ? code("unknown-key") : code("near-key"), place,
                   fmt::format("\"{}\" isn't read{}", key, meant));
            m_path.pop_back();
        }
    }
}

ParseResult Walk::readArray(const ObjectRule& rule, Position& position, unsigned int depth) {
    std::size_t index = 0;
    return json::visit_elements(position, m_text.end(), 0, depth, [&](Position& value) {
        m_path.push_back(std::to_string(index++));
        const ParseResult result =
            &rule == &s_entry ? readEntry(value, depth + 1) : readElement(rule, value, depth + 1);
        if (result == ParseResult::Ok) {
            m_path.pop_back();
        }
        return result;
    });
}

ParseResult Walk::readElement(const ObjectRule& rule, Position& position, unsigned int depth) {
    return position != m_text.end() && *position == '{' ? readObject(rule, position, depth)
                                                        : readOther(Kind::object, position, depth);
}

// An entry of the product list. After a fault of syntax reads the next one in its place.
ParseResult Walk::readEntry(Position& position, unsigned int depth) {
    const std::size_t levels = m_path.size();
    for (;; ++m_index) {
        m_path.back() = std::to_string(m_index);
        const ParseResult result = readElement(s_entry, position, depth);
        if (result == ParseResult::Ok && isDelimited(position)) {
            ++m_index;
            return result;
        }
        reportSyntax(result == ParseResult::Ok ? ParseResult::ExpectedArrayDelimiter : result, position);
        m_path.resize(levels);
        if (!findNextEntry(position)) {
            m_isReported = true;
            return ParseResult::ExpectedArrayDelimiter;
        }
    }
}

// True if the list goes on or ends here, or the text ends.
bool Walk::isDelimited(Position position) const {
    json::skip_whitespace(position, m_text.end(), 0);
    return position == m_text.end() || *position == ',' || *position == ']';
}

// Moves to the next text that looks like the start of an entry.
bool Walk::findNextEntry(Position& position) const {
    const std::string key = '"' + std::string(keys::product) + '"';
    const auto skipTo = [&](Position& cursor, std::string_view token) {
        json::skip_whitespace(cursor, m_text.end(), 0);
        const bool isThere = std::string_view(cursor, m_text.end()).starts_with(token);
        cursor += isThere ? static_cast<std::ptrdiff_t>(token.size()) : 0;
        return isThere;
    };
    while ((position = std::find(position, m_text.end(), '{')) != m_text.end()) {
        Position ahead = position + 1;
        if (skipTo(ahead, key) && skipTo(ahead, ":")) {
            return true;
        }
        ++position;
    }
    return false;
}

std::size_t Walk::run() {
    Position position = m_text.begin();
    json::skip_whitespace(position, m_text.end(), 0);
    const ParseResult result = readElement(s_document, position, 0);
    json::skip_whitespace(position, m_text.end(), 0);
    if (result == ParseResult::Ok ? position != m_text.end() : !m_isReported) {
        reportSyntax(result, position);
    }
    return m_sound;
}

}  // namespace

std::string pointerTo(const Product& product) {
    return fmt::format("/{}/{}/{}/{}", keys::documentationSet, keys::productList, product.index, keys::product);
}

std::string pointerTo(const Product& product, Field field) {
    return pointerTo(product) + '/' + std::string(s_productKeys.at(field).key);
}

std::size_t walkCatalogue(const std::string& text, Problems& problems, const std::function<void(Product&)>& visit) {
    return Walk(text, problems, visit).run();
}

}  // namespace app::check
