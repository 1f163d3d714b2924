#pragma once

#include <cstddef>
#include <string>

#include "check/Problem.hpp"
#include "json/ParseResult.hpp"

namespace app::check {

// A fault of syntax in an author's words. `result` is the reader's for the byte at `offset`, or Ok if text follows the
// document there. `lastString` is the last string before the fault that is known.
Problem syntaxProblem(const std::string& text, foundation::json::ParseResult result, std::size_t offset,
                      const Place& lastString);

}  // namespace app::check
