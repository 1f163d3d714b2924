#pragma once

#include "Failure.hpp"

namespace app {

struct Options;

// The commands. Each writes its answer to standard output and returns the status to end with; throws Failure if there
// is no answer.

// The documentation root and the data root. A root that doesn't exist is reported on standard error: nothingFound.
ExitStatus showRoots(const Options& options);

// The installed products, or with --all the whole catalogue, and how many of how many are installed.
ExitStatus listProducts(const Options& options);

// The product that the name leads to, with the names that are this one.
ExitStatus findProduct(const Options& options);

}  // namespace app
