#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/Problem.hpp"
#include "check/syntax.hpp"
#include "json/Value.hpp"
#include "json/byte_scan.hpp"

namespace app::check {

// A string of the catalogue. Its place includes the quotes.
struct Text {
    std::string text;
    Place place;
    bool isThere = false;  // false too if the value isn't a string
};

// Goes through the text of a catalogue, item by item, with the library's own readers. Reports each fault of syntax and
// goes on where the repair is evident. Elsewhere it is lost, and the caller goes on at the next text that `find` finds.
// Each byte is read a few times at most, whatever the faults.
class Reader {
public:
    // Where an object or an array goes on.
    enum class Step { item, end, lost };

    // `report` is called for each fault.
    Reader(const std::string& text, std::function<void(Problem)> report);

    std::size_t offset() const { return static_cast<std::size_t>(m_at - m_text.begin()); }
    bool isAt(char byte) const { return m_at != m_text.end() && *m_at == byte; }
    Place placeFrom(std::size_t begin) const { return {begin, offset() - begin}; }
    std::size_t faults() const { return m_faults; }
    std::size_t soundEnd() const { return m_soundEnd; }  // no fault of syntax is before this offset
    std::size_t depth() const { return m_open.size(); }
    // True if a part of the object that ended last was skipped, so that it may have more keys.
    bool isIncomplete() const { return m_isIncomplete; }

    // Goes to the document; false if there is none.
    bool start();
    // Goes to what follows the document; false if that is more than white space.
    bool finish();
    // Reports the faults that are reported together. Call last.
    void reportRest();

    // Opens the object or array whose bracket is here. False if lost.
    bool open();
    // Opens an object that lacks its bracket, if a key is here.
    bool openMissing();
    // Goes to the next item of the innermost object or array, or past its end.
    Step next();
    // Reads a key and its colon. If no value follows, the step is end.
    Step readKey(Text& key);
    // Reads a string; `isThere` is false if it was faulty. False if lost.
    bool readString(Text& text);
    // Reads any value; `value` is undefined if it was faulty. False if lost.
    bool readValue(foundation::json::Value& value, const Wanted& wanted);
    // Reads an object without a fault of syntax again, and reports what the library refuses in it.
    void readAgain(std::size_t begin);
    // Calls `read` at a value that has no fault of syntax, and returns here.
    void readAt(std::size_t begin, const std::function<void()>& read);

    // Goes to the next text that looks like an object with that key first, within the arrays and objects that were open
    // at that depth. False if there is none.
    bool find(std::string_view key, std::size_t depth);

private:
    using Position = foundation::json::Position;
    using ParseResult = foundation::json::ParseResult;

    enum class State { first, item, comma, surplus };  // what was read last; after surplus anything may follow

    // An object or array that is open.
    struct Open {
        Place bracket;
        char closing;
        State state = State::first;
        std::size_t comma = 0;
        bool isIncomplete = false;
    };

    // The closing brackets that are near, and what follows them.
    enum class Then { key, value, end, other };
    struct Ahead {
        std::string closings;
        Then then = Then::other;
    };

    std::size_t offset(Position position) const { return static_cast<std::size_t>(position - m_text.begin()); }
    Place here() const { return {offset(), m_at == m_text.end() ? 0U : 1U}; }
    void moveTo(std::size_t offset) { m_at = m_text.begin() + static_cast<std::ptrdiff_t>(offset); }
    Position near(std::size_t distance) const;
    bool isAtAny(std::string_view bytes) const { return m_at != m_text.end() && bytes.find(*m_at) != bytes.npos; }

    void report(Problem problem);
    void report(const Code& code, const Place& place, std::string message, std::vector<Related> related = {});
    void reportOpen(std::string message, const Open& open);
    void reportRefused(ParseResult result, Position position);
    bool reportEnd();

    bool skipFiller();
    void skipItem();
    std::optional<Place> closingQuote(std::string_view delimiters) const;

    void close();
    Step closeWithout(std::size_t count);
    std::optional<Step> takeToken();
    std::optional<Step> takeComma(Open& open);
    std::optional<Step> takeItem(Open& open);
    std::optional<Step> takeWrongBracket(Open& open);
    bool isOfOuter(const Open& open) const;
    bool startsElement() const;
    Ahead lookAhead() const;
    std::size_t missingBefore(const Ahead& ahead) const;
    bool fits(std::size_t level, std::string_view closings, Then then) const;
    bool startsKey(Position position) const;

    Step readOtherKey(Text& key);
    Step readColon(Text& key);
    Step takeColon();

    bool readString(Text& text, bool isValue);
    bool isInsideText() const;
    bool endFaulty(ParseResult result, Position begin);
    void endAfterEscape(Position begin);
    bool endsBeforeKey(Position begin) const;
    void endUnclosed(Position begin, Position end);
    void endBefore(Position begin, Position end);
    void endAtQuote();

    bool readScalar(foundation::json::Value& value, const Wanted& wanted);
    bool readContainer(foundation::json::Value& value);
    bool readByParts();
    bool readMember();
    bool readPart();

    const std::string& m_text;
    std::function<void(Problem)> m_report;
    Position m_at;
    std::vector<Open> m_open;
    std::size_t m_implied = 0;  // the number of open arrays and objects that still end without a closing bracket
    bool m_isIncomplete = false;
    std::size_t m_faults = 0;
    std::size_t m_quotes = 0;                // faults about quotes
    std::optional<Problem> m_furtherQuotes;  // the first of them that isn't reported by itself
    std::size_t m_soundEnd = std::string::npos;
};

}  // namespace app::check
