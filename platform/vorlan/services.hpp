#pragma once

#include <boost/shared_ptr.hpp>
#include <memory>
#include <string>

#include "fl/ustring.hpp"
#include "foundation/msg_svc/eventmgr.hpp"
#include "settings/core.hpp"
#include "vlutil/contextmgr.hpp"

namespace vorlan {

// The one seam between the library and its host: every call of the layer's interface that needs the host arrives here
// exactly once. These are the real services, on the state of vorlan/host.hpp. A test derives from them, overrides
// what must fail or be counted, and calls the base to forward.
//
// Any thread may call any of these at any time. What an override throws reaches the library, which logs it or passes
// it on; without an override only what is documented here is thrown, and std::bad_alloc.
class Services {
public:
    Services() = default;
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;
    virtual ~Services();

    // The current runtime context.
    virtual vlutil::contextmgr::RtxID currentContext();

    // The root node of the context's settings; null if the context has none.
    virtual boost::shared_ptr<settings::core::Settings> settingsRoot(const vlutil::contextmgr::RtxID& context);

    // The node of that full name in the settings of `node`, whether or not anything is stored there. The library
    // takes null as no settings.
    virtual boost::shared_ptr<settings::core::Settings> settingsByFullName(const settings::core::Settings& node,
                                                                           const std::string& fullName);

    // The node above; null for the root.
    virtual boost::shared_ptr<settings::core::Settings> parent(const settings::core::Settings& node);

    // The text of the setting `name` below the node: at that level, or with an empty level at the highest that has a
    // value. Empty if there is none. Throws std::invalid_argument for an unknown level.
    virtual fl::ustring getSetting(const settings::core::Settings& node, const std::string& name,
                                   const std::string& level);

    // Stores the text at the level. Throws std::invalid_argument for an unknown level; nothing is stored then.
    virtual void setSetting(const settings::core::Settings& node, const std::string& name, const fl::ustring& value,
                            const std::string& level);

    // Registers a copy of the handler for changes of the node's setting. The registration ends with the result.
    virtual std::unique_ptr<foundation::msg_svc::eventmgr::Connection> addListener(
        const settings::core::Settings& node, const settings::core::ChangeHandler& handler);

    // The install root; may be empty. Until it is set, throws std::filesystem::filesystem_error if the running
    // program's path can't be read.
    virtual fl::ustring installRoot();

    // The support-package root; empty if there is none.
    virtual fl::ustring supportPackageRoot();

    // True if the path leads to something, of any kind. False if it can't be reached, for whatever reason.
    virtual bool exists(const fl::ustring& path);

    // The absolute path of an existing entry, without links, "." and "..". Throws std::filesystem::filesystem_error
    // if the entry can't be reached.
    virtual fl::ustring canonical(const fl::ustring& path);
};

// The services in use: the real ones until useServices replaces them.
Services& services() noexcept;

// Replaces the services in use and returns the former ones. Nothing is owned: the caller keeps `replacement` alive
// until it has been replaced and no call is under way.
Services& useServices(Services& replacement) noexcept;

}  // namespace vorlan
