#include "check/syntax.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace app::check {

namespace {

using foundation::json::ParseResult;

const Code& codeOf(ParseResult result) {
    switch (result) {
        case ParseResult::ExpectedArrayDelimiter:
        case ParseResult::ExpectedObjectDelimiter:
            return code("expected-comma");
        case ParseResult::ExpectedColon:
            return code("expected-colon");
        case ParseResult::UnexpectedEnd:
            return code("unexpected-end");
        case ParseResult::InvalidEscape:
            return code("bad-escape");
        case ParseResult::InvalidUnicodeEscape:
            return code("bad-unicode-escape");
        case ParseResult::ExpectedDigit:
        case ParseResult::ExpectedFractionDigit:
        case ParseResult::ExpectedExponentDigit:
            return code("bad-number");
        case ParseResult::ExpectedArray:
        case ParseResult::InvalidInteger:
            return code("bad-typed-array");
        case ParseResult::NestingTooDeep:
            return code("nesting-too-deep");
        default:
            return code("expected-value");
    }
}

struct Wording {
    std::string_view start;  // of the text
    std::string_view message;
};

constexpr std::array s_files = {
    Wording{"\xFE\xFF", "the file is UTF-16: save it as UTF-8"},
    Wording{"\xFF\xFE", "the file is UTF-16: save it as UTF-8"},
    Wording{"\x1F\x8B", "the file is compressed with gzip: unpack it"},
    Wording{"<", "the file is XML or HTML: a catalogue is JSON"},
};

// What authors write where JSON has no such thing.
constexpr std::array s_words = {
    Wording{"True", "write true in lower case"},
    Wording{"TRUE", "write true in lower case"},
    Wording{"False", "write false in lower case"},
    Wording{"FALSE", "write false in lower case"},
    Wording{"NaN", "JSON has no NaN"},
    Wording{"Infinity", "JSON has no Infinity"},
    Wording{"-Infinity", "JSON has no Infinity"},
    Wording{"+", "a number takes no plus sign"},
    Wording{".", "a number starts with a digit: write 0 before the point"},
    Wording{",", "a value is missing before this"},
    Wording{"}", "a value is missing before this"},
    Wording{"]", "a value is missing before this"},
};

// What other languages write for nothing.
constexpr std::array s_nothings = {
    Wording{"Null", "write null in lower case"},
    Wording{"NULL", "write null in lower case"},
    Wording{"None", "JSON has no None: leave the key out"},
    Wording{"nil", "JSON has no nil: leave the key out"},
    Wording{"undefined", "JSON has no undefined: leave the key out"},
};

constexpr std::string_view s_keyQuotes = "a key takes double quotes";
constexpr std::string_view s_otherQuotes = "strings and keys take double quotes";
constexpr std::string_view s_typographic = "strings and keys take straight double quotes, not typographic ones";

constexpr std::array s_quotes = {
    Wording{"\"", ""},
    Wording{"'", s_otherQuotes},
    Wording{"`", s_otherQuotes},
    Wording{"\u2018", s_typographic},
    Wording{"\u2019", s_typographic},
    Wording{"\u201A", s_typographic},
    Wording{"\u201C", s_typographic},
    Wording{"\u201D", s_typographic},
    Wording{"\u201E", s_typographic},
    Wording{"\u00AB", s_typographic},
    Wording{"\u00BB", s_typographic},
};

constexpr std::string_view s_noBreak = "a no-break space isn't white space in JSON: write a plain space";
constexpr std::string_view s_blank = "this blank isn't white space in JSON: write a plain space";

constexpr std::array s_blanks = {
    Wording{"\uFEFF", "a byte order mark: save the file as UTF-8 without one"},
    Wording{"\u00A0", s_noBreak},
    Wording{"\u202F", s_noBreak},
    Wording{"\u2002", s_blank},
    Wording{"\u2003", s_blank},
    Wording{"\u2009", s_blank},
    Wording{"\u200B", s_blank},
    Wording{"\u2028", s_blank},
    Wording{"\u3000", s_blank},
};

constexpr std::array<std::string_view, 4> s_conflicts = {"<<<<<<< ", "||||||| ", "=======", ">>>>>>> "};

template <std::size_t Count>
const Wording* find(const std::array<Wording, Count>& wordings, std::string_view text) {
    const auto found = std::find_if(wordings.begin(), wordings.end(),
                                    [&](const Wording& wording) { return text.starts_with(wording.start); });
    return found == wordings.end() ? nullptr : &*found;
}

bool isLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || static_cast<unsigned char>(byte) >= 0x80;
}

bool isNumeric(char byte) {
    return (byte >= '0' && byte <= '9') || byte == '-';
}

// The word or number at the start of the text. Looks no further than a word is long.
std::string_view wordIn(std::string_view text) {
    const std::string_view near = text.substr(0, 40);
    return near.substr(0, near.find_first_of(" \t\r\n\f\v,:;=\"'{}[]/#"));
}

