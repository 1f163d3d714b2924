#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <boost/algorithm/string/erase.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <locale>
#include <map>
#include <new>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>

#include "json/ParserException.hpp"
#include "json/lexical_reader.hpp"
#include "json/parse.hpp"
#include "json/render.hpp"
#include "json/structure_parser.hpp"
#include "support/Allocations.hpp"
#include "support/Transcript.hpp"
#include "support/row_name.hpp"

using namespace foundation::json;
using boost::algorithm::erase_first_copy;
using boost::algorithm::replace_all_copy;

namespace {

std::string on_one_line(const Value& value) {
    return replace_all_copy(replace_all_copy(render(value), "\n", "<0A>"), "\t", "<09>");
}

// No line is to end in something invisible.
std::string message(const ParserException& error) {
    return replace_all_copy(replace_all_copy(std::string(error.what()), "\t\n", "<09>\n"), " \n", "<20>\n");
}

template <unsigned int flags>
std::string parsed(const std::string& text) {
    try {
        return on_one_line(parse(text, flags));
    } catch (const ParserException& error) {
        return message(error);
    }
}

// The failure stands at the "^" of the text.
std::string fail(const std::string& marked) {
    const std::string text = erase_first_copy(marked, "^");
    const ParserException error(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(marked.find('^')),
                                text.end(), ParseResult::ExpectedColon, "What it is");
    std::ostringstream answer;
    answer << message(error) << "\n"
           << static_cast<unsigned>(error.result()) << " at " << error.offset() << ", line " << error.line()
           << ", column " << error.column() << ", caret " << error.caret() << " in \"" << error.source() << '"';
    return answer.str();
}

const std::tuple<std::string, double, long long, unsigned long long, Value, std::vector<Value>,
                 std::map<std::string, Value>>
    s_untouched{"..", 0.5, 5, 5, Value(0.5), {Value(0.5)}, {{"", Value(0.5)}}};

// What a reader answers: its result, where it leaves the cursor, and its result object unless that is untouched.
template <class Out, auto read, auto... context>
std::string reading(const std::string& text) {
    Out out = std::get<Out>(s_untouched);
    Position position = text.begin();
    const auto result = static_cast<unsigned>(read(out, position, text.end(), context...));
    const std::string content = on_one_line(out);
    return std::to_string(result) + " at " + std::to_string(position - text.begin()) +
           (content == on_one_line(std::get<Out>(s_untouched)) ? "" : " " + content);
}

ParseResult parse_int8_data(Value& out, Position& position, Position end, unsigned int flags, unsigned int depth) {
    return parse_typed_data("int8", out, position, end, flags, depth);
}

std::string describe(const std::string& number) {
    return get_parse_result_description(static_cast<ParseResult>(std::stoul(number)));
}

// Puts a copy of the document behind its text, or the message of its refusal.
void* parse_and_copy(void* argument) {
    auto& [text, copy] = *static_cast<std::pair<std::string, Value>*>(argument);
    try {
        const Value document = parse(text, 0);
        const Value constructed = document;
        copy = constructed;
        copy = document;
    } catch (const ParserException& error) {
        copy = Value(std::string(error.what()));
    }
    return nullptr;
}

// "COUNT OPENING INNERMOST CLOSING": what a small stack makes of the innermost text in so many of the others.
std::string nest(const std::string& arguments) {
    std::istringstream words(arguments);
    std::string count, opening, innermost, closing, before, behind;
    words >> count >> opening >> innermost >> closing;
    for (int i = std::stoi(count); i != 0; --i) {
        before += opening;
        behind += closing;
    }
    std::pair<std::string, Value> trip(before + innermost + behind, Value());
    pthread_attr_t attributes;
    pthread_t thread{};
    pthread_attr_init(&attributes);
    EXPECT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{JSON_STACK_KIB} * 1024), 0);
    EXPECT_EQ(pthread_create(&thread, &attributes, parse_and_copy, &trip), 0);
    EXPECT_EQ(pthread_join(thread, nullptr), 0);
    const std::string copy = render(trip.second);
    const std::string content = parsed<0>(innermost);
    return copy == before + content + behind ? content : copy.substr(1, copy.find('\n') - 1);
}

// "LEAST TEXT": how a parse ends short of memory, from the first allocation on and without repetitions; first with
// one that fails, then with all behind it as well.
std::string starve(const std::string& arguments) {
    const std::string text = arguments.substr(arguments.find(' ') + 1);
    const std::string whole = parsed<0>(text);
    std::string outcomes, last;
    outcomes.reserve(10000);  // no block of theirs is to be gained or lost below
    last.reserve(10000);
    const long strikes = support::starve([&](support::Starvation& starved) {
        Value value;
        const std::string thrown = starved([&] { value = parse(text, 0); });
        const std::string outcome = thrown.empty() ? on_one_line(value) : thrown.substr(0, thrown.find('\n'));
        outcomes += outcome == last ? "" : (outcome == whole ? "whole" : outcome) + "\n";
        last = outcome;
    });
    return outcomes + (strikes < std::stol(arguments) ? "only " + std::to_string(strikes) + " strikes" : "");
}

const std::map<std::string, std::string (*)(const std::string&)> s_commands = {
    {"parse", parsed<0>},
    {"parse+comments", parsed<ALLOW_COMMENTS>},
    {"parse+others", parsed<~ALLOW_COMMENTS>},
    {"fail", fail},
    {"string", reading<std::string, parse_string, 0U>},
    {"char", reading<std::string, parse_string_char>},
    {"number", reading<double, parse_number, 0U>},
    {"bool", reading<Value, parse_bool, 0U>},
    {"null", reading<Value, parse_null>},
    {"array", reading<std::vector<Value>, parse_array, 0U, 0U>},
    {"object", reading<std::map<std::string, Value>, parse_object, 0U, 0U>},
    {"signed", reading<long long, parse_signed_integer, 0U>},
    {"unsigned", reading<unsigned long long, parse_unsigned_integer, 0U>},
    {"signeds", reading<std::vector<Value>, parse_signed_array, 0U, 0U>},
    {"unsigneds", reading<std::vector<Value>, parse_unsigned_array, 0U, 0U>},
    {"int8s", reading<Value, parse_int8_data, 0U, 0U>},
    {"describe", describe},
    {"nest", nest},
    {"starve", starve},
};

std::string type(const std::string& line) {
    const std::string command = line.substr(0, line.find(' '));
    return s_commands.at(command)(line.substr(std::min(command.size() + 1, line.size())));
}

class Reader : public testing::TestWithParam<support::TranscriptCase> {};

TEST_P(Reader, AnswersAsRecorded) {
    EXPECT_EQ(support::replay(GetParam(), type), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Transcript, Reader, testing::ValuesIn(support::readTranscripts(TRANSCRIPTS)),
                         support::s_rowName);

struct GroupsDigits : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(ParserException, NumbersFollowNoLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new GroupsDigits));
    const std::string shown = parsed<0>(std::string(1500, ' ') + "x");
    std::locale::global(before);
    EXPECT_NE(shown.find("(Line 1, Column 1500)\n"), std::string::npos) << shown;
}

}  // namespace
