#pragma once

#include "Failure.hpp"

namespace app {

struct Options;

// The commands. Each writes its answer to standard output and returns the exit status. Throws Failure if there is no
// answer.

// Prints the documentation root and the data root. Reports each one that doesn't exist on standard error, and
// returns nothingFound if there is such a one.
ExitStatus showRoots(const Options& options);

// Prints the installed products, or with --all every product and its state, and then their number and that of all.
ExitStatus listProducts(const Options& options);

// Prints the product that has the name, installed or not, and the fields that hold the name. If there is none, the
// message suggests similar names.
ExitStatus findProduct(const Options& options);

}  // namespace app
