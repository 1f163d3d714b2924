#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "fl/ustring.hpp"
#include "vlutil/contextmgr.hpp"

// What a program calls to act as the host VORLAN: it configures the real services and observes them. Full names of
// settings join their parts with ".". Levels are "factory", "user" and "session"; any other throws
// std::invalid_argument. Any thread may call any of these.
namespace vorlan {

// The install root, which should not be empty. Until it is set, it is the parent of the running program's folder.
void setInstallRoot(const fl::ustring& path);

// The support-package root. Initially empty, which makes the library look below the working directory: set it.
void setSupportPackageRoot(const fl::ustring& path);

// The current runtime context. Initially it is context 0, which has settings, all unset; any other context has none
// until openSettings is called.
void setContext(vlutil::contextmgr::RtxID context);

// Gives the current context settings, all unset, unless it has some; removes them. Existing handles keep the removed
// settings alive and go on working on them.
void openSettings();
void closeSettings();

// Set, clear and read the value at a level in the current context's settings. A change raises its event as usual.
// Without settings the first two do nothing and the third returns nothing.
void setSetting(const std::string& fullName, const fl::ustring& value, const std::string& level);
void clearSetting(const std::string& fullName, const std::string& level);
std::optional<fl::ustring> settingAt(const std::string& fullName, const std::string& level);

// Waits until all change events, including those raised meanwhile, have been delivered. Returns at once on the thread
// that delivers them.
void waitForEvents();

// The number of listener calls completed since the process started.
std::uint64_t deliveredEvents();

// The level mask of every logger of that name, present and future. Initially `error`.
void setLevelMask(const std::string& loggerName, std::uint32_t mask);

}  // namespace vorlan
