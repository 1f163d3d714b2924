#pragma once

#include <array>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "foundation/msg_svc/eventmgr.hpp"
#include "settings/EventQueue.hpp"

namespace settings::core {

// The settings of one context, in memory: text by full name and level, and the listeners. Thread-safe. Held by a
// shared pointer, since the events that it raises hold handles to it.
class SettingsTree : public std::enable_shared_from_this<SettingsTree> {
public:
    explicit SettingsTree(std::shared_ptr<EventQueue> events);

    // The text at that level, or with an empty level at the highest that has a value. Empty if there is none.
    fl::ustring get(const std::string& fullName, const std::string& level) const;

    // The value at that level, if any.
    std::optional<fl::ustring> at(const std::string& fullName, const std::string& level) const;

    // Stores the value, or clears it. Queues the event if that changes the result of a read with an empty level.
    void set(const std::string& fullName, const std::optional<fl::ustring>& value, const std::string& level);

    // Registers a handler for later changes.
    std::unique_ptr<foundation::msg_svc::eventmgr::Connection> addListener(const std::string& fullName,
                                                                           const ChangeHandler& handler);

private:
    using Levels = std::array<std::optional<fl::ustring>, 3>;  // factory, user, session

    static fl::ustring effective(const Levels& levels);
    void raise(const std::string& fullName);

    const std::shared_ptr<EventQueue> m_events;
    mutable std::mutex m_mutex;
    std::map<std::string, Levels> m_values;
    std::map<std::string, std::vector<std::weak_ptr<EventQueue::Listener>>> m_listeners;
};

}  // namespace settings::core
