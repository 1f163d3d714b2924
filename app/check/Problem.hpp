#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "check/codes.hpp"

namespace app::check {

// A range of bytes of the catalogue, counted from 0. The end of the text is a range without bytes.
struct Place {
    std::size_t offset = 0;
    std::size_t length = 0;
};

// Another place that explains a problem.
struct Related {
    std::string message;
    Place place;
};

struct Problem {
    const Code* code;
    Place place;
    std::string message;  // UTF-8 as far as the catalogue is; may hold any byte of it
    std::string pointer;  // RFC 6901; empty for the whole document, or if the part isn't known
    std::vector<Related> related = {};
    std::vector<std::string> lookedAt = {};  // paths that don't exist
};

}  // namespace app::check
