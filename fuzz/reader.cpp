#include <boost/locale/encoding_utf.hpp>
#include <functional>
#include <locale>
#include <optional>
#include <set>

#include "fuzz/target.hpp"
#include "json/ParserException.hpp"
#include "json/structure_parser.hpp"
#include "json/typed_integers.hpp"
#include "support/Show.hpp"

using namespace foundation::json;
using enum ParseResult;
using Array = std::vector<Value>;
using Object = std::map<std::string, Value>;
using boost::lexical_cast, support::Show;

namespace {

// The number and the description that what() of a refusal shows.
const std::map<ParseResult, std::string> s_sentences = {
    {Ok, "E0000): Parse incomplete"},
    {InvalidUnicodeEscape,
     "E0005): Invalid \\u escape: four hexadecimal digits are needed, and a second \\u escape after a high surrogate"},
    {InvalidEscape, "E0006): Invalid escape: only \" \\ / b f n r t u may follow a backslash"},
    {ExpectedString, "E0008): Expected a value, or a key in double quotes"},
    {ExpectedDigit, "E0011): Expected a digit"},
    {ExpectedFractionDigit, "E0012): Expected a digit after the decimal point"},
    {ExpectedExponentDigit, "E0013): Expected a digit in the exponent"},
    {ExpectedArray, "E0014): Expected an array"},
    {ExpectedArrayDelimiter, "E0015): Expected \",\" or \"]\" after an array element"},
    {ExpectedObjectDelimiter, "E0017): Expected \",\" or \"}\" after an object member"},
    {ExpectedColon, "E0018): Expected \":\" after a key"},
    {UnexpectedEnd, "E0019): The text ends too early"},
    {InvalidInteger, "E0020): Expected an integer as the element of a typed array"},
    {NestingTooDeep, "E0021): Arrays and objects are nested more than 256 deep"},
};

// An independent reader, as plain as possible. Each function moves `place`, its cursor, and throws the reason if it
// refuses the text. A step that succeeds returns true, so that steps chain with &&.
struct Model {
    std::string_view text;
    unsigned flags, depth = 0;
    std::size_t place = 0;

    static bool require(bool holds, ParseResult otherwise) { return holds ? true : throw otherwise; }
    bool has(std::size_t count) const { return require(text.size() - place >= count, UnexpectedEnd); }
    bool at(std::string_view bytes) const { return place != text.size() && bytes.find(text[place]) < bytes.size(); }
    bool startsWith(std::string_view token) const { return text.substr(place).starts_with(token); }

    bool go(std::size_t to) { return (place = std::min(to, text.size())) <= to; }
    bool take(std::string_view bytes) { return at(bytes) && go(place + 1); }
    bool accept(std::string_view bytes) { return has(1) && take(bytes); }
    bool expect(std::string_view bytes, ParseResult otherwise) { return require(accept(bytes), otherwise); }
    bool pass(std::string_view bytes) { return go(text.find_first_not_of(bytes, place)); }

    bool comment(std::string_view opening, std::string_view closing) {
        const bool opens = (flags & ALLOW_COMMENTS) != 0 && startsWith(opening);
        return opens && go(std::min(text.find(closing, place + 2), text.size()) + closing.size());
    }
    bool skip() { return pass(fuzz::s_spaces) && (comment("//", "\n") || comment("/*", "*/")) ? skip() : true; }

    char16_t hex4() {
        const std::string digits(text.substr(place, 4));
        const bool isHex = digits.find_first_not_of("0123456789ABCDEFabcdef") == std::string::npos;
        has(4) && require(isHex, InvalidUnicodeEscape) && go(place + 4);
        return static_cast<char16_t>(std::stoul(digits, nullptr, 16));
    }

    std::string units() {
        std::u16string units{hex4()};
        if ((units[0] & 0xFC00) == 0xD800 && has(6)) {
            require(take("\\") && take("u"), InvalidUnicodeEscape);
            units += hex4();
        }
        const char16_t lone = units.size() == 2 && (units[1] & 0xFC00) == 0xDC00 ? 0 : 0xF800;
        const auto isLone = [&](char16_t unit) { return (unit & lone) == 0xD800; };
        std::ranges::replace_if(units, isLone, u'\uFFFD');
        return boost::locale::conv::utf_to_utf<char>(units);
    }

    std::string escape() {
        constexpr std::string_view s_escapes = "\"/\\bfnrtu", s_meanings = "\"/\\\b\f\n\r\t";
        const std::size_t which = has(1) ? s_escapes.find(text[place]) : 0;
        expect(s_escapes, InvalidEscape);
        return which == s_meanings.size() ? units() : std::string(1, s_meanings[which]);
    }

