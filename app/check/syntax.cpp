#include "check/syntax.hpp"

#include <fmt/format.h>

#include <array>
#include <string_view>

namespace app::check {

namespace {

using foundation::json::ParseResult;

const Code& codeOf(ParseResult result) {
    switch (result) {
        case ParseResult::Ok:
            return code("text-after-document");
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
    std::string_view start;  // of the text at the fault
    const char* message;
};

// What authors write where JSON has no such thing.
constexpr std::array s_wordings = {
    Wording{"\xEF\xBB\xBF", "a byte order mark: save the file as UTF-8 without one"},
    Wording{"\xFE\xFF", "the file is UTF-16: save it as UTF-8"},
    Wording{"\xFF\xFE", "the file is UTF-16: save it as UTF-8"},
    Wording{"'", "strings and keys take double quotes"},
    Wording{",", "a comma too many: remove it"},
    Wording{"True", "write true in lower case"},
    Wording{"False", "write false in lower case"},
    Wording{"None", "JSON has no None: write null, or leave the key out"},
    Wording{"NaN", "JSON has no NaN"},
    Wording{"Infinity", "JSON has no Infinity"},
    Wording{"+", "a number takes no plus sign"},
    Wording{".", "a number starts with a digit: write 0 before the point"},
};

// The offset of the last byte before `offset` that isn't white space; npos if there is none.
std::size_t before(const std::string& text, std::size_t offset) {
    return offset == 0 ? std::string::npos : text.find_last_not_of(" \t\n\r\f\v", offset - 1);
}

// Says better what the reader found instead of a value or a key.
void reword(Problem& problem, const std::string& text) {
    const std::size_t offset = problem.place.offset;
    const std::string_view rest = std::string_view(text).substr(offset);
    const std::size_t previous = before(text, offset);
    const bool isClosing = rest.starts_with('}') || rest.starts_with(']');
    if (isClosing && previous != std::string::npos && text[previous] == ',') {
        problem.place = {previous, 1};
        problem.message = fmt::format("a comma before \"{}\": remove it", rest.front());
    }
    for (const Wording& wording : s_wordings) {
        if (rest.starts_with(wording.start)) {
            problem.place.length = wording.start.size();
            problem.message = wording.message;
        }
    }
}

bool spansLines(const std::string& text, const Place& place) {
    return std::string_view(text).substr(place.offset, place.length).find('\n') != std::string_view::npos;
}

}  // namespace

Problem syntaxProblem(const std::string& text, ParseResult result, std::size_t offset, const Place& lastString) {
    const char* const message = result == ParseResult::Ok ? "Text follows the document"
                                                          : foundation::json::get_parse_result_description(result);
    Problem problem{&codeOf(result), {offset, offset < text.size() ? 1U : 0U}, message, {}};
    problem.message.front() = static_cast<char>(problem.message.front() | 0x20);
    const std::string_view rest = std::string_view(text).substr(offset);
    if (rest.starts_with("//") || rest.starts_with("/*")) {
        problem.message = "JSON has no comments: remove it";
    } else if (problem.code == &code("expected-comma") && rest.find_first_of("\"{[") == 0) {
        problem.message = "a comma is missing before this";
    } else if (problem.code == &code("expected-value")) {
        reword(problem, text);
    }
    if (spansLines(text, lastString) && lastString.offset < offset) {
        problem.related.push_back({"this string runs over the line: is its closing quote missing?", lastString});
    }
    return problem;
}

}  // namespace app::check
