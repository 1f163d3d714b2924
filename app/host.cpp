#include "host.hpp"

#include "docroot_cache/setting_names.hpp"
#include "fl/i18n.hpp"
#include "log_sink.hpp"
#include "options.hpp"
#include "vorlan/host.hpp"

namespace app {

namespace {

namespace setting_names = docroot_cache::setting_names;

void setUserSetting(const std::string& name, const std::optional<std::string>& value) {
    if (value) {
        vorlan::setSetting(setting_names::helpGroup + ("." + name), fl::i18n::to_ustring(*value), "user");
    }
}

}  // namespace

void configureHost(const Options& options) {
    installLogSink(options.log);
    if (options.installRoot) {
        vorlan::setInstallRoot(fl::i18n::to_ustring(*options.installRoot));
    }
    if (options.supportPackageRoot) {
        vorlan::setSupportPackageRoot(fl::i18n::to_ustring(*options.supportPackageRoot));
    }
    setUserSetting(setting_names::docRoot, options.docRoot);
    setUserSetting(setting_names::docDataRoot, options.docDataRoot);
}

}  // namespace app
