#pragma once

namespace foundation::msg_svc::eventmgr {

// The registration of a listener, which ends with this object. When the destructor returns, no call of the listener
// is running, unless it is the one that destroys this.
class Connection {
public:
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection();
};

}  // namespace foundation::msg_svc::eventmgr
