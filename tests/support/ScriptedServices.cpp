#include "support/ScriptedServices.hpp"

#include <boost/make_shared.hpp>
#include <iterator>
#include <utility>

#include "fl/i18n.hpp"

namespace support {

using fl::i18n::to_string;
using settings::core::Settings;

ScriptedServices::ScriptedServices() : m_former(vorlan::useServices(*this)) {}

ScriptedServices::~ScriptedServices() {
    vorlan::useServices(m_former);
}

void ScriptedServices::on(const std::string& start, std::function<void()> action) {
    const std::lock_guard lock(m_mutex);
    m_plans[start] = std::move(action);
}

void ScriptedServices::deliver(const std::string& fullName) {
    m_deliveries.at(fullName)();
}

void ScriptedServices::reset() {
    const std::lock_guard lock(m_mutex);
    m_plans.clear();
}

std::vector<std::string> ScriptedServices::take(const std::string& start) {
    const std::lock_guard lock(m_mutex);
    std::vector<std::string> lines = std::exchange(m_lines, {});
    std::erase_if(lines, [&](const std::string& line) { return !line.starts_with(start); });
    return lines;
}

std::vector<std::function<void()>> ScriptedServices::arrive(const std::string& line) {
    const std::lock_guard lock(m_mutex);
    m_lines.push_back(line);
    std::vector<std::function<void()>> actions;
    for (const auto& [start, action] : m_plans) {
        if (line.starts_with(start)) {
            actions.push_back(action);
        }
    }
    return actions;
}

template <class Forward>
auto ScriptedServices::answer(const std::string& line, Forward forward) -> decltype(forward()) {
    try {
        for (const auto& action : arrive(line)) {
            action();
        }
    } catch (Nothing) {
        return decltype(forward())();
    }
    return forward();
}

vlutil::contextmgr::RtxID ScriptedServices::currentContext() {
    return answer("context", [&] { return Services::currentContext(); });
}

boost::shared_ptr<Settings> ScriptedServices::settingsRoot(const vlutil::contextmgr::RtxID& context) {
    return answer("root", [&] { return Services::settingsRoot(context); });
}

boost::shared_ptr<Settings> ScriptedServices::settingsByFullName(const Settings& node, const std::string& fullName) {
    return answer("node " + fullName, [&] { return Services::settingsByFullName(node, fullName); });
}

boost::shared_ptr<Settings> ScriptedServices::parent(const Settings& node) {
    return answer("parent " + node.getFullName(), [&] { return Services::parent(node); });
}

fl::ustring ScriptedServices::getSetting(const Settings& node, const std::string& name, const std::string& level) {
    return answer("get " + name + (level.empty() ? "" : " @" + level),
                  [&] { return Services::getSetting(node, name, level); });
}

void ScriptedServices::setSetting(const Settings& node, const std::string& name, const fl::ustring& value,
                                  const std::string& level) {
    answer("set " + name + "=" + to_string(value) + " @" + level,
           [&] { Services::setSetting(node, name, value, level); });
}

std::unique_ptr<foundation::msg_svc::eventmgr::Connection> ScriptedServices::addListener(
    const Settings& node, const vorlan::ChangeHandler& handler) {
    const auto subject = boost::make_shared<Settings>(node.getTree(), node.getFullName());
    m_deliveries[node.getFullName()] = [handler, event = settings::core::SettingsValueChangeEvent(subject)] {
        handler(event);
    };
    return answer("listen " + node.getFullName(), [&] { return Services::addListener(node, handler); });
}

fl::ustring ScriptedServices::installRoot() {
    return answer("install root", [&] { return Services::installRoot(); });
}

fl::ustring ScriptedServices::supportPackageRoot() {
    return answer("support package root", [&] { return Services::supportPackageRoot(); });
}

bool ScriptedServices::exists(const fl::ustring& path) {
    return answer("exists " + to_string(path), [&] { return Services::exists(path); });
}

fl::ustring ScriptedServices::canonical(const fl::ustring& path) {
    return answer("canonical " + to_string(path), [&] { return Services::canonical(path); });
}

}  // namespace support
