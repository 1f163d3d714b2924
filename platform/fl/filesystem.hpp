#pragma once

#include "fl/ustring.hpp"
#include "foundation/basic_path.hpp"

// The file level of paths. Every call goes through the host's services and throws what they throw.
namespace fl::filesystem {

// True if something is there, of whatever kind, links followed. False for whatever can't be reached: missing, below a
// file, a link that dangles or loops, a name too long, no permission, a NUL in the text, the empty path.
bool exists(const upath& path);
bool exists(const ustring& path);

// The path of an existing entry with links and "." and ".." resolved. A relative path counts from `base`, or from the
// working directory where `base` is empty. Throws std::filesystem::filesystem_error where the entry can't be reached.
upath canonical(const upath& path, const upath& base);

// The install root of the host application; may be empty.
ustring get_install_path();

}  // namespace fl::filesystem
