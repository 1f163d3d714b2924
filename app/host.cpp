#include "host.hpp"

#include "fl/i18n.hpp"
#include "log_sink.hpp"
#include "options.hpp"
#include "vorlan/host.hpp"

namespace app {

namespace {

void setUserSetting(const char* fullName, const std::optional<std::string>& value) {
    if (value) {
        vorlan::setSetting(fullName, fl::i18n::to_ustring(*value), "user");
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
    setUserSetting("vorlan.help.DocRoot", options.docRoot);
    setUserSetting("vorlan.help.DocDataRoot", options.docDataRoot);
}

}  // namespace app
