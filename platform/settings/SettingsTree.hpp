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

// The settings of one context, in memory: text by full name and level, and who listens to what. Thread-safe. Held by
// a shared pointer, since the events that it raises carry handles on it.
class SettingsTree : public std::enable_shared_from_this<SettingsTree> {
public:
    explicit SettingsTree(std::shared_ptr<EventQueue> events);

    // What a read answers: one level's text, or with an empty level the highest one's. Empty where nothing is set.
    fl::ustring get(const std::string& fullName, const std::string& level) const;

    // What one level holds.
    std::optional<fl::ustring> at(const std::string& fullName, const std::string& level) const;

    // Stores or, given no value, clears. Queues the event if what a read with an empty level answers has changed.
    void set(const std::string& fullName, const std::optional<fl::ustring>& value, const std::string& level);

    // Hears of every change that comes after this call.
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
