#include "check/Reader.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "doc_products_shared/catalogue_keys.hpp"
#include "json/lexical_reader.hpp"
#include "json/parse.hpp"
#include "json/structure_parser.hpp"

namespace app::check {

namespace {

namespace json = foundation::json;
namespace keys = doc_products_shared::catalogue_keys;

constexpr std::string_view s_space = " \t\r\n\f\v";

// The keys that elements of arrays consist of.
constexpr std::array<std::string_view, 2> s_elements = {keys::product, keys::productFamily};

// How far the reader looks ahead, in bytes, for a closing quote and for what follows brackets.
constexpr std::size_t s_nearQuote = 200;
constexpr std::size_t s_nearBracket = 300;
constexpr std::size_t s_mostMissing = 5;  // brackets
constexpr std::size_t s_mostQuotes = 5;   // faults about quotes that are reported one by one

bool isIn(std::string_view bytes, char byte) {
    return bytes.find(byte) != std::string_view::npos;
}

// True if the byte can't follow a number or a literal, but may have been meant as part of it.
bool continuesWord(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           isIn(".+-_%", byte);
}

}  // namespace

Reader::Reader(const std::string& text, std::function<void(Problem)> report)
    : m_text(text), m_report(std::move(report)), m_at(text.begin()) {}

Reader::Position Reader::near(std::size_t distance) const {
    return m_at + static_cast<std::ptrdiff_t>(std::min(distance, m_text.size() - offset()));
}

void Reader::report(Problem problem) {
    ++m_faults;
    m_soundEnd = std::min(m_soundEnd, problem.place.offset);
    if (!isAboutQuotes(problem) || ++m_quotes <= s_mostQuotes) {
        m_report(std::move(problem));
    } else if (!m_furtherQuotes) {
        m_furtherQuotes = std::move(problem);
    }
}

void Reader::reportRest() {
    if (m_furtherQuotes) {
        const std::size_t others = m_quotes - s_mostQuotes - 1;
        m_furtherQuotes->message += others == 0 ? "" : fmt::format(", here and at {} more places", others);
        m_report(std::move(*m_furtherQuotes));
    }
}

void Reader::report(const Code& code, const Place& place, std::string message, std::vector<Related> related) {
    report({&code, place, std::move(message), {}, std::move(related)});
}

bool Reader::reportEnd() {
    Problem problem = syntaxProblem(ParseResult::UnexpectedEnd, {m_text.size(), 0});
    if (!m_open.empty()) {
        const Place& bracket = m_open.back().bracket;
        problem.related.push_back({fmt::format("this \"{}\" is never closed", m_text[bracket.offset]), bracket});
    }
    report(std::move(problem));
    m_at = m_text.end();
    return false;
}

// White space, and what authors put in its place: each kind is reported once. False if a comment has no end.
bool Reader::skipFiller() {
    std::string_view reported;
    for (;;) {
        json::skip_whitespace(m_at, m_text.end(), 0);
        const Filler filler = m_at == m_text.end() ? Filler{} : fillerAt(m_text, offset());
        if (filler.length == 0) {
            return true;
        }
        if (filler.length == std::string::npos) {
            report(code("unexpected-end"), {offset(), 2}, "this comment is never closed");
            m_at = m_text.end();
            return false;
        }
        if (filler.message != std::exchange(reported, filler.message)) {
            report(code("expected-value"), {offset(), filler.length}, std::string(filler.message));
        }
        m_at += static_cast<std::ptrdiff_t>(filler.length);
    }
}

bool Reader::start() {
    if (auto problem = fileProblem(m_text)) {
        report(std::move(*problem));
        m_at = m_text.end();
        return false;
    }
    if (!skipFiller()) {
        return false;
    }
    return m_at != m_text.end() || reportEnd();
}

bool Reader::finish() {
    if (!skipFiller() || m_at == m_text.end()) {
        return true;
    }
    report(code("text-after-document"), here(), "text follows the document");
    return false;
}

bool Reader::open() {
    const Place bracket = here();
    const char closing = isAt('{') ? '}' : ']';
    ++m_at;
    if (m_open.size() >= json::MAX_NESTING) {
        report(syntaxProblem(ParseResult::NestingTooDeep, here()));
        return false;
    }
    m_open.push_back({bracket, closing});
    return true;
}

bool Reader::openMissing() {
    if (!startsKey(m_at)) {
        return false;
    }
    report(code("expected-value"), here(), "a \"{\" is missing before this");
    m_open.push_back({here(), '}'});
    return true;
}

// True if a short string with a colon after it is there.
bool Reader::startsKey(Position position) const {
    const std::string_view text = std::string_view(m_text).substr(offset(position), s_nearQuote);
    const std::size_t end = text.starts_with('"') ? text.find('"', 1) : text.npos;
    const std::size_t next = end == text.npos ? end : text.find_first_not_of(s_space, end + 1);
    return next != text.npos && text[next] == ':';
}

void Reader::close() {
    m_isIncomplete = m_open.back().isIncomplete;
    m_open.pop_back();
}

// Ends `count` arrays and objects whose closing brackets are missing, one at each call of next.
Reader::Step Reader::closeWithout(std::size_t count) {
    close();
    m_open.back().state = State::surplus;  // a comma before this place may have been read or not
    m_implied = count - 1;
    return Step::end;
}

Reader::Step Reader::next() {
    if (m_implied > 0) {
        return closeWithout(m_implied);
    }
    std::optional<Step> step;
    while (!step) {
        step = !skipFiller() ? Step::lost : m_at == m_text.end() ? (reportEnd(), Step::lost) : takeToken();
    }
    return *step;
}

// Takes a comma, a closing bracket or what else is here. Nothing if the place is still the same.
std::optional<Reader::Step> Reader::takeToken() {
    Open& open = m_open.back();
    if (isAtAny(",;")) {
        return takeComma(open);
    }
    if (!isAtAny("]}")) {
        return takeItem(open);
    }
    if (!isAt(open.closing)) {
        return takeWrongBracket(open);
    }
    if (open.state == State::comma) {
        report(code("expected-value"), {open.comma, 1}, fmt::format("a comma before \"{}\": remove it", open.closing));
    }
    ++m_at;
    close();
    return Step::end;
}

std::optional<Reader::Step> Reader::takeComma(Open& open) {
    if (isAt(';')) {
        report(code("expected-comma"), here(), "write a comma for \";\"");
    } else if (open.state == State::first || open.state == State::comma) {
        report(code("expected-value"), here(), "a comma too many: remove it");
    }
    open.state = open.state == State::item ? State::comma : State::surplus;
    open.comma = offset();
    ++m_at;
    return {};
}

std::optional<Reader::Step> Reader::takeItem(Open& open) {
    if (isOfOuter(open)) {
        reportOpen(fmt::format("a \"{}\" is missing before this", open.closing), open);
        return closeWithout(1);
    }
    const bool isFirst = std::exchange(open.state, State::item) != State::item;
    if (isFirst) {
        return Step::item;
    }
    if (isAt('"') || (open.closing == ']' && isAtAny("{["))) {
        report(code("expected-comma"), here(), "a comma is missing before this");
        return Step::item;
    }
    if (isAtAny("{[")) {
        reportOpen(fmt::format("a comma or \"{}\" is missing before this", open.closing), open);
        return Step::lost;
    }
    open.isIncomplete = true;
    report(syntaxProblem(
        open.closing == ']' ? ParseResult::ExpectedArrayDelimiter : ParseResult::ExpectedObjectDelimiter, here()));
    skipItem();
    return {};
}

// True if a key is in an array that is within an object, or an object in place of a key in an array's element: then the
// closing bracket between is missing.
bool Reader::isOfOuter(const Open& open) const {
    if (open.state == State::first || m_open.size() < 2) {
        return false;
    }
    const bool isInObject = m_open[m_open.size() - 2].closing == '}';
    return open.closing == ']' ? isInObject && startsKey(m_at) && !startsElement() : !isInObject && isAt('{');
}

// True if the key of an element is there, which then lacks its opening bracket.
bool Reader::startsElement() const {
    const std::string_view rest = std::string_view(m_text).substr(offset());
    return std::any_of(s_elements.begin(), s_elements.end(), [&](std::string_view key) {
        return rest.starts_with('"') && rest.substr(1).starts_with(key) && rest.substr(1 + key.size()).starts_with('"');
    });
}

void Reader::reportOpen(std::string message, const Open& open) {
    report(code("expected-comma"), here(), std::move(message),
           {{fmt::format("this \"{}\" isn't closed", m_text[open.bracket.offset]), open.bracket}});
}

// A closing bracket of the other kind. The innermost brackets may not be closed, or this one is mistyped, or too many:
// what follows tells. An array is rarely the last member of an object in another, so one that ends with "}" is likelier
// to have the wrong bracket than none.
std::optional<Reader::Step> Reader::takeWrongBracket(Open& open) {
    const Ahead ahead = lookAhead();
    const std::string_view after = std::string_view(ahead.closings).substr(1);
    const std::size_t level = m_open.size();
    const bool mayBeMistyped = fits(level - 1, after, ahead.then);
    const std::size_t missing = mayBeMistyped && open.closing == ']' ? 0 : missingBefore(ahead);
    if (missing > 0) {
        reportOpen(fmt::format("a \"{}\" is missing before this", open.closing), open);
        return closeWithout(missing);
    }
    if (!mayBeMistyped && !fits(level, after, ahead.then)) {
        reportOpen(fmt::format("expected \"{}\" before this bracket", open.closing), open);
        return Step::lost;
    }
    report(code("expected-comma"), here(),
           mayBeMistyped ? fmt::format("write \"{}\" for this bracket", open.closing)
                         : "a closing bracket too many: remove it",
           {{fmt::format("this \"{}\" is open", m_text[open.bracket.offset]), open.bracket}});
    ++m_at;
    if (!mayBeMistyped) {
        return {};
    }
    close();
    return Step::end;
}

// How many closing brackets may be missing here; 0 if that doesn't explain what follows.
std::size_t Reader::missingBefore(const Ahead& ahead) const {
    const std::size_t level = m_open.size();
    std::size_t missing = 1;
    while (missing < std::min(level, s_mostMissing) && !fits(level - missing, ahead.closings, ahead.then)) {
        ++missing;
    }
    return missing < std::min(level, s_mostMissing) ? missing : 0;
}

Reader::Ahead Reader::lookAhead() const {
    Ahead ahead;
    const Position limit = near(s_nearBracket);
    Position at = m_at;
    for (; at != limit && (isIn(s_space, *at) || isIn("]}", *at)); ++at) {
        ahead.closings += isIn(s_space, *at) ? "" : std::string(1, *at);
    }
    if (at == m_text.end()) {
        ahead.then = Then::end;
    }
    at = std::find_if(at, limit, [](char byte) { return byte != ',' && !isIn(s_space, byte); });
    if (at != limit) {
        ahead.then = startsKey(at) ? Then::key : isIn("\"{[", *at) ? Then::value : Then::other;
    }
    return ahead;
}

// True if the brackets close the innermost of `level` arrays and objects, and what then follows belongs into the one
// that is still open.
bool Reader::fits(std::size_t level, std::string_view closings, Then then) const {
    for (const char closing : closings) {
        if (level == 0 || m_open[level - 1].closing != closing) {
            return false;
        }
        --level;
    }
    return then == (level == 0 ? Then::end : m_open[level - 1].closing == '}' ? Then::key : Then::value);
}

// Goes to the next comma or closing bracket, or to the end of the line.
void Reader::skipItem() {
    m_at = std::find_if(m_at, m_text.end(), [](char byte) { return isIn(",}]\n", byte); });
}

// The next quote in this line that a delimiter follows, if it isn't far.
std::optional<Place> Reader::closingQuote(std::string_view delimiters) const {
    const std::string_view text = std::string_view(m_text).substr(0, offset(near(s_nearQuote)));
    for (std::size_t at = offset(); at < text.size() && text[at] != '\n'; ++at) {
        const std::size_t length = quoteAt(text, at);
        const std::size_t next = length == 0 ? text.npos : text.find_first_not_of(" \t\r", at + length);
        if (next != text.npos && isIn(delimiters, text[next])) {
            return Place{at, length};
        }
    }
    return {};
}

// Goes past the next quote that a delimiter follows, if it isn't far, and otherwise to the end of the item.
void Reader::endAtQuote() {
    const auto quote = closingQuote(",}]\n");
    quote ? moveTo(quote->offset + quote->length) : skipItem();
}

// Ends the string from there before the delimiters that end at `end`.
void Reader::endBefore(Position begin, Position end) {
    m_at = end;
    while (m_at > begin + 1 && (isIn(s_space, m_at[-1]) || isIn(",{}[]", m_at[-1]))) {
        --m_at;
    }
}

bool Reader::readString(Text& text) {
    return readString(text, true);
}

bool Reader::readString(Text& text, bool isValue) {
    const Position begin = m_at;
    const ParseResult result = json::parse_string(text.text, m_at, m_text.end(), 0);
    const bool mayEndLater = isValue || text.text.find_first_of(":\n") != std::string::npos;
    text.isThere = result == ParseResult::Ok && !(isInsideText() && mayEndLater);
    if (!text.isThere) {
        text.text.clear();
        if (!endFaulty(result, begin)) {
            return false;
        }
    }
    text.place = placeFrom(offset(begin));
    return true;
}

// True if what follows a string is no token, so that the string's closing quote was meant to be another.
bool Reader::isInsideText() const {
    Position next = m_at;
    json::skip_whitespace(next, m_text.end(), 0);
    return next != m_text.end() && !isIn(",;:}]", *next) && !isIn("\"{[=", *next) &&
           fillerAt(m_text, offset(next)).length == 0;
}

// Goes to the end of a faulty string. False if lost.
bool Reader::endFaulty(ParseResult result, Position begin) {
    if (result == ParseResult::InvalidEscape || result == ParseResult::InvalidUnicodeEscape) {
        report(escapeProblem(result, {offset(), 2}));
        endAfterEscape(begin);
        return true;
    }
    const Position line = std::find(begin, m_at, '\n');
    if (line != m_at) {
        endUnclosed(begin, line);
    } else if (result == ParseResult::Ok && endsBeforeKey(begin)) {
        endUnclosed(begin, m_at - 1);
    } else if (result == ParseResult::Ok) {
        report(code("expected-comma"), {offset() - 1, 1},
               "a quote is missing, or this one is part of the text and must be written as \\\"");
        endAtQuote();
    } else {
        report(code("unexpected-end"), {m_text.size(), 0}, "the text ends within a string",
               {{"this string is never closed", {offset(begin), 1}}});
        m_at = m_text.end();
    }
    return m_at != m_text.end();
}

// True if the closing quote opens a key, and what separates that from the string is within it.
bool Reader::endsBeforeKey(Position begin) const {
    const Position last =
        std::find_if(std::make_reverse_iterator(m_at - 1), std::make_reverse_iterator(begin + 1), [](char byte) {
            return !isIn(s_space, byte);
        }).base();
    return last != begin + 1 && isIn(",{[", last[-1]) && startsKey(m_at - 1);
}

// Reports a string without a closing quote, and goes to its end.
void Reader::endUnclosed(Position begin, Position end) {
    endBefore(begin, end);
    const bool isEscaped = m_at - begin > 2 && m_at[-1] == '"' && m_at[-2] == '\\';
    report(code("unexpected-end"), placeFrom(offset(begin)),
           isEscaped ? "the backslash makes the last quote part of the text: remove it"
                     : "the closing quote of this string is missing");
}

void Reader::endAfterEscape(Position begin) {
    while (m_at != m_text.end() && *m_at != '\n') {
        if (isAt('"')) {
            ++m_at;
            return;
        }
        m_at += isAt('\\') && m_at + 1 != m_text.end() ? 2 : 1;
    }
    endBefore(begin, std::find(begin, m_text.end(), '\n'));
}

Reader::Step Reader::readKey(Text& key) {
    if (!isAt('"')) {
        return readOtherKey(key);
    }
    const std::size_t begin = offset();
    if (!readString(key, false)) {
        return Step::lost;
    }
    if (!key.isThere) {
        m_open.back().isIncomplete = true;
        key.text = m_text.substr(begin + 1, key.place.length - 1);
        key.text.resize(std::min(key.text.find_first_of("\":"), key.text.size()));
    }
    return skipFiller() ? readColon(key) : Step::lost;
}

// A key without quotes, or with others.
Reader::Step Reader::readOtherKey(Text& key) {
    report(keyProblem(m_text, offset()));
    if (isAtAny("{[")) {
        return Step::lost;
    }
    const std::size_t begin = offset() + quoteAt(m_text, offset());
    const bool isQuoted = begin != offset();
    key.place.offset = offset();
    moveTo(begin);
    const std::size_t near = std::string_view(m_text).substr(begin, s_nearQuote).find_first_of(":,{}[]\"\n");
    const auto quote = isQuoted ? closingQuote(":") : std::nullopt;
    const bool isKey = quote || (!isQuoted && near != m_text.npos && near > 0 && m_text[begin + near] == ':');
    if (!isKey) {
        m_open.back().isIncomplete = true;
        skipItem();
        return Step::end;
    }
    const std::size_t end = quote ? quote->offset : m_text.find_last_not_of(s_space, begin + near - 1) + 1;
    key.text = m_text.substr(begin, end - begin);
    key.isThere = true;
    moveTo(quote ? end + quote->length : end);
    key.place = placeFrom(key.place.offset);
    return skipFiller() ? readColon(key) : Step::lost;
}

Reader::Step Reader::readColon(Text& key) {
    if (m_at == m_text.end()) {
        reportEnd();
        return Step::lost;
    }
    if (isAtAny(":=")) {
        return takeColon();
    }
    if (key.isThere && isAtAny("\"{[-0123456789")) {
        report(code("expected-colon"), here(), "a colon is missing before this");
        return Step::item;
    }
    if (key.isThere) {
        report(syntaxProblem(ParseResult::ExpectedColon, here()));
        skipItem();
    }
    return Step::end;
}

Reader::Step Reader::takeColon() {
    if (isAt('=')) {
        report(code("expected-colon"), here(), "write a colon for \"=\"");
    }
    ++m_at;
    if (!skipFiller()) {
        return Step::lost;
    }
    return m_at != m_text.end() || reportEnd() ? Step::item : Step::lost;
}

bool Reader::readValue(json::Value& value, const Wanted& wanted) {
    value = {};
    if (isAtAny("{[")) {
        return readContainer(value);
    }
    if (!isAt('"')) {
        return readScalar(value, wanted);
    }
    Text text;
    const bool goesOn = readString(text);
    if (text.isThere) {
        value.emplace<std::string>(std::move(text.text));
    }
    return goesOn;
}

bool Reader::readScalar(json::Value& value, const Wanted& wanted) {
    const std::size_t begin = offset();
    const ParseResult result = json::parse_value(value, m_at, m_text.end(), 0, 0);
    if (result == ParseResult::UnexpectedEnd) {
        return reportEnd();
    }
    if (result == ParseResult::Ok && (m_at == m_text.end() || !continuesWord(*m_at))) {
        return true;
    }
    value = {};
    Problem problem = valueProblem(m_text, result, begin, wanted);
    if (m_open.empty()) {
        problem.message = "this isn't JSON: a catalogue starts with \"{\"";
    }
    report(std::move(problem));
    const std::size_t opening = quoteAt(m_text, begin);
    moveTo(begin + opening);
    opening > 0 ? endAtQuote() : skipItem();
    return !m_open.empty();
}

// The library's reader builds a tree, and stops at the first fault; then the text is read again, by parts.
bool Reader::readContainer(json::Value& value) {
    const Position begin = m_at;
    const std::size_t faults = m_faults;
    const ParseResult result = json::parse_value(value, m_at, m_text.end(), 0, static_cast<unsigned>(depth()));
    if (result == ParseResult::Ok) {
        return true;
    }
    const Position refused = std::exchange(m_at, begin);
    const bool goesOn = readByParts();
    if (m_faults == faults) {
        reportRefused(result, refused);
    }
    return goesOn;
}

void Reader::reportRefused(ParseResult result, Position position) {
    json::skip_whitespace(position, m_text.end(), 0);
    report(syntaxProblem(result, {offset(position), position == m_text.end() ? 0U : 1U}));
}

bool Reader::readByParts() {
    const bool isObject = isAt('{');
    if (!open()) {
        return false;
    }
    for (;;) {
        if (const Step step = next(); step != Step::item) {
            return step == Step::end;
        }
        if (isObject ? !readMember() : !readPart()) {
            return false;
        }
    }
}

bool Reader::readMember() {
    Text key;
    const Step step = readKey(key);
    return step == Step::item ? readPart() : step == Step::end;
}

bool Reader::readPart() {
    json::Value discarded;
    return isAtAny("{[") ? readByParts() : readValue(discarded, {});
}

void Reader::readAgain(std::size_t begin) {
    json::Value discarded;
    Position at = m_text.begin() + static_cast<std::ptrdiff_t>(begin);
    const ParseResult result = json::parse_value(discarded, at, m_text.end(), 0, static_cast<unsigned>(depth()));
    if (result != ParseResult::Ok) {
        reportRefused(result, at);
    }
}

void Reader::readAt(std::size_t begin, const std::function<void()>& read) {
    const Position former = m_at;
    moveTo(begin);
    read();
    m_at = former;
}

bool Reader::find(std::string_view key, std::size_t depth) {
    m_open.erase(m_open.begin() + static_cast<std::ptrdiff_t>(depth), m_open.end());
    m_implied = 0;
    const std::string quoted = fmt::format("\"{}\"", key);
    const auto skipTo = [&](Position& at, std::string_view token) {
        json::skip_whitespace(at, m_text.end(), 0);
        const bool isThere = std::string_view(at, m_text.end()).starts_with(token);
        at += isThere ? static_cast<std::ptrdiff_t>(token.size()) : 0;
        return isThere;
    };
    while ((m_at = std::find(m_at, m_text.end(), '{')) != m_text.end()) {
        Position ahead = m_at + 1;
        if (skipTo(ahead, quoted) && skipTo(ahead, ":")) {
            depth > 0 ? void(m_open.back().state = State::item) : void();
            return true;
        }
        ++m_at;
    }
    return false;
}

}  // namespace app::check
