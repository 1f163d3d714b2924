#include "settings/EventQueue.hpp"

#include <utility>

// One mutex guards the queue, and one condition variable signals every change of it. The mutex is released while a
// handler runs and while its captures are destroyed, because both are the host's code. A listener that is closed while
// its call is pending isn't called; one that is closed during its call keeps its handler until the call returns.
namespace settings::core {

void EventQueue::post(ListenerPtr listener, std::shared_ptr<const SettingsValueChangeEvent> event) {
    const std::lock_guard lock(m_mutex);
    if (m_stopped) {
        return;
    }
    m_pending.push_back({std::move(listener), std::move(event)});
    if (!m_thread.joinable()) {
        m_thread = std::thread(&EventQueue::run, this);
        m_threadId = m_thread.get_id();
    }
    m_changed.notify_all();
}

void EventQueue::close(const ListenerPtr& listener) {
    ChangeHandler dropped;  // destroyed after the lock is released, like every delivery
    std::unique_lock lock(m_mutex);
    listener->open = false;
    if (!onOwnThread()) {
        m_changed.wait(lock, [&] { return m_running != listener.get(); });
    }
    if (m_running != listener.get()) {
        dropped.swap(listener->handler);
    }
}

void EventQueue::wait() {
    std::unique_lock lock(m_mutex);
    if (!onOwnThread()) {
        m_changed.wait(lock, [&] { return m_pending.empty() && m_running == nullptr; });
    }
}

std::uint64_t EventQueue::delivered() {
    const std::lock_guard lock(m_mutex);
    return m_delivered;
}

void EventQueue::stop() {
    std::deque<Delivery> dropped;
    std::unique_lock lock(m_mutex);
    m_stopped = true;
    dropped.swap(m_pending);
    m_changed.notify_all();
    if (!m_thread.joinable()) {
        return;
    }
    if (onOwnThread()) {
        m_thread.detach();  // a listener called exit(): a thread can't join itself
        return;
    }
    lock.unlock();
    m_thread.join();
}

void EventQueue::run() {
    std::unique_lock lock(m_mutex);
    while (true) {
        m_changed.wait(lock, [&] { return m_stopped || !m_pending.empty(); });
        if (m_stopped) {
            return;
        }
        Delivery delivery = std::move(m_pending.front());
        m_pending.pop_front();
        m_running = delivery.listener.get();
        const bool isOpen = delivery.listener->open;
        lock.unlock();
        if (isOpen) {
            call(delivery);
        }
        delivery = {};  // without the lock: this may destroy a listener's captures
        lock.lock();
        m_running = nullptr;
        m_delivered += isOpen ? 1 : 0;
        m_changed.notify_all();
    }
}

void EventQueue::call(const Delivery& delivery) noexcept {
    try {
        delivery.listener->handler(*delivery.event);
    } catch (...) {  // a listener's failure affects no other
    }
}

}  // namespace settings::core
