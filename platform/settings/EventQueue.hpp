#pragma once

#include <boost/shared_ptr.hpp>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

#include "settings/core.hpp"

namespace settings::core {

// Delivers change events in order, one call at a time, on a thread of its own, which starts with the first event. The
// lock isn't held during a call, so a listener may do anything, including ending its own registration. Owned jointly
// by the host and every connection, so a connection may outlive the host's state. Its creator calls stop().
class EventQueue {
public:
    // A registered handler. Open until close() ends it.
    struct Listener {
        ChangeHandler handler;  // gone once the registration has ended
        bool open = true;       // like the handler, guarded by the queue's lock
    };
    using ListenerPtr = std::shared_ptr<Listener>;

    EventQueue() = default;
    EventQueue(const EventQueue&) = delete;
    EventQueue& operator=(const EventQueue&) = delete;

    // Queues one call. Never delivers it itself.
    void post(ListenerPtr listener, std::shared_ptr<const SettingsValueChangeEvent> event);

    // Ends a registration: pending calls are dropped, and the handler and its captures are destroyed. Waits for a
    // running call, unless called from it: then the handler stays until the call returns.
    void close(const ListenerPtr& listener);

    // Waits until no call is pending or running. Returns at once on the queue's thread.
    void wait();

    // The number of calls completed.
    std::uint64_t delivered();

    // Drops pending calls, waits for a running one, and ends the thread for good.
    void stop();

private:
    struct Delivery {
        ListenerPtr listener;
        std::shared_ptr<const SettingsValueChangeEvent> event;
    };

    void run();
    static void call(const Delivery& delivery) noexcept;
    bool onOwnThread() const { return m_threadId == std::this_thread::get_id(); }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Delivery> m_pending;
    const Listener* m_running = nullptr;  // null between calls
    std::uint64_t m_delivered = 0;
    bool m_stopped = false;
    std::thread m_thread;
    std::thread::id m_threadId;  // kept when the thread is detached
};

}  // namespace settings::core
