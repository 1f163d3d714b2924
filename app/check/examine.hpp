#pragma once

#include <string>

#include "check/Report.hpp"

namespace app::check {

// Examines the text of a catalogue, and the files below the data root that prove its products, unless that is empty.
// There is an error exactly when DocSetJsonParser refuses the text. The policy must outlive the report.
Report examine(std::string file, std::string text, std::string dataRoot, const Policy& policy);

}  // namespace app::check
