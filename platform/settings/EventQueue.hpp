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
// lock is never held during a call, so a listener may do anything, end its own registration included. Shared by the
// host and by every connection, so one that outlives the host's state still finds it; whoever made it calls stop().
class EventQueue {
public:
    // A registered handler. Open until close() ends it.
    struct Listener {
        ChangeHandler handler;  // gone once the registration has ended
        bool open = true;       // guarded, like the handler, by the queue's lock
    };
    using ListenerPtr = std::shared_ptr<Listener>;

    EventQueue() = default;
    EventQueue(const EventQueue&) = delete;
    EventQueue& operator=(const EventQueue&) = delete;

    // Queues one call. Never delivers.
    void post(ListenerPtr listener, std::shared_ptr<const SettingsValueChangeEvent> event);

    // Ends a registration: its calls still pending are dropped, and the handler with all that it holds is let go of.
    // A running call is waited for, except on the queue's own thread, where it goes on and keeps the handler.
    void close(const ListenerPtr& listener);

    // Waits until nothing is pending and nothing runs. Returns at once on the queue's thread.
    void wait();

    // Calls that have ended.
    std::uint64_t delivered();

    // Drops what is pending, waits for a running call, and ends the thread for good.
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
    const Listener* m_running = nullptr;  // of the delivery in hand
    std::uint64_t m_delivered = 0;
    bool m_stopped = false;
    std::thread m_thread;
    std::thread::id m_threadId;  // stays when the thread is detached
};

}  // namespace settings::core
