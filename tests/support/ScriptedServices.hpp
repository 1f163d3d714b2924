#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "vorlan/services.hpp"

namespace support {

// What an action throws to have its call answered with null or empty.
struct Nothing {};

// The host's services with a script: every call is recorded as one line, then does what was planned for it, and
// otherwise goes on to the real services. In use from creation to the end of its life. The lines read
//
//     context | root | node NAME | parent NAME | get NAME | set NAME=VALUE @LEVEL | listen NAME
//     install root | support package root | exists PATH | canonical PATH
class ScriptedServices : public vorlan::Services {
public:
    ScriptedServices();
    ScriptedServices(const ScriptedServices&) = delete;
    ScriptedServices& operator=(const ScriptedServices&) = delete;
    ~ScriptedServices() override;

    // Runs `action` on each call whose line starts with `start`; what it throws, save Nothing, comes out of the call.
    void on(const std::string& start, std::function<void()> action);

    // Calls the latest listener of that setting, as if the setting had changed, on this thread. What it throws comes
    // out.
    void deliver(const std::string& fullName);

    // Forgets the plans.
    void reset();

    // The lines that start with `start`, oldest first, all of them forgotten.
    std::vector<std::string> take(const std::string& start = "");

    vlutil::contextmgr::RtxID currentContext() override;
    boost::shared_ptr<settings::core::Settings> settingsRoot(const vlutil::contextmgr::RtxID& context) override;
    boost::shared_ptr<settings::core::Settings> settingsByFullName(const settings::core::Settings& node,
                                                                   const std::string& fullName) override;
    boost::shared_ptr<settings::core::Settings> parent(const settings::core::Settings& node) override;
    fl::ustring getSetting(const settings::core::Settings& node, const std::string& name,
                           const std::string& level) override;
    void setSetting(const settings::core::Settings& node, const std::string& name, const fl::ustring& value,
                    const std::string& level) override;
    std::unique_ptr<foundation::msg_svc::eventmgr::Connection> addListener(
        const settings::core::Settings& node, const vorlan::ChangeHandler& handler) override;
    fl::ustring installRoot() override;
    fl::ustring supportPackageRoot() override;
    bool exists(const fl::ustring& path) override;
    fl::ustring canonical(const fl::ustring& path) override;

private:
    template <class Forward>
    auto answer(const std::string& line, Forward forward) -> decltype(forward());

    // Records the call and gives what is planned for it.
    std::vector<std::function<void()>> arrive(const std::string& line);

    std::mutex m_mutex;
    std::vector<std::string> m_lines;
    std::map<std::string, std::function<void()>> m_plans;       // by start of line
    std::map<std::string, std::function<void()>> m_deliveries;  // to the latest listener, by setting
    vorlan::Services& m_former;
};

}  // namespace support
