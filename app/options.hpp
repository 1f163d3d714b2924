#pragma once

#include <optional>
#include <string>

namespace app {

enum class Command {
    printText,  // for --help and --version
    showRoots,
    listProducts,
    findProduct,
};

// What the command line asks for. Paths and names are bytes, as typed. Options without a value weren't given.
struct Options {
    std::optional<std::string> installRoot;
    std::optional<std::string> supportPackageRoot;
    std::optional<std::string> docRoot;
    std::optional<std::string> docDataRoot;
    std::optional<std::string> catalogue;
    std::string log = "error";
    std::string color = "auto";
    Command command = Command::printText;
    std::string text;  // printText: the text
    bool all = false;  // listProducts: the whole catalogue
    std::string name;  // findProduct: the product's name
};

// Reads the command line. Throws Failure on wrong usage.
Options readOptions(int argc, const char* const* argv);

}  // namespace app
