#include "host.hpp"

#include <cstdlib>
#include <filesystem>
#include <utility>

#include "Failure.hpp"
#include "docroot_cache/setting_names.hpp"
#include "fl/filesystem.hpp"
#include "fl/i18n.hpp"
#include "log_sink.hpp"
#include "obstacle.hpp"
#include "options.hpp"
#include "terminal_text.hpp"
#include "vorlan/host.hpp"
#include "vorlan/services.hpp"

namespace app {

namespace {

namespace setting_names = docroot_cache::setting_names;

void refuseUnreadable(const std::string& path) {
    if (const std::string reason = obstacle(path); !reason.empty()) {
        throw Failure(ExitStatus::failure, printable("Can't read " + path + ": " + reason) + "\n");
    }
}

bool isNamed(const fl::ustring& path, const fl::ustring& name) {
    return path == name || path.ends_with(u'/' + name);
}

// Refuses a catalogue or a docroot.txt that isn't a readable regular file. The library tests whether such a file exists
// before it reads it, and here that test throws Failure. The library itself takes an unreadable file as empty and reads
// an endless one until memory runs out.
class Services : public vorlan::Services {
public:
    explicit Services(fl::ustring catalogue) : m_catalogue(std::move(catalogue)) {}

    bool exists(const fl::ustring& path) override {
        if (path == m_catalogue || isNamed(path, u"docset.json") || isNamed(path, u"docroot.txt")) {
            refuseUnreadable(fl::i18n::to_string(path));
        }
        return vorlan::Services::exists(path);
    }

private:
    const fl::ustring m_catalogue;
};

// The folder that the packager chose, from the program's own.
std::filesystem::path defaultInstallRoot() {
    const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const auto root = (folder / DOCPRODUCTS_INSTALL_ROOT).lexically_normal();
    return root.has_filename() ? root : root.parent_path();  // "/usr" for "/usr/bin/..", not "/usr/"
}

// What the option says, or else the variable VORLAN_ROOT unless it is empty, or else the default.
std::string installRoot(const Options& options) {
    const char* const variable = std::getenv("VORLAN_ROOT");
    const bool isSet = variable != nullptr && *variable != '\0';
    return options.installRoot ? *options.installRoot : isSet ? variable : defaultInstallRoot().string();
}

// Never empty, because the library would then look for documentation below the working directory.
fl::ustring supportPackageRoot(const Options& options) {
    return options.supportPackageRoot
               ? fl::i18n::to_ustring(*options.supportPackageRoot)
               : (fl::filesystem::upath(fl::filesystem::get_install_path()) / u"support-packages").native();
}

void setUserSetting(const std::string& name, const std::optional<std::string>& value) {
    if (value) {
        vorlan::setSetting(setting_names::helpGroup + ("." + name), fl::i18n::to_ustring(*value), "user");
    }
}

}  // namespace

void configureHost(const Options& options) {
    installLogSink(options.log);
    vorlan::setInstallRoot(fl::i18n::to_ustring(installRoot(options)));
    vorlan::setSupportPackageRoot(supportPackageRoot(options));
    // Never destroyed, because events may be delivered until the process ends.
    vorlan::useServices(*new Services(fl::i18n::to_ustring(options.catalogue.value_or(""))));
    setUserSetting(setting_names::docRoot, options.docRoot);
    setUserSetting(setting_names::docDataRoot, options.docDataRoot);
}

}  // namespace app
