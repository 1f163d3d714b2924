#include "check/Report.hpp"

#include "terminal_text.hpp"
#include "text.hpp"

namespace app::check {

std::string failuresOf(const Findings& findings) {
    std::string lines = findings.failure;
    for (const Report& report : findings.reports) {
        lines += report.failure.empty() ? "" : printable("Can't read " + report.file + ": " + report.failure) + '\n';
    }
    return lines;
}

std::map<std::size_t, LineColumn> locate(const std::string& text, const std::set<std::size_t>& offsets) {
    std::map<std::size_t, LineColumn> located;
    LineColumn here{1, 1};
    std::size_t position = 0;
    for (const std::size_t offset : offsets) {
        for (; position < offset; ++position) {
            if (text[position] == '\n') {
                here = {here.line + 1, 1};
            } else {
                here.column += isContinuation(text[position + 1]) ? 0 : 1;
            }
        }
        located.emplace_hint(located.end(), offset, here);
    }
    return located;
}

std::set<std::size_t> offsetsOf(const Problems& problems) {
    std::set<std::size_t> offsets;
    const auto add = [&](const Place& place) { offsets.insert({place.offset, place.offset + place.length}); };
    for (const Problem* problem : problems.kept()) {
        add(problem->place);
        for (const Related& related : problem->related) {
            add(related.place);
        }
    }
    return offsets;
}

}  // namespace app::check
