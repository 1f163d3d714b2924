#include "vorlan/host.hpp"

#include "foundation/log/LevelMasks.hpp"
#include "vorlan/HostState.hpp"

namespace vorlan {

void setInstallRoot(const fl::ustring& path) {
    HostState::instance().setInstallRoot(path);
}

void setSupportPackageRoot(const fl::ustring& path) {
    HostState::instance().setSupportPackageRoot(path);
}

void setContext(vlutil::contextmgr::RtxID context) {
    HostState::instance().setContext(context);
}

void openSettings() {
    HostState::instance().openSettings();
}

void closeSettings() {
    HostState::instance().closeSettings();
}

void setSetting(const std::string& fullName, const fl::ustring& value, const std::string& level) {
    if (const auto tree = HostState::instance().currentSettings()) {
        tree->set(fullName, value, level);
    }
}

void clearSetting(const std::string& fullName, const std::string& level) {
    if (const auto tree = HostState::instance().currentSettings()) {
        tree->set(fullName, std::nullopt, level);
    }
}

std::optional<fl::ustring> settingAt(const std::string& fullName, const std::string& level) {
    const auto tree = HostState::instance().currentSettings();
    return tree ? tree->at(fullName, level) : std::nullopt;
}

void waitForEvents() {
    HostState::instance().events().wait();
}

std::uint64_t deliveredEvents() {
    return HostState::instance().events().delivered();
}

void setLevelMask(const std::string& loggerName, std::uint32_t mask) {
    foundation::log::LevelMasks::instance().set(loggerName, mask);
}

}  // namespace vorlan
