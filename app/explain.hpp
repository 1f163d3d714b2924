#pragma once

#include "Failure.hpp"

namespace app {

struct Options;

// Prints which places the library asked for each root and for the catalogue, in order, what was there, and which one it
// took; and of the product that the options name, by which of its names it is found, and whether it is installed and
// why. What couldn't be found out goes to standard error, and decides the exit status.
ExitStatus explain(const Options& options);

}  // namespace app
