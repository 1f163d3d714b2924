#pragma once

#include "fl/ustring.hpp"

class SupportPackageRootReader {
public:
    fl::ustring getSupportPackageRootNoCreate() const;
};
