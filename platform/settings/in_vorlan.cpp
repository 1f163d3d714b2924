#include "settings/in_vorlan.hpp"

#include "vorlan/services.hpp"

namespace settings::in_vorlan {

boost::shared_ptr<core::Settings> getSettingsRoot(const vlutil::contextmgr::RtxID& context) {
    return vorlan::services().settingsRoot(context);
}

template <>
std::unique_ptr<foundation::msg_svc::eventmgr::Connection> addListener<core::SettingsValueChangeEvent>(
    const boost::shared_ptr<const core::Settings>& node, const core::ChangeHandler& handler) {
    return node ? vorlan::services().addListener(*node, handler) : nullptr;
}

}  // namespace settings::in_vorlan
