#pragma once

#include <boost/function/function1.hpp>
#include <boost/shared_ptr.hpp>
#include <memory>

#include "foundation/msg_svc/eventmgr.hpp"
#include "settings/core.hpp"
#include "vlutil/contextmgr.hpp"

namespace settings::in_vorlan {

// The root node of a context's settings; null if it has none.
boost::shared_ptr<core::Settings> getSettingsRoot(const vlutil::contextmgr::RtxID& context);

// Registers a copy of the handler for changes of the node's setting, for the lifetime of the result; null for a null
// node. Calls are made one at a time on a thread of the service, in the order of the changes, never inside a `set`
// and never under a lock of the service. Exceptions from a handler are swallowed.
template <class Event>
std::unique_ptr<foundation::msg_svc::eventmgr::Connection> addListener(
    const boost::shared_ptr<const core::Settings>& node, const boost::function1<void, const Event&>& handler);

template <>
std::unique_ptr<foundation::msg_svc::eventmgr::Connection> addListener<core::SettingsValueChangeEvent>(
    const boost::shared_ptr<const core::Settings>& node, const core::ChangeHandler& handler);

}  // namespace settings::in_vorlan
