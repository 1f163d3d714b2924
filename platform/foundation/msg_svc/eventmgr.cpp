#include "foundation/msg_svc/eventmgr.hpp"

namespace foundation::msg_svc::eventmgr {

Connection::~Connection() = default;

}  // namespace foundation::msg_svc::eventmgr
