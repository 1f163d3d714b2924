#include "check/report_text.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "terminal_text.hpp"
#include "text.hpp"

namespace app::check {

namespace {

constexpr std::size_t s_reach = 60;  // bytes of the line shown on either side of the place

class TextWriter {
public:
    TextWriter(const Write& write, const Report& report, bool hasColor)
        : m_write(write),
          m_report(report),
          m_hasColor(hasColor),
          m_located(locate(report.text, offsetsOf(report.problems))) {}

    void run() {
        for (const Problem* problem : m_report.problems.kept()) {
            writeProblem(*problem);
        }
        writeCounts();
    }

private:
    void writeProblem(const Problem& problem) const;
    void writeHeading(const Place& place, const char* kind, const std::string& message) const;
    void writeSource(const Place& place) const;
    void writeCounts() const;
    std::string colored(const char* start, const std::string& text) const {
        return m_hasColor ? start + text + "\x1B[0m" : text;
    }

    const Write& m_write;
    const Report& m_report;
    bool m_hasColor;
    std::map<std::size_t, LineColumn> m_located;
};

constexpr const char* s_bold = "\x1B[1m";
constexpr const char* s_green = "\x1B[32m";

const char* colorOf(std::string_view kind) {
    return kind == "error" ? "\x1B[1;31m" : kind == "warning" ? "\x1B[1;35m" : "\x1B[1;36m";
}

void TextWriter::writeHeading(const Place& place, const char* kind, const std::string& message) const {
    const LineColumn& at = m_located.at(place.offset);
    m_write(colored(s_bold, fmt::format("{}:{}:{}: ", printable(m_report.file), at.line, at.column)));
    m_write(colored(colorOf(kind), fmt::format("{}: ", kind)));
    m_write(printable(message));
}

// A part of a line in printable form; each tab is one blank.
std::string shown(std::string_view part) {
    std::string text(part);
    std::replace(text.begin(), text.end(), '\t', ' ');
    return printable(text);
}

// The part of a line that is shown around the offset: whole characters, at most s_reach bytes before it and about as
// many after it. Looks no further, because a line may hold the whole catalogue.
Place shownAround(std::string_view text, std::size_t offset) {
    std::size_t first = offset - std::min(offset, s_reach);
    first += text.substr(first, offset - first).rfind('\n') + 1;  // npos + 1 is 0
    while (first < offset && isContinuation(text[first])) {
        ++first;
    }
    const std::string_view after = text.substr(offset, s_reach);
    std::size_t last = offset + std::min(after.find('\n'), after.size());
    while (last < text.size() && isContinuation(text[last])) {
        ++last;
    }
    return {first, last - first};
}

void TextWriter::writeSource(const Place& place) const {
    const std::string_view text = m_report.text;
    const Place around = shownAround(text, place.offset);
    const std::size_t left = place.offset - around.offset;
    const std::string_view line = text.substr(around.offset, around.length);
    const std::size_t width = displayWidth(shown(line.substr(left, place.length)));
    const std::string number = fmt::format("{:5} | ", m_located.at(place.offset).line);
    m_write(number + shown(line) + '\n');
    m_write(std::string(number.size() - 2, ' ') + "| " + std::string(displayWidth(shown(line.substr(0, left))), ' ') +
            colored(s_green, '^' + std::string(std::max<std::size_t>(width, 1) - 1, '~')) + '\n');
}

void TextWriter::writeProblem(const Problem& problem) const {
    writeHeading(problem.place, nameOf(m_report.problems.severityOf(*problem.code)), problem.message);
    m_write(fmt::format(" [{}]\n", problem.code->name));
    writeSource(problem.place);
    for (const Related& related : problem.related) {
        writeHeading(related.place, "note", related.message);
        m_write("\n");
        writeSource(related.place);
    }
    for (const std::string& path : problem.lookedAt) {
        m_write("        looked at " + printable(path) + '\n');
    }
}

std::string counted(std::size_t count, const char* noun) {
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

void TextWriter::writeCounts() const {
    const Problems& problems = m_report.problems;
    if (problems.omitted() > 0) {
        m_write(fmt::format("and {} more\n", problems.omitted()));
    }
    m_write(fmt::format(
        "{}: {}, {}, {} in {}{}\n", printable(m_report.file), counted(problems.count(Severity::error), "error"),
        counted(problems.count(Severity::warning), "warning"), counted(problems.count(Severity::info), "info"),
        counted(m_report.products, "product"), m_report.dataRoot.empty() ? " (files not looked for)" : ""));
}

}  // namespace

void writeText(const Write& write, const Report& report, bool hasColor) {
    TextWriter(write, report, hasColor).run();
}

}  // namespace app::check
