#pragma once

#include "fuzz/target.hpp"
#include "support/Host.hpp"

namespace fuzz {

using support::level;

// A host of which every record is logged, so that texts of any bytes go through the log as well.
struct Host : support::Host {
    support::RecordLog log;
    const std::string root = folder() / "vorlan/help";  // the default root

    void forgetRecords() {
        check(!log.take().empty(), "whatever happens is logged");
        calls();
    }
};

}  // namespace fuzz
