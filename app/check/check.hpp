#pragma once

#include "Failure.hpp"

namespace app {

struct Options;

// Checks the catalogues that the options name, or else the one in force, and prints what is wrong with them.
ExitStatus checkCatalogues(const Options& options);

}  // namespace app
