#pragma once

#include <array>
#include <string>

namespace app {

struct Root {
    const char* key;  // of an answer
    const char* name;
    std::string path;
    bool exists;
};

// Before they are found.
inline const std::array unknownRoots = {Root{"documentation_root", "documentation root", "", false},
                                        Root{"data_root", "data root", "", false}};

// The documentation root and the data root.
std::array<Root, 2> findRoots();

// A line for each root that doesn't exist.
std::string missingRoots(const std::array<Root, 2>& roots);

}  // namespace app
