#pragma once

#include "fl/ustring.hpp"

// Finds the host's support packages.
class SupportPackageRootReader {
public:
    // The root that the host has set; empty if there is none. The folder is neither created nor tested.
    fl::ustring getSupportPackageRootNoCreate() const;
};
