#pragma once

#include <optional>
#include <string>
#include <vector>

#include "check/Problems.hpp"

namespace app {

enum class Command {
    printText,  // for --help and --version
    showRoots,
    listProducts,
    findProduct,
    checkCatalogues,
};

// What the command check is asked for.
struct CheckOptions {
    std::vector<std::string> files;  // none: the catalogue in force
    bool isStrict = false;
    bool noFiles = false;
    check::Policy policy;
    std::string format = "text";  // or "json", "sarif"
    std::string explainedCode;    // if not empty, only explains it
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
    CheckOptions check;
};

// Reads the command line. Throws Failure on wrong usage.
Options readOptions(int argc, const char* const* argv);

}  // namespace app
