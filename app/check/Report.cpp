#include "check/Report.hpp"

#include "text.hpp"

namespace app::check {

std::string unreadable(const Report& report) {
    return "Can't read " + report.file + ": " + report.failure;
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
