#pragma once

#include <functional>
#include <optional>
#include <string>

namespace app {

// What the command line asks for. Paths and names are bytes as they were typed.
struct Options {
    std::optional<std::string> installRoot;
    std::optional<std::string> supportPackageRoot;
    std::optional<std::string> docRoot;
    std::optional<std::string> docDataRoot;
    std::optional<std::string> catalogue;
    std::string log = "error";
    bool all = false;                                    // list: the whole catalogue
    std::string name;                                    // find: the product's name
    std::function<std::string(const Options&)> command;  // gives the answer for standard output; may throw Failure
};

// Reads the command line. Help and version are commands like the others. Throws Failure where the usage is wrong.
Options readOptions(int argc, const char* const* argv);

}  // namespace app