    std::string character() {
        require(has(1) && !at("\""), StringEndReached);
        Model ahead = *this;  // an invalid escape leaves the cursor at its start
        const std::string read = ahead.take("\\") ? ahead.escape() : std::string(1, text[ahead.place++]);
        place = ahead.place;
        return read;
    }

    std::string string() {
        std::string read;
        expect("\"", ExpectedString);
        while (!accept("\"")) {
            read += character();
        }
        return read;
    }

    bool digits(ParseResult otherwise) { return expect("0123456789", otherwise) && pass("0123456789"); }
    bool sign(std::string_view bytes) { return accept(bytes) || true; }
    bool whole(ParseResult otherwise) { return sign("-") && (accept("0") || digits(otherwise)); }
    bool fraction() { return take(".") ? digits(ExpectedFractionDigit) : pass("0123456789"); }
    bool exponent() { return !take("Ee") || (sign("+-") && digits(ExpectedExponentDigit)); }

    bool real() { return whole(ExpectedDigit) && fraction() && exponent(); }
    bool integer() { return whole(InvalidInteger); }

    std::string token(bool (Model::*scan)()) {
        const std::size_t start = place;
        (this->*scan)();
        return std::string(text.substr(start, place - start));
    }

    double number() { return std::strtod(token(&Model::real).c_str(), nullptr); }
    long long signedInteger() { return std::strtoll(token(&Model::integer).c_str(), nullptr, 10); }
    unsigned long long unsignedInteger() {
        const bool negative = at("-");
        return std::strtoull(token(&Model::integer).c_str(), nullptr, 10) * (negative ? 0 : 1);
    }

    Value literal(std::string_view word, const Value& meaning, ParseResult otherwise) {
        require(startsWith(word), word.starts_with(text.substr(place)) ? UnexpectedEnd : otherwise);
        place += word.size();
        return meaning;
    }
    Value null() { return literal("null", Null(), ExpectedNull); }
    Value boolean() { return literal(at("t") ? "true" : "false", at("t"), ExpectedBoolean); }

    Value value() {
        return at("{")                                     ? Value(object())
               : at("[")                                   ? Value(array())
               : at("-0123456789")                         ? Value(number())
               : startsWith("null")                        ? null()
               : startsWith("true") || startsWith("false") ? boolean()
                                                           : Value(string());
    }

    void items(std::string_view brackets, ParseResult noOpening, ParseResult noDelimiter, const auto& readItem) {
        const std::string_view closing = brackets.substr(1);
        expect(brackets.substr(0, 1), noOpening) && require(++depth <= 256, NestingTooDeep) && skip();
        for (bool ends = accept(closing); !ends; ends = !accept(",") && expect(closing, noDelimiter)) {
            skip();
            readItem();
            skip();
        }
        --depth;
    }

    Array elements(auto read, std::string_view spoils) {
        Array elements;
        items("[]", ExpectedArray, ExpectedArrayDelimiter, [&] {
            elements.push_back((this->*read)());
            skip() && require(!at(spoils), InvalidInteger);
        });
        return elements;
    }
    Array array() { return elements(&Model::value, ""); }
    Array signedArray() { return elements(&Model::signedInteger, "\".Ee{"); }
    Array unsignedArray() { return elements(&Model::unsignedInteger, "\".Ee{"); }

    Value typed(const auto& type) { return type.empty() ? value() : type[0] == 'u' ? unsignedArray() : signedArray(); }

