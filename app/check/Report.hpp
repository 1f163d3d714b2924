#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Failure.hpp"
#include "check/Problems.hpp"

namespace app::check {

// A catalogue that has been checked, or that couldn't be read: then only the first two members say something.
struct Report {
    std::string file;     // as named by the user
    std::string failure;  // why it couldn't be read; empty if it could
    std::string text;
    std::string dataRoot;  // empty if the files on disk weren't checked
    std::size_t products = 0;
    Problems problems;
};

// What the command found out.
struct Findings {
    std::vector<Report> reports;
    std::string failure;  // why there is no report; empty if there is one
    ExitStatus status = ExitStatus::done;
};

// What couldn't be checked, in printable lines.
std::string failuresOf(const Findings& findings);

// Counted from 1. The column counts code points; a byte that isn't UTF-8 is one.
struct LineColumn {
    std::size_t line;
    std::size_t column;
};

// Where these offsets are. Reads the text once.
std::map<std::size_t, LineColumn> locate(const std::string& text, const std::set<std::size_t>& offsets);

// The offsets of all places that a report shows.
std::set<std::size_t> offsetsOf(const Problems& problems);

}  // namespace app::check
