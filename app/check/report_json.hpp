#pragma once

#include <vector>

#include "answer.hpp"
#include "check/Report.hpp"

namespace app::check {

// The reports as one document of this command's own shape.
Json jsonOf(const std::vector<Report>& reports);

// The same as SARIF 2.1.0, which code hosts show beside a change.
Json sarifOf(const std::vector<Report>& reports);

}  // namespace app::check
