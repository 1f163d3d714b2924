#pragma once

#include "check/Report.hpp"
#include "table.hpp"

namespace app::check {

// Writes the problems as FILE:LINE:COLUMN: SEVERITY: MESSAGE [CODE], each with its source line and a caret below it,
// and at the end how many there are. All of it is printable.
void writeText(const Write& write, const Report& report, bool hasColor);

}  // namespace app::check
