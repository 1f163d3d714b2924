#pragma once

#include <memory>

#include "foundation/msg_svc/eventmgr.hpp"
#include "settings/core.hpp"
#include "vlutil/contextmgr.hpp"

namespace settings::in_vorlan {

boost::shared_ptr<core::Settings> getSettingsRoot(const vlutil::contextmgr::RtxID& context);

template <class Event>
std::unique_ptr<foundation::msg_svc::eventmgr::Connection> addListener(
    const boost::shared_ptr<const core::Settings>& node, const boost::function1<void, const Event&>& handler);

template <>
std::unique_ptr<foundation::msg_svc::eventmgr::Connection> addListener<core::SettingsValueChangeEvent>(
    const boost::shared_ptr<const core::Settings>& node, const core::ChangeHandler& handler);

}  // namespace settings::in_vorlan
