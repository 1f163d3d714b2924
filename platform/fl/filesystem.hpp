#pragma once

#include "fl/ustring.hpp"
#include "foundation/basic_path.hpp"

// File operations on paths. Each calls the host's services and throws what they throw.
namespace fl::filesystem {

// True if the path leads to something, of any kind; links are followed. False if it can't be reached: missing, below
// a file, a dangling or looping link, a name too long, no permission, a NUL in the text, the empty path.
bool exists(const upath& path);
bool exists(const ustring& path);

// The absolute path of an existing entry, without links, "." and "..". A relative path is resolved against `base`, or
// against the working directory if `base` is empty. Throws std::filesystem::filesystem_error if the entry can't be
// reached.
upath canonical(const upath& path, const upath& base);

// The install root of the host application; may be empty.
ustring get_install_path();

}  // namespace fl::filesystem
