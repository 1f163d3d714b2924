#include "host.hpp"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <thread>
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
using fl::i18n::to_string;

bool isNamed(const fl::ustring& path, const fl::ustring& name) {
    return path == name || path.ends_with(u'/' + name);
}

// Refuses a catalogue or a docroot.txt that isn't a readable regular file. The library tests whether such a file exists
// before it reads it, and here that test throws Failure. The library itself takes an unreadable file as empty and reads
// an endless one until memory runs out.
//
// Records the calls that find the roots, the catalogue and the products. The command check writes no setting, so a
// failing write can't keep it from its answer.
class Services : public vorlan::Services {
public:
    explicit Services(const Options& options)
        : m_catalogue(fl::i18n::to_ustring(options.catalogue.value_or(""))),
          m_isRecording(options.explains()),
          m_isReadOnly(options.command == Command::checkCatalogues) {}

    std::vector<HostCall> takeCalls() { return std::exchange(m_calls, {}); }

    // Listeners ask on another thread, which isn't recorded.
    void record(HostCall call) {
        if (m_isRecording && std::this_thread::get_id() == m_thread) {
            m_calls.push_back(std::move(call));
        }
    }

    fl::ustring getSetting(const settings::core::Settings& node, const std::string& name,
                           const std::string& level) override {
        fl::ustring value = m_former.getSetting(node, name, level);
        record({HostCall::Kind::getSetting, to_string(value)});
        return value;
    }

    void setSetting(const settings::core::Settings& node, const std::string& name, const fl::ustring& value,
                    const std::string& level) override {
        m_isReadOnly ? void() : m_former.setSetting(node, name, value, level);
    }

    fl::ustring supportPackageRoot() override {
        record({HostCall::Kind::supportPackageRoot});
        return m_former.supportPackageRoot();
    }

    fl::ustring installRoot() override {
        record({HostCall::Kind::installRoot});
        return m_former.installRoot();
    }

    bool exists(const fl::ustring& path) override {
        if (path == m_catalogue || isNamed(path, u"docset.json") || isNamed(path, u"docroot.txt")) {
            refuseUnreadable(to_string(path));
        }
        const bool answer = m_former.exists(path);
        if (m_isRecording) {
            record({HostCall::Kind::exists, to_string(path), answer});
        }
        return answer;
    }

private:
    void refuseUnreadable(const std::string& path) {
        if (const std::string reason = obstacle(path); !reason.empty()) {
            record({HostCall::Kind::exists, path, true});
            throw Failure(ExitStatus::failure, printable("Can't read " + path + ": " + reason) + "\n");
        }
    }

    const fl::ustring m_catalogue;
    const bool m_isRecording;
    const bool m_isReadOnly;
    vorlan::Services& m_former = vorlan::services();
    const std::thread::id m_thread = std::this_thread::get_id();
    std::vector<HostCall> m_calls;
};

// Null until the host is configured. Never destroyed, because events may be delivered until the process ends.
Services* s_services = nullptr;

// Only the log tells what a docroot.txt holds.
void recordRedirect(const std::string& message) {
    constexpr std::string_view s_start = "Using docroot.txt to redirect docroot to ";
    if (message.starts_with(s_start)) {
        s_services->record({HostCall::Kind::redirect, message.substr(s_start.size())});
    }
}

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
    installLogSink(options.log, options.explains() ? recordRedirect : ObserveMessage());
    vorlan::setInstallRoot(fl::i18n::to_ustring(installRoot(options)));
    vorlan::setSupportPackageRoot(supportPackageRoot(options));
    s_services = new Services(options);
    vorlan::useServices(*s_services);
    setUserSetting(setting_names::docRoot, options.docRoot);
    setUserSetting(setting_names::docDataRoot, options.docDataRoot);
}

std::vector<HostCall> takeCalls() {
    return s_services->takeCalls();
}

}  // namespace app
