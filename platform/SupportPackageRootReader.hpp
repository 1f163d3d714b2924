#pragma once

#include "fl/ustring.hpp"

// Reads where the host's support packages live.
class SupportPackageRootReader {
public:
    // The root as the host set it, empty where there is none. The folder isn't created, nor looked for.
    fl::ustring getSupportPackageRootNoCreate() const;
};
