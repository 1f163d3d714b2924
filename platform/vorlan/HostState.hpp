#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>

#include "settings/SettingsTree.hpp"
#include "vlutil/contextmgr.hpp"

namespace vorlan {

// The values that the functions of host.hpp set and the real services read. Thread-safe.
class HostState {
public:
    static HostState& instance();

    HostState(const HostState&) = delete;
    HostState& operator=(const HostState&) = delete;

    std::optional<fl::ustring> installRoot() const;
    void setInstallRoot(const fl::ustring& path);

    fl::ustring supportPackageRoot() const;
    void setSupportPackageRoot(const fl::ustring& path);

    vlutil::contextmgr::RtxID context() const;
    void setContext(vlutil::contextmgr::RtxID context);

    // The settings of a context; null if it has none.
    std::shared_ptr<settings::core::SettingsTree> settings(vlutil::contextmgr::RtxID context) const;
    std::shared_ptr<settings::core::SettingsTree> currentSettings() const { return settings(context()); }
    void openSettings();
    void closeSettings();

    settings::core::EventQueue& events() { return *m_events; }

private:
    HostState();
    ~HostState();

    const std::shared_ptr<settings::core::EventQueue> m_events = std::make_shared<settings::core::EventQueue>();
    mutable std::mutex m_mutex;
    std::optional<fl::ustring> m_installRoot;
    fl::ustring m_supportPackageRoot;
    vlutil::contextmgr::RtxID m_context;
    std::map<vlutil::contextmgr::RtxID, std::shared_ptr<settings::core::SettingsTree>> m_settings;
};

}  // namespace vorlan
