#include "vorlan/HostState.hpp"

namespace vorlan {

HostState& HostState::instance() {
    static HostState s_state;
    return s_state;
}

HostState::HostState() {
    openSettings();
}

// The queue is stopped first: until then a listener may use any part of the state.
HostState::~HostState() {
    m_events->stop();
}

std::optional<fl::ustring> HostState::installRoot() const {
    const std::lock_guard lock(m_mutex);
    return m_installRoot;
}

void HostState::setInstallRoot(const fl::ustring& path) {
    const std::lock_guard lock(m_mutex);
    m_installRoot = path;
}

fl::ustring HostState::supportPackageRoot() const {
    const std::lock_guard lock(m_mutex);
    return m_supportPackageRoot;
}

void HostState::setSupportPackageRoot(const fl::ustring& path) {
    const std::lock_guard lock(m_mutex);
    m_supportPackageRoot = path;
}

vlutil::contextmgr::RtxID HostState::context() const {
    const std::lock_guard lock(m_mutex);
    return m_context;
}

void HostState::setContext(vlutil::contextmgr::RtxID context) {
    const std::lock_guard lock(m_mutex);
    m_context = context;
}

std::shared_ptr<settings::core::SettingsTree> HostState::settings(vlutil::contextmgr::RtxID context) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_settings.find(context);
    return found == m_settings.end() ? nullptr : found->second;
}

void HostState::openSettings() {
    const std::lock_guard lock(m_mutex);
    auto& tree = m_settings[m_context];
    if (!tree) {
        tree = std::make_shared<settings::core::SettingsTree>(m_events);
    }
}

void HostState::closeSettings() {
    const std::lock_guard lock(m_mutex);
    m_settings.erase(m_context);
}

}  // namespace vorlan
