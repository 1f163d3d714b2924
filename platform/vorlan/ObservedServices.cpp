#include "vorlan/ObservedServices.hpp"

#include "fl/i18n.hpp"

namespace vorlan {

using fl::i18n::to_string;
using settings::core::Settings;

template <class Answer, class... Parameters>
Answer ObservedServices::answer(const std::string& call, Answer (Services::*real)(Parameters...),
                                const auto&... arguments) {
    return observe(call) ? (m_real.*real)(arguments...) : Answer();
}

vlutil::contextmgr::RtxID ObservedServices::currentContext() {
    return answer("context", &Services::currentContext);
}

boost::shared_ptr<Settings> ObservedServices::settingsRoot(const vlutil::contextmgr::RtxID& context) {
    return answer("root", &Services::settingsRoot, context);
}

boost::shared_ptr<Settings> ObservedServices::settingsByFullName(const Settings& node, const std::string& fullName) {
    return answer("node " + fullName, &Services::settingsByFullName, node, fullName);
}

boost::shared_ptr<Settings> ObservedServices::parent(const Settings& node) {
    return answer("parent " + node.getFullName(), &Services::parent, node);
}

fl::ustring ObservedServices::getSetting(const Settings& node, const std::string& name, const std::string& level) {
    return answer("get " + name + " @" + level, &Services::getSetting, node, name, level);
}

void ObservedServices::setSetting(const Settings& node, const std::string& name, const fl::ustring& value,
                                  const std::string& level) {
    answer("set " + name + "=" + to_string(value) + " @" + level, &Services::setSetting, node, name, value, level);
}

std::unique_ptr<foundation::msg_svc::eventmgr::Connection> ObservedServices::addListener(
    const Settings& node, const settings::core::ChangeHandler& handler) {
    return answer("listen " + node.getFullName(), &Services::addListener, node, handler);
}

fl::ustring ObservedServices::installRoot() {
    return answer("install root", &Services::installRoot);
}

fl::ustring ObservedServices::supportPackageRoot() {
    return answer("support package root", &Services::supportPackageRoot);
}

bool ObservedServices::exists(const fl::ustring& path) {
    return answer("exists " + to_string(path), &Services::exists, path);
}

fl::ustring ObservedServices::canonical(const fl::ustring& path) {
    return answer("canonical " + to_string(path), &Services::canonical, path);
}

}  // namespace vorlan
