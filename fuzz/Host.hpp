#pragma once

#include "fl/i18n.hpp"
#include "fuzz/target.hpp"
#include "support/RecordLog.hpp"
#include "support/TemporaryFolder.hpp"
#include "vorlan/host.hpp"

namespace fuzz {

// An installation in a folder of its own, without support packages. Every record is logged, so that texts of any
// bytes go through the log as well.
struct Host {
    support::TemporaryFolder folder;
    support::RecordLog log{{foundation::log::level::note, foundation::log::level::detail,
                            foundation::log::level::error, foundation::log::level::enter,
                            foundation::log::level::exit}};
    const std::string root = folder.path() / "help";  // the default root

    Host() {
        vorlan::setInstallRoot(fl::i18n::to_ustring(folder.path()));
        vorlan::setSupportPackageRoot(fl::i18n::to_ustring(folder.path() / "packages"));
    }

    void forgetRecords() { check(!log.take().empty(), "whatever happens is logged"); }
};

}  // namespace fuzz
