#include "settings/core.hpp"

#include <utility>

#include "vorlan/services.hpp"

namespace settings::core {

Settings::Settings(std::shared_ptr<SettingsTree> tree, std::string fullName)
    : m_tree(std::move(tree)), m_fullName(std::move(fullName)) {}

template <>
fl::ustring Settings::get<fl::ustring>(const std::string& name, const std::string& level) const {
    return vorlan::services().getSetting(*this, name, level);
}

template <>
void Settings::set<fl::ustring>(const std::string& name, const fl::ustring& value, const std::string& level) {
    vorlan::services().setSetting(*this, name, value, level);
}

boost::shared_ptr<Settings> Settings::getSettingsByFullName(const std::string& fullName) const {
    return vorlan::services().settingsByFullName(*this, fullName);
}

boost::shared_ptr<Settings> Settings::getParent() const {
    return vorlan::services().parent(*this);
}

SettingsValueChangeEvent::SettingsValueChangeEvent(boost::shared_ptr<Settings> subject)
    : m_subject(std::move(subject)) {}

SettingsValueChangeEvent::~SettingsValueChangeEvent() = default;

const boost::shared_ptr<Settings>& SettingsValueChangeEvent::getSubject() const {
    return m_subject;
}

}  // namespace settings::core
