#pragma once

namespace foundation::msg_svc::eventmgr {

// A registered listener: it lives as long as this object, and destroying the object ends the registration. When the
// destructor returns no call of the listener is running, unless it is running on this very thread.
class Connection {
public:
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection();
};

}  // namespace foundation::msg_svc::eventmgr
