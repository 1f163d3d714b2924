#include "settings/SettingsTree.hpp"

#include <algorithm>
#include <boost/make_shared.hpp>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace settings::core {

namespace {

constexpr std::array<std::string_view, 3> s_levels = {"factory", "user", "session"};

std::size_t levelIndex(const std::string& level) {
    const auto found = std::find(s_levels.begin(), s_levels.end(), level);
    if (found == s_levels.end()) {
        throw std::invalid_argument("no settings level \"" + level + "\", only factory, user and session");
    }
    return static_cast<std::size_t>(found - s_levels.begin());
}

// Ends its listener's registration on destruction, and owns the listener: the tree holds a weak reference.
class SettingConnection : public foundation::msg_svc::eventmgr::Connection {
public:
    SettingConnection(std::shared_ptr<EventQueue> queue, EventQueue::ListenerPtr listener)
        : m_queue(std::move(queue)), m_listener(std::move(listener)) {}
    SettingConnection(const SettingConnection&) = delete;
    SettingConnection& operator=(const SettingConnection&) = delete;
    ~SettingConnection() override { m_queue->close(m_listener); }

private:
    std::shared_ptr<EventQueue> m_queue;
    EventQueue::ListenerPtr m_listener;
};

}  // namespace

SettingsTree::SettingsTree(std::shared_ptr<EventQueue> events) : m_events(std::move(events)) {}

fl::ustring SettingsTree::get(const std::string& fullName, const std::string& level) const {
    if (!level.empty()) {
        return at(fullName, level).value_or(fl::ustring());
    }
    const std::lock_guard lock(m_mutex);
    const auto found = m_values.find(fullName);
    return found == m_values.end() ? fl::ustring() : effective(found->second);
}

std::optional<fl::ustring> SettingsTree::at(const std::string& fullName, const std::string& level) const {
    const std::size_t index = levelIndex(level);
    const std::lock_guard lock(m_mutex);
    const auto found = m_values.find(fullName);
    return found == m_values.end() ? std::nullopt : found->second[index];
}

void SettingsTree::set(const std::string& fullName, const std::optional<fl::ustring>& value, const std::string& level) {
    const std::size_t index = levelIndex(level);
    const std::lock_guard lock(m_mutex);
    Levels& levels = m_values[fullName];
    Levels changed = levels;
    changed[index] = value;
    if (effective(changed) != effective(levels)) {
        raise(fullName);  // under the lock, so that events are queued in the order of the changes
    }
    levels.swap(changed);  // last, and can't fail: if raise() throws, nothing has changed
}

std::unique_ptr<foundation::msg_svc::eventmgr::Connection> SettingsTree::addListener(const std::string& fullName,
                                                                                     const ChangeHandler& handler) {
    auto listener = std::make_shared<EventQueue::Listener>();
    listener->handler = handler;
    auto connection = std::make_unique<SettingConnection>(m_events, listener);
    const std::lock_guard lock(m_mutex);
    auto& listeners = m_listeners[fullName];
    std::erase_if(listeners, [](const auto& candidate) { return candidate.expired(); });
    listeners.push_back(listener);
    return connection;
}

fl::ustring SettingsTree::effective(const Levels& levels) {
    const auto held = std::find_if(levels.rbegin(), levels.rend(), [](const auto& level) { return level.has_value(); });
    return held == levels.rend() ? fl::ustring() : **held;
}

void SettingsTree::raise(const std::string& fullName) {
    const auto listeners = m_listeners.find(fullName);
    if (listeners == m_listeners.end()) {
        return;
    }
    const auto subject = boost::make_shared<Settings>(shared_from_this(), fullName);
    const auto event = std::make_shared<const SettingsValueChangeEvent>(subject);
    for (const auto& candidate : listeners->second) {
        if (auto listener = candidate.lock()) {
            m_events->post(std::move(listener), event);
        }
    }
}

}  // namespace settings::core
