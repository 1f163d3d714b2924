#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "fl/ustring.hpp"
#include "vlutil/contextmgr.hpp"

// What a program calls to play the host VORLAN: it sets the scene for the layer's real services and reads what
// happened. Full names of settings join their parts with ".", levels are "factory", "user" and "session"; another
// level throws std::invalid_argument. Any thread may call any of these.
namespace vorlan {

// The install root, which may be the empty text. Until it is set it is the parent of the folder that holds the
// running program.
void setInstallRoot(const fl::ustring& path);

// The support-package root; empty, as at the start, means none.
void setSupportPackageRoot(const fl::ustring& path);

// The current runtime context. At the start it is context 0, which has settings, all unset; any other context has
// none until openSettings gives it some.
void setContext(vlutil::contextmgr::RtxID context);

// Gives the current context settings, all unset, unless it has some; and takes them away. Handles on settings that
// were taken away go on working on what is left to them alone.
void openSettings();
void closeSettings();

// Sets, clears and reads what one level holds in the current context's settings. A change raises its event like any
// other. Without settings the first two do nothing, and nothing is held.
void setSetting(const std::string& fullName, const fl::ustring& value, const std::string& level);
void clearSetting(const std::string& fullName, const std::string& level);
std::optional<fl::ustring> settingAt(const std::string& fullName, const std::string& level);

// Waits until every change event raised so far, and every one raised on the way, has been delivered. On the thread
// that delivers it returns at once.
void waitForEvents();

// Calls of listeners that have ended since the start of the process.
std::uint64_t deliveredEvents();

// The level mask of every logger of that name, of those that exist and those to come. Until it is set it is `error`.
void setLevelMask(const std::string& loggerName, std::uint32_t mask);

}  // namespace vorlan
