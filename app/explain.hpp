#pragma once

#include "Failure.hpp"

namespace app {

struct Options;

// Prints which places the library asked for each root and for the catalogue, in order, what was there, and which one it
// took; and of the product that the options name, by which of its names it is found, and whether it is installed and
// why. Throws Failure after what could be explained, if there is no catalogue, it is refused, or it lacks the product.
ExitStatus explain(const Options& options);

}  // namespace app
