#pragma once

#include "vorlan/services.hpp"

namespace vorlan {

// The real services, with an observer that sees each call before it is made: for programs that record what the
// library asks of its host, and for tests that make a call fail. A call reads as one of these lines:
//
//     context | root | node NAME | parent NAME | get NAME @LEVEL | set NAME=VALUE @LEVEL | listen NAME
//     install root | support package root | exists PATH | canonical PATH
class ObservedServices : public Services {
public:
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
        const settings::core::Settings& node, const settings::core::ChangeHandler& handler) override;
    fl::ustring installRoot() override;
    fl::ustring supportPackageRoot() override;
    bool exists(const fl::ustring& path) override;
    fl::ustring canonical(const fl::ustring& path) override;

protected:
    // Called before each call, on its thread. Returns whether the call is made; if not, the call returns a default
    // value (null, empty, false or context 0). An exception is thrown by the call.
    virtual bool observe(const std::string& call) = 0;

private:
    template <class Answer, class... Parameters>
    Answer answer(const std::string& call, Answer (Services::*real)(Parameters...), const auto&... arguments);

    Services m_real;
};

}  // namespace vorlan
