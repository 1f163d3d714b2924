#include "host.hpp"

#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "Failure.hpp"
#include "docroot_cache/setting_names.hpp"
#include "fl/filesystem.hpp"
#include "fl/i18n.hpp"
#include "log_sink.hpp"
#include "options.hpp"
#include "terminal_text.hpp"
#include "vorlan/host.hpp"
#include "vorlan/services.hpp"

namespace app {

namespace {

namespace setting_names = docroot_cache::setting_names;

// Why the file can't be read; empty if it can, or if there is none.
std::string obstacle(const std::string& path) {
    std::error_code error;
    const auto type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::regular) {
        return std::ifstream(path) ? "" : "permission denied";
    }
    if (type == std::filesystem::file_type::none) {
        return error == std::errc::permission_denied ? "permission denied" : "";
    }
    const bool isThere = type != std::filesystem::file_type::not_found;
    return type == std::filesystem::file_type::directory ? "is a folder" : isThere ? "is not a regular file" : "";
}

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
    // Set in any case, since this throws if the default can't be found: the library would go on with an empty root.
    vorlan::setInstallRoot(options.installRoot ? fl::i18n::to_ustring(*options.installRoot)
                                               : fl::filesystem::get_install_path());
    vorlan::setSupportPackageRoot(supportPackageRoot(options));
    // Never destroyed, because events may be delivered until the process ends.
    vorlan::useServices(*new Services(fl::i18n::to_ustring(options.catalogue.value_or(""))));
    setUserSetting(setting_names::docRoot, options.docRoot);
    setUserSetting(setting_names::docDataRoot, options.docDataRoot);
}

}  // namespace app
