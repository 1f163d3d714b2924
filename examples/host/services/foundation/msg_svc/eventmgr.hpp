#pragma once

namespace foundation::msg_svc::eventmgr {

// The registration of a listener, which ends with this object.
class Connection {
public:
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection() = default;
};

}  // namespace foundation::msg_svc::eventmgr
