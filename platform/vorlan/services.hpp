#pragma once

#include <boost/shared_ptr.hpp>
#include <memory>
#include <string>

#include "fl/ustring.hpp"
#include "foundation/msg_svc/eventmgr.hpp"
#include "settings/core.hpp"
#include "vlutil/contextmgr.hpp"

namespace vorlan {

// The one seam between the layer and the outside: each call of the layer's interface that needs the host arrives here
// once. These are the real services. Derive, override what shall fail or be counted, and call the base to forward.
// Any thread may call any of them at any time.
class Services {
public:
    Services() = default;
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;
    virtual ~Services();

    virtual vlutil::contextmgr::RtxID currentContext();
    virtual boost::shared_ptr<settings::core::Settings> settingsRoot(const vlutil::contextmgr::RtxID& context);
    virtual boost::shared_ptr<settings::core::Settings> settingsByFullName(const settings::core::Settings& node,
                                                                           const std::string& fullName);
    virtual boost::shared_ptr<settings::core::Settings> parent(const settings::core::Settings& node);
    virtual fl::ustring getSetting(const settings::core::Settings& node, const std::string& name,
                                   const std::string& level);
    virtual void setSetting(const settings::core::Settings& node, const std::string& name, const fl::ustring& value,
                            const std::string& level);
    virtual std::unique_ptr<foundation::msg_svc::eventmgr::Connection> addListener(
        const settings::core::Settings& node, const settings::core::ChangeHandler& handler);

    virtual fl::ustring installRoot();
    virtual fl::ustring supportPackageRoot();

    virtual bool exists(const fl::ustring& path);
    virtual fl::ustring canonical(const fl::ustring& path);
};

// The services in use: the real ones until useServices names others.
Services& services() noexcept;

// Puts other services in use and returns the former ones. Nothing is owned: whoever calls this keeps `replacement`
// alive until it has put others in its place and no call is under way.
Services& useServices(Services& replacement) noexcept;

}  // namespace vorlan
