#include "log_sink.hpp"

#include <fmt/chrono.h>

#include <algorithm>
#include <array>
#include <boost/log/core.hpp>
#include <boost/log/expressions/message.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/smart_ptr/make_shared.hpp>
#include <chrono>
#include <cstdint>
#include <iostream>
#include <iterator>

#include "foundation/log/level.hpp"
#include "terminal_text.hpp"
#include "vorlan/host.hpp"

namespace app {

namespace sinks = boost::log::sinks;
using foundation::log::level;

namespace {

constexpr std::uint32_t bits(level which) {
    return static_cast<std::uint32_t>(which);
}

constexpr std::uint32_t s_error = bits(level::error);
constexpr std::uint32_t s_note = s_error | bits(level::note);
constexpr std::uint32_t s_detail = s_note | bits(level::detail);
constexpr std::uint32_t s_trace = s_detail | bits(level::enter) | bits(level::exit);

struct LogChoice {
    const char* name;
    std::uint32_t shown;
    std::uint32_t mask;  // includes `enter` if lines are indented: the library counts depth only then
};

constexpr std::array s_choices = {
    LogChoice{"off", 0, 0},
    LogChoice{"error", s_error, s_error},
    LogChoice{"note", s_note, s_note | bits(level::enter)},
    LogChoice{"detail", s_detail, s_detail | bits(level::enter)},
    LogChoice{"trace", s_trace, s_trace},
};

const char* levelName(std::uint32_t severity) {
    switch (static_cast<level>(severity)) {
        case level::note:
            return "note";
        case level::detail:
            return "detail";
        case level::enter:
            return "enter";
        case level::exit:
            return "exit";
        case level::error:
            return "error";
    }
    return "other";
}

std::uint32_t severityOf(const boost::log::attribute_value_set& values) {
    return static_cast<std::uint32_t>(boost::log::extract_or_default<int>("Severity", values, 0));
}

std::string textOf(const boost::log::record_view& record, const char* attribute) {
    return boost::log::extract_or_default<std::string>(attribute, record.attribute_values(), std::string());
}

std::string lineText(const boost::log::record_view& record) {
    const auto& values = record.attribute_values();
    const auto now = fmt::gmtime(std::chrono::system_clock::now());
    const auto depth = std::max(0L, boost::log::extract_or_default<long>("Depth", values, 0L));
    return fmt::format("{:%FT%T}Z  {:<6}  {}: {:{}}{}\n", now, levelName(severityOf(values)),
                       printable(textOf(record, "Channel")), "", 2 * depth, printable(textOf(record, "Message")));
}

// Writes to std::clog: std::cerr may be held back for the library's report on a catalogue.
void writeLine(const boost::log::record_view& record) {
    std::clog << lineText(record) << std::flush;
}

class Backend : public sinks::basic_sink_backend<sinks::synchronized_feeding> {
public:
    using Consume = std::function<void(const boost::log::record_view&)>;

    explicit Backend(Consume consume) : m_consume(std::move(consume)) {}
    void consume(const boost::log::record_view& record) { m_consume(record); }

private:
    const Consume m_consume;
};

// Passes the records of the levels `shown` to `consume`.
void addSink(std::uint32_t shown, Backend::Consume consume) {
    const auto backend = boost::make_shared<Backend>(std::move(consume));
    const auto sink = boost::make_shared<sinks::synchronous_sink<Backend>>(backend);
    sink->set_filter(
        [shown](const boost::log::attribute_value_set& values) { return (severityOf(values) & shown) != 0; });
    boost::log::core::get()->add_sink(sink);
}

}  // namespace

std::vector<std::string> logNames() {
    std::vector<std::string> names;
    std::transform(s_choices.begin(), s_choices.end(), std::back_inserter(names),
                   [](const LogChoice& choice) { return choice.name; });
    return names;
}

void installLogSink(const std::string& logName, const ObserveMessage& observeNotes) {
    const auto* choice = std::find_if(s_choices.begin(), s_choices.end(),
                                      [&](const LogChoice& candidate) { return candidate.name == logName; });
    addSink(choice->shown, writeLine);
    if (observeNotes) {
        addSink(bits(level::note),
                [observeNotes](const boost::log::record_view& record) { observeNotes(textOf(record, "Message")); });
    }
    vorlan::setLevelMask("doc_products_shared", choice->mask | (observeNotes ? s_note : 0));
}

}  // namespace app