    Object object() {
        static const std::set<std::string> s_types = {"int8",  "int16",  "int32",  "int64",
                                                      "uint8", "uint16", "uint32", "uint64"};
        Object members;
        std::string type;
        std::optional<Model> data;  // at the data whose type isn't known yet
        items("{}", ExpectedObject, ExpectedObjectDelimiter, [&] {
            const std::string key = string();
            skip() && expect(":", ExpectedColon) && skip();
            data = key == "zqdata" ? *this : data;
            const Value read = key == "zqdata" ? typed(type) : value();
            if (key == "zqtype" && read.storage().which() == 4) {
                type = s_types.contains(read.get<std::string>()) ? read.get<std::string>() : type;
                if (data && !type.empty()) {
                    members["zqdata"] = data->typed(type);
                    data.reset();
                }
            }
            members.try_emplace(key, read);
        });
        return members;
    }
};

// The reason of a refusal, or Ok.
ParseResult reasonOf(auto reader, Model& model, auto& out) {
    try {
        out = std::invoke(reader, model);
    } catch (ParseResult reason) {
        return reason;
    }
    return Ok;
}

const std::tuple<std::string, double, long long, unsigned long long, char16_t, Value, Array, Object> s_before{
    "..", 0.5, 5, 5, u'\5', Value(0.5), {Value(0.5)}, {{"", Value(0.5)}}};

std::string joined(const auto&... parts) {
    return ((lexical_cast<std::string>(parts) + ' ') + ...);
}

// Compares each reader of the library with its model, starting at the model's place. `text` may continue after the end
// of the model's text.
void examineReaders(const std::string& text, const Model& start) {
    const unsigned flags = start.flags, depth = start.depth;
    const auto compare = [&](const char* name, auto modelled, auto read, auto... context) {
        using Out = std::decay_t<std::invoke_result_t<decltype(modelled), Model&>>;
        Model model = start;
        Out expected = std::get<Out>(s_before), came = expected;
        Position position = text.begin() + static_cast<std::ptrdiff_t>(start.place);
        const Position end = text.begin() + static_cast<std::ptrdiff_t>(start.text.size());
        const ParseResult result = read(came, position, end, context...), reason = reasonOf(modelled, model, expected);
        fuzz::checkEqual(joined(get_parse_result_description(result), position - text.begin(), Show()(came)),
                         joined(get_parse_result_description(reason), model.place, Show()(expected)), name);
    };
    const auto append = [](Model& model) { return std::get<std::string>(s_before) + model.character(); };
    const auto skip = [](Model& model) { return model.skip() ? std::get<double>(s_before) : 0; };
    const auto skipSpace = [&](double&, Position& at, Position end) { return skip_whitespace(at, end, flags), Ok; };
    compare("parse_bool", &Model::boolean, parse_bool, flags);
    compare("parse_null", &Model::null, parse_null);
    compare("parse_string", &Model::string, parse_string, flags);
    compare("parse_string_char", append, parse_string_char);
    compare("parse_hex4", &Model::hex4, parse_hex4);
    compare("parse_number", &Model::number, parse_number, flags);
    compare("parse_signed_integer", &Model::signedInteger, parse_signed_integer, flags);
    compare("parse_unsigned_integer", &Model::unsignedInteger, parse_unsigned_integer, flags);
    compare("parse_object", &Model::object, parse_object, flags, depth);
    compare("parse_array", &Model::array, parse_array, flags, depth);
    compare("parse_signed_array", &Model::signedArray, parse_signed_array, flags, depth);
    compare("parse_unsigned_array", &Model::unsignedArray, parse_unsigned_array, flags, depth);
    for (const std::string type : {"", "int8", "uint8"}) {
        const auto typed = [&](Model& model) { return model.typed(type); };
        compare("parse_typed_data", typed, std::bind_front(parse_typed_data, type), flags, depth);
    }
    compare("skip_whitespace", skip, skipSpace);
}

// Compares `parse` with the model. It reports a refusal after any white space that follows the failure.
void examineParse(const std::string& text, unsigned flags) {
    Model model{text, flags};
    Value value;
    model.skip();
    const ParseResult result = reasonOf(&Model::value, model, value);
    model.skip();
    const std::string before = text.substr(0, model.place), after = text.substr(model.place, 80);
    const long line = std::count(before.begin(), before.end(), '\n') + 1, code = static_cast<long>(result);
    const std::size_t column = before.size() - (before.rfind('\n') + 1), caret = std::min<std::size_t>(column, 80);
    const std::string source = before.substr(before.size() - caret) + after.substr(0, after.find('\n'));
    const std::string what = "JSON ParserException (" + s_sentences.at(result) + " (Line " + std::to_string(line) +
                             ", Column " + std::to_string(column) + ")\n\t" + source + "\n\t" +
                             std::string(caret, ' ') + '^';
    const std::string refusal = joined(what.c_str(), code, before.size(), line, column, caret, source);
    const std::string expected = code == 0 && after.empty() ? Show()(value) : refusal;
    try {
        fuzz::checkEqual(Show()(parse(text, flags)), expected, "parse");
    } catch (const ParserException& e) {
        fuzz::checkEqual(
            joined(e.what(), static_cast<long>(e.result()), e.offset(), e.line(), e.column(), e.caret(), e.source()),
            expected, "parse");
    }
}

// A host's locale may group digits.
struct GroupsDigits : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::locale s_former = std::locale::global(std::locale(std::locale::classic(), new GroupsDigits));
    const std::string text(data, data + size);
    for (const unsigned flags : {0U, ALLOW_COMMENTS, ~ALLOW_COMMENTS}) {
        examineParse(text, flags);
        examineReaders(text, {text, flags});
        examineReaders(text, {text, flags, 255, std::min<std::size_t>(size, 1)});
        examineReaders(text, {std::string_view(text).substr(0, size - 1), flags});
    }
    return 0;
}
