#pragma once

#include <string>

#include "fl/ustring.hpp"

// The host's own side of its services. The host and the library use them on one thread; a host with more needs locks.
namespace host {

void setRoots(const std::string& installRoot, const std::string& supportPackageRoot);
fl::ustring installRoot();

// Stores the value of a setting for this session.
void changeSetting(const std::string& group, const std::string& name, const std::string& value);

// Calls the listeners of the settings that have changed since the last call. The host calls this in its event loop.
void deliverEvents();

}  // namespace host
