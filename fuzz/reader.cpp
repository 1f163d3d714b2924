#include <boost/variant/apply_visitor.hpp>
#include <cmath>
#include <concepts>
#include <iomanip>
#include <limits>
#include <optional>
#include <set>
#include <sstream>
#include <utility>

#include "fuzz/target.hpp"
#include "json/ParserException.hpp"
#include "json/parse.hpp"

namespace foundation::json {

// Trees are equal in every index and all content, save that 0 equals -0.
static bool operator==(Undefined, Undefined) {
    return true;
}
static bool operator==(Null, Null) {
    return true;
}
static bool operator==(const Value& left, const Value& right) {
    return left.storage() == right.storage();
}

}  // namespace foundation::json

using namespace foundation::json;
using fuzz::check;

namespace {

using Tokens = std::vector<std::string_view>;

// As JSON text; an undefined value, which no text holds, becomes one that is refused.
struct Write {
    using result_type = void;
    std::ostream& out;

    void operator()(const Value& value) const { boost::apply_visitor(*this, value.storage()); }
    void operator()(Undefined) const { out << "undefined"; }
    void operator()(Null) const { out << "null"; }
    void operator()(const std::string& text) const { out << std::quoted(text); }
    void operator()(const std::vector<Value>& elements) const { list('[', elements, ']'); }
    void operator()(const std::map<std::string, Value>& members) const { list('{', members, '}'); }

    void operator()(const std::pair<const std::string, Value>& member) const {
        out << std::quoted(member.first) << ':';
        operator()(member.second);
    }

    void operator()(std::integral auto number) const { out << number; }  // or a bool
    void operator()(double number) const {
        const bool infinite = std::isinf(number);
        infinite ? out << (number < 0 ? "-1e999" : "1e999") : out << number;
    }

    template <class Items>
    void list(char opening, const Items& items, char closing) const {
        const char* separator = "";
        out << opening;
        for (const auto& item : items) {
            out << std::exchange(separator, ",");
            operator()(item);
        }
        out << closing;
    }
};

std::string written(const Value& value) {
    std::ostringstream out;
    Write{out << std::boolalpha << std::setprecision(std::numeric_limits<double>::max_digits10)}(value);
    return out.str();
}

// The length of the token, the comment or the byte of white space that an accepted text goes on with.
std::size_t firstLength(std::string_view text) {
    std::size_t end = 1;
    switch (text.front()) {
        case '"':
            while (text.at(end) != '"') {
                end += text[end] == '\\' ? 2 : 1;
            }
            return end + 1;
        case '/':
            end = text.at(1) == '*' ? text.find("*/", 2) : text.find('\n') - 1;
            return std::min(end, text.size() - 2) + 2;
        default:
            return std::clamp<std::size_t>(text.find_first_of(" \t\n\v\f\r[]{},:/"), 1, text.size());
    }
}

Tokens tokensOf(std::string_view text) {
    Tokens tokens;
    while (!text.empty()) {
        const std::string_view token = text.substr(0, firstLength(text));
        if (std::string_view(" \t\n\v\f\r/").find(token.front()) == std::string_view::npos) {
            tokens.push_back(token);
        }
        text.remove_prefix(token.size());
    }
    return tokens;
}

// Whether an object has a key of typed arrays twice: what that gives depends on the order of the members.
bool repeatsTypedKey(const Tokens& tokens) {
    std::vector<std::set<std::string>> open;  // the typed keys so far, of each array and object
    for (std::size_t i = 0; i != tokens.size(); ++i) {
        if (tokens[i] == "{" || tokens[i] == "[") {
            open.emplace_back();
        } else if (tokens[i] == "}" || tokens[i] == "]") {
            open.pop_back();
        } else if (tokens[i] == ":") {
            const auto key = parse(std::string(tokens[i - 1]), 0).get<std::string>();
            if ((key == "zqtype" || key == "zqdata") && !open.back().insert(key).second) {
                return true;
            }
        }
    }
    return false;
}

// Every kind of white space, in runs of many lengths, between all tokens and around them.
std::string spread(const Tokens& tokens) {
    std::string text;
    for (const std::string_view token : tokens) {
        text.append(text.size() % 19, ' ').append(fuzz::s_spaces).append(token);
    }
    return text.append(fuzz::s_spaces);
}

void examineRefusal(const std::string& text, const ParserException& refusal) {
    check(refusal.offset() <= text.size(), "a refusal lies within the text");
    const std::string before = text.substr(0, refusal.offset());
    const auto feeds = std::count(before.begin(), before.end(), '\n');
    check(refusal.line() == static_cast<std::size_t>(feeds) + 1, "the line is that of the offset");
    check(refusal.column() == before.size() - (before.rfind('\n') + 1), "the column is that of the offset");
    const std::string what = refusal.what();
    const bool cut = refusal.source().find('\0') != std::string::npos;
    check(std::count(what.begin(), what.end(), '\n') == (cut ? 1 : 2),
          "a message has three lines unless a NUL cuts it");
}

std::optional<Value> read(const std::string& text, unsigned flags) {
    try {
        return parse(text, flags);
    } catch (const ParserException& refusal) {
        examineRefusal(text, refusal);
    }
    return {};
}

// What is written tells the two zeros apart.
bool readsAs(const Value& expected, const std::string& text, unsigned flags) {
    const auto value = read(text, flags);
    return value && *value == expected && written(*value) == written(expected);
}

void examine(const std::string& text, unsigned flags) {
    if (const auto value = read(text, flags)) {
        const Tokens tokens = tokensOf(text);
        check(repeatsTypedKey(tokens) || readsAs(*value, written(*value), flags), "what is written reads the same");
        check(flags != 0 || readsAs(*value, spread(tokens), flags), "white space between tokens changes nothing");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    examine(text, 0);
    examine(text, ALLOW_COMMENTS);
    return 0;
}