// What to write for the wanted kind of value.
std::string adviceFor(std::string_view text, const Wanted& wanted) {
    const std::string must = fmt::format("\"{}\" must be {}", wanted.key, wanted.kind);
    return find(s_nothings, text) != nullptr ? fmt::format("{}, not {}", must, wordIn(text))
           : wanted.kind == "a string"       ? must + ": put it in double quotes"
                                             : must;
}

std::string valueMessage(std::string_view text, const Wanted& wanted) {
    const Wording* const quote = find(s_quotes, text);
    const Wording* const word = find(s_words, text);
    const Wording* const found = quote != nullptr ? quote : word != nullptr ? word : find(s_nothings, text);
    const bool isMissing = text.front() == ',' || text.front() == '}' || text.front() == ']';
    if (quote == nullptr && !isMissing && !wanted.key.empty()) {
        return adviceFor(text, wanted);
    }
    return found != nullptr ? std::string(found->message) : isLetter(text.front()) ? "text takes double quotes" : "";
}

std::string ofReader(ParseResult result) {
    std::string message = foundation::json::get_parse_result_description(result);
    message.front() = static_cast<char>(message.front() | 0x20);
    return message;
}

// The length of a comment; npos if it has no end. The end of a line belongs to none.
std::size_t lengthOfComment(std::string_view text) {
    if (!text.starts_with("/*")) {
        return std::min(text.find('\n'), text.size());
    }
    const std::size_t end = text.find("*/", 2);
    return end == std::string_view::npos ? end : end + 2;
}

// True for a line with which a version control system marks a conflict.
bool isConflict(std::string_view text, std::size_t offset) {
    return (offset == 0 || text[offset - 1] == '\n') &&
           std::any_of(s_conflicts.begin(), s_conflicts.end(),
                       [&](std::string_view marker) { return text.substr(offset).starts_with(marker); });
}

}  // namespace

std::optional<Problem> fileProblem(std::string_view text) {
    if (text.find_first_not_of(" \t\r\n\f\v") == std::string_view::npos) {
        return Problem{&code("unexpected-end"), {}, "the file is empty", {}};
    }
    const bool isWide = text.front() == '\0' || (text.size() > 1 && text[1] == '\0');
    const Wording* const wording = isWide ? s_files.data() : find(s_files, text);
    return wording == nullptr
               ? std::nullopt
               : std::optional(Problem{&code("expected-value"), {0, 1}, std::string(wording->message), {}});
}

Problem syntaxProblem(ParseResult result, const Place& place) {
    return {&codeOf(result), place, ofReader(result), {}};
}

Problem escapeProblem(ParseResult result, const Place& place) {
    Problem problem = syntaxProblem(result, place);
    if (result == ParseResult::InvalidEscape) {
        problem.message = "no escape: double the backslash, or write \"/\" in a location";
    }
    return problem;
}

Problem valueProblem(std::string_view text, ParseResult result, std::size_t offset, const Wanted& wanted) {
    const std::string_view rest = text.substr(offset);
    const bool isNumber = result == ParseResult::Ok && isNumeric(rest.front());
    std::string message = valueMessage(rest, wanted);
    if (message.empty()) {
        message = result == ParseResult::Ok ? "a malformed number" : ofReader(result);
    }
    const std::size_t length = std::max<std::size_t>(wordIn(rest).size(), 1);
    return {isNumber ? &code("bad-number") : &codeOf(result), {offset, length}, std::move(message), {}};
}

Problem keyProblem(std::string_view text, std::size_t offset) {
    const std::string_view rest = text.substr(offset);
    const bool isBracket = rest.front() == '{' || rest.front() == '[';
    std::string_view message = isBracket ? "a key must come before this bracket, or it is one too many" : s_keyQuotes;
    if (const Wording* const quote = find(s_quotes, rest)) {
        message = quote->message;
    }
    const std::size_t length = std::max<std::size_t>(wordIn(rest).size(), 1);
    return {&code("expected-value"), {offset, length}, std::string(message), {}};
}

bool isAboutQuotes(const Problem& problem) {
    const std::string_view message = problem.message;
    return message == s_keyQuotes || message == s_otherQuotes || message == s_typographic;
}

Filler fillerAt(std::string_view text, std::size_t offset) {
    const std::string_view rest = text.substr(offset);
    if (rest.starts_with("//") || rest.starts_with("/*") || rest.starts_with('#')) {
        return {lengthOfComment(rest), "JSON has no comments: remove it"};
    }
    if (isConflict(text, offset)) {
        return {lengthOfComment(rest), "a merge conflict: keep one of its versions, and no marker"};
    }
    const bool isAscii = static_cast<unsigned char>(rest.front()) < 0x80;
    const Wording* const blank = isAscii ? nullptr : find(s_blanks, rest);
    return blank == nullptr ? Filler{} : Filler{blank->start.size(), blank->message};
}

std::size_t quoteAt(std::string_view text, std::size_t offset) {
    const char first = text[offset];
    const bool mayBeOne = first == '"' || first == '\'' || first == '`' || static_cast<unsigned char>(first) >= 0x80;
    const Wording* const quote = mayBeOne ? find(s_quotes, text.substr(offset)) : nullptr;
    return quote == nullptr ? 0 : quote->start.size();
}

}  // namespace app::check
