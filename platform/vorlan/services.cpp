#include "vorlan/services.hpp"

#include <sys/stat.h>

#include <atomic>
#include <boost/make_shared.hpp>
#include <filesystem>

#include "fl/i18n.hpp"
#include "vorlan/HostState.hpp"

namespace vorlan {

using settings::core::Settings;

namespace {

Services s_realServices;
std::atomic<Services*> s_services = &s_realServices;

std::string joinNames(const std::string& node, const std::string& name) {
    return node.empty() ? name : node + "." + name;
}

}  // namespace

Services& services() noexcept {
    return *s_services;
}

Services& useServices(Services& replacement) noexcept {
    return *s_services.exchange(&replacement);
}

Services::~Services() = default;

vlutil::contextmgr::RtxID Services::currentContext() {
    return HostState::instance().context();
}

boost::shared_ptr<Settings> Services::settingsRoot(const vlutil::contextmgr::RtxID& context) {
    const auto tree = HostState::instance().settings(context);
    return tree ? boost::make_shared<Settings>(tree, std::string()) : nullptr;
}

boost::shared_ptr<Settings> Services::settingsByFullName(const Settings& node, const std::string& fullName) {
    return boost::make_shared<Settings>(node.getTree(), fullName);
}

boost::shared_ptr<Settings> Services::parent(const Settings& node) {
    const std::string& name = node.getFullName();
    if (name.empty()) {
        return nullptr;
    }
    const std::size_t dot = name.rfind('.');
    return boost::make_shared<Settings>(node.getTree(), dot == std::string::npos ? std::string() : name.substr(0, dot));
}

fl::ustring Services::getSetting(const Settings& node, const std::string& name, const std::string& level) {
    return node.getTree()->get(joinNames(node.getFullName(), name), level);
}

void Services::setSetting(const Settings& node, const std::string& name, const fl::ustring& value,
                          const std::string& level) {
    node.getTree()->set(joinNames(node.getFullName(), name), value, level);
}

std::unique_ptr<foundation::msg_svc::eventmgr::Connection> Services::addListener(
    const Settings& node, const settings::core::ChangeHandler& handler) {
    return node.getTree()->addListener(node.getFullName(), handler);
}

fl::ustring Services::installRoot() {
    if (auto path = HostState::instance().installRoot()) {
        return *std::move(path);
    }
    return fl::i18n::to_ustring(std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path().native());
}

fl::ustring Services::supportPackageRoot() {
    return HostState::instance().supportPackageRoot();
}

bool Services::exists(const fl::ustring& path) {
    const std::string narrow = fl::i18n::to_string(path);
    struct stat entry = {};
    return narrow.find('\0') == std::string::npos && ::stat(narrow.c_str(), &entry) == 0;
}

fl::ustring Services::canonical(const fl::ustring& path) {
    if (path.find(u'\0') != fl::ustring::npos) {
        throw std::filesystem::filesystem_error("a path can't hold a NUL", fl::i18n::to_string(path),
                                                std::make_error_code(std::errc::no_such_file_or_directory));
    }
    return fl::i18n::to_ustring(std::filesystem::canonical(fl::i18n::to_string(path)).native());
}

}  // namespace vorlan
