#pragma once

#include <boost/function/function1.hpp>
#include <boost/shared_ptr.hpp>
#include <memory>
#include <string>

#include "fl/ustring.hpp"

namespace settings::core {

class SettingsTree;

// A handle to one node of a context's settings tree: the root, a group, or a setting. Nodes are addressed by full
// name, its parts joined with "."; the root's is empty. A handle exists whether or not anything is stored under its
// name, and keeps its tree alive.
//
// A setting holds text at up to three levels: "factory", "user" and "session", the highest. Any thread may use any
// handle. Every operation calls the host's services and throws what they throw; the real ones throw
// std::invalid_argument for any other level.
class Settings {
public:
    Settings(std::shared_ptr<SettingsTree> tree, std::string fullName);

    // The text of the setting `name` below this node: at that level, or with an empty level at the highest that has a
    // value, the empty text being a value like any other. Empty if there is none.
    template <class T>
    T get(const std::string& name, const std::string& level) const;

    // Stores the text at the level. If that changes the result of a read with an empty level, the setting's listeners
    // are called, later and on another thread.
    template <class T>
    void set(const std::string& name, const T& value, const std::string& level);

    // The node of that full name, from the root.
    boost::shared_ptr<Settings> getSettingsByFullName(const std::string& fullName) const;

    // The node above; null for the root.
    boost::shared_ptr<Settings> getParent() const;

    const std::string& getFullName() const noexcept { return m_fullName; }
    const std::shared_ptr<SettingsTree>& getTree() const noexcept { return m_tree; }

private:
    std::shared_ptr<SettingsTree> m_tree;
    std::string m_fullName;
};

template <>
fl::ustring Settings::get<fl::ustring>(const std::string& name, const std::string& level) const;

template <>
void Settings::set<fl::ustring>(const std::string& name, const fl::ustring& value, const std::string& level);

// Reports that the value of a setting has changed. It holds no value: the listener reads the present one.
class SettingsValueChangeEvent {
public:
    explicit SettingsValueChangeEvent(boost::shared_ptr<Settings> subject);
    virtual ~SettingsValueChangeEvent();

    // The node of the changed setting.
    virtual const boost::shared_ptr<Settings>& getSubject() const;

private:
    boost::shared_ptr<Settings> m_subject;
};

// What is called when the value of a setting has changed.
using ChangeHandler = boost::function1<void, const SettingsValueChangeEvent&>;

}  // namespace settings::core
