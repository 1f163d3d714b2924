#pragma once

#include "fuzz/target.hpp"
#include "support/Host.hpp"

namespace fuzz {

using support::level;

// A host with all log levels on, so that arbitrary bytes pass through the log as well.
struct Host : support::Host {
    support::RecordLog log;
    const std::string root = folder() / "vorlan/help";  // the default root

    void forgetRecords() {
        check(!log.take().empty(), "every input is logged");
        calls();
    }
};

}  // namespace fuzz
