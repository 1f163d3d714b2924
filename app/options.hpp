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
    explain,
    checkCatalogues,
};

// What the command check is asked for.
struct CheckOptions {
    std::vector<std::string> files;  // none: the catalogue in force
    bool isStrict = false;
    bool noFiles = false;
    check::Policy policy;
    std::string format = "text";               // or "json", "sarif"
    std::optional<std::string> explainedCode;  // if there is one, only explains it; if empty, lists all codes
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
    std::string text;                 // printText: the text
    std::string commandName;          // unless printText
    bool all = false;                 // listProducts: the whole catalogue
    bool names = false;               // listProducts: only the names that find takes
    bool path = false;                // showRoots, findProduct: only paths
    bool endsWithNul = false;         // names and paths end with NUL, not with a line feed
    bool json = false;                // the answer is a JSON document
    std::optional<std::string> name;  // findProduct, explain: the product's name
    CheckOptions check;

    // True if the answer says how the library came to its own.
    bool explains() const {
        return command == Command::explain || all || (json && command != Command::checkCatalogues);
    }
};

// Reads the command line. Throws Failure on wrong usage.
Options readOptions(int argc, const char* const* argv);

}  // namespace app
