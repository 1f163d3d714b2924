#pragma once

#include <string>

namespace app {

struct Options;

// The commands: each gives its answer as the text for standard output, and throws Failure where there is none.

// The documentation root and the data root.
std::string showRoots(const Options& options);

// The installed products, or with --all the whole catalogue, and how many there are of how many.
std::string listProducts(const Options& options);

// Every field of the product that the name leads to.
std::string findProduct(const Options& options);

}  // namespace app
