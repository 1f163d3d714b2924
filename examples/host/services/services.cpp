#include <algorithm>
#include <boost/locale/encoding_utf.hpp>
#include <boost/log/attributes/constant.hpp>
#include <boost/make_shared.hpp>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "SupportPackageRootReader.hpp"
#include "fl/i18n.hpp"
#include "fl/pathname.hpp"
#include "foundation/log/basic_diagnostic_logger.hpp"
#include "foundation/log/logger_parts.hpp"
#include "host.hpp"
#include "settings/in_vorlan.hpp"

namespace {

using settings::core::ChangeHandler;
using settings::core::Settings;
using settings::core::SettingsValueChangeEvent;

class Listener;

struct State {
    fl::ustring installRoot;
    fl::ustring supportPackageRoot;
    std::map<std::string, std::map<std::string, fl::ustring>> values;  // by full name, by level
    std::set<std::string> changed;                                     // full names
    std::vector<const Listener*> listeners;
};

// Never destroyed: the library uses the services until the process ends.
State& state() {
    static State& s_state = *new State;
    return s_state;
}

class Listener : public foundation::msg_svc::eventmgr::Connection {
public:
    Listener(std::string name, ChangeHandler handler) : m_name(std::move(name)), m_handler(std::move(handler)) {
        state().listeners.push_back(this);
    }
    ~Listener() override {
        auto& listeners = state().listeners;
        listeners.erase(std::find(listeners.begin(), listeners.end(), this));
    }
    void notify(const std::string& changed) const {
        if (changed == m_name) {
            m_handler(SettingsValueChangeEvent(boost::make_shared<Settings>(changed)));
        }
    }

private:
    std::string m_name;
    ChangeHandler m_handler;
};

std::string joined(const std::string& group, const std::string& name) {
    return group.empty() ? name : group + "." + name;
}

}  // namespace

namespace fl::i18n {

std::string to_string(const ustring& text) {
    return boost::locale::conv::utf_to_utf<char>(text);
}

ustring to_ustring(const std::string& text) {
    return boost::locale::conv::utf_to_utf<char16_t>(text);
}

ustring utf8_to_ustring(const std::string& text) {
    return to_ustring(text);
}

}  // namespace fl::i18n

namespace fl::filesystem::detail {

ustring make_native_form(const ustring& text, bool /*flag*/) {
    return text;
}

void concatenate_pathname(ustring& text, const ustring& component, bool /*flag*/) {
    const bool needsSeparator = !text.empty() && text.back() != u'/';
    text += (needsSeparator ? u"/" : u"") + component;
}

bool is_absolute(const ustring& text) noexcept {
    return !text.empty() && text.front() == u'/';
}

}  // namespace fl::filesystem::detail

fl::ustring SupportPackageRootReader::getSupportPackageRootNoCreate() const {
    return state().supportPackageRoot;
}

namespace settings::core {

template <>
fl::ustring Settings::get<fl::ustring>(const std::string& name, const std::string& level) const {
    auto& levels = state().values[joined(m_fullName, name)];
    return level.empty() ? levels[levels.count("session") != 0 ? "session" : "user"] : levels[level];
}

// Delivers nothing itself: the library holds a lock here, which its listeners take too.
template <>
void Settings::set<fl::ustring>(const std::string& name, const fl::ustring& value, const std::string& level) {
    const fl::ustring before = get<fl::ustring>(name, "");
    const std::string fullName = joined(m_fullName, name);
    state().values[fullName][level] = value;
    if (get<fl::ustring>(name, "") != before) {
        state().changed.insert(fullName);
    }
}

boost::shared_ptr<Settings> Settings::getSettingsByFullName(const std::string& fullName) const {
    return boost::make_shared<Settings>(fullName);
}

boost::shared_ptr<Settings> Settings::getParent() const {
    const auto end = m_fullName.rfind('.');
    return end == std::string::npos ? nullptr : boost::make_shared<Settings>(m_fullName.substr(0, end));
}

}  // namespace settings::core

namespace settings::in_vorlan {

boost::shared_ptr<Settings> getSettingsRoot(const vlutil::contextmgr::RtxID& /*context*/) {
    return boost::make_shared<Settings>("");
}

template <>
std::unique_ptr<foundation::msg_svc::eventmgr::Connection> addListener<SettingsValueChangeEvent>(
    const boost::shared_ptr<const Settings>& node, const ChangeHandler& handler) {
    return std::make_unique<Listener>(node->fullName(), handler);
}

}  // namespace settings::in_vorlan

namespace foundation::log {

basic_diagnostic_logger<char>::basic_diagnostic_logger(const std::string& name)
    : m_parts(std::make_unique<logger_parts>()) {
    m_parts->attributes["Channel"] = boost::log::attributes::constant<std::string>(name);
}

basic_diagnostic_logger<char>::~basic_diagnostic_logger() = default;

}  // namespace foundation::log

namespace host {

void setRoots(const std::string& installRoot, const std::string& supportPackageRoot) {
    state().installRoot = fl::i18n::to_ustring(installRoot);
    state().supportPackageRoot = fl::i18n::to_ustring(supportPackageRoot);
}

fl::ustring installRoot() {
    return state().installRoot;
}

void changeSetting(const std::string& group, const std::string& name, const std::string& value) {
    Settings(group).set<fl::ustring>(name, fl::i18n::to_ustring(value), "session");
}

void deliverEvents() {
    for (const std::string& name : std::exchange(state().changed, {})) {
        for (const Listener* listener : state().listeners) {
            listener->notify(name);
        }
    }
}

}  // namespace host
