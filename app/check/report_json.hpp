#pragma once

#include "answer.hpp"
#include "check/Report.hpp"

namespace app::check {

// The findings as one document of this command's own shape.
Json jsonOf(const Findings& findings);

// The same as SARIF 2.1.0, which code hosts show beside a change.
Json sarifOf(const Findings& findings);

}  // namespace app::check
