#pragma once

#include <boost/function/function1.hpp>
#include <boost/shared_ptr.hpp>
#include <string>
#include <utility>

#include "fl/ustring.hpp"

namespace settings::core {

// A node of the settings, by its full name. This host stores a value at the levels "user" and "session".
class Settings {
public:
    explicit Settings(std::string fullName) : m_fullName(std::move(fullName)) {}

    template <class T>
    T get(const std::string& name, const std::string& level) const;

    template <class T>
    void set(const std::string& name, const T& value, const std::string& level);

    boost::shared_ptr<Settings> getSettingsByFullName(const std::string& fullName) const;
    boost::shared_ptr<Settings> getParent() const;
    const std::string& fullName() const noexcept { return m_fullName; }

private:
    std::string m_fullName;
};

template <>
fl::ustring Settings::get<fl::ustring>(const std::string& name, const std::string& level) const;

template <>
void Settings::set<fl::ustring>(const std::string& name, const fl::ustring& value, const std::string& level);

class SettingsValueChangeEvent {
public:
    explicit SettingsValueChangeEvent(boost::shared_ptr<Settings> subject) : m_subject(std::move(subject)) {}
    const boost::shared_ptr<Settings>& getSubject() const { return m_subject; }

private:
    boost::shared_ptr<Settings> m_subject;
};

using ChangeHandler = boost::function1<void, const SettingsValueChangeEvent&>;

}  // namespace settings::core
