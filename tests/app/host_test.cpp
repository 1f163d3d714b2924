#include <gtest/gtest.h>

#include "check/check.hpp"
#include "host.hpp"
#include "options.hpp"
#include "support/Host.hpp"

namespace {

TEST(Host, LetsCheckWriteNothing) {
    support::Host host({support::withCatalogue("vorlan/help/docset.json", {})});
    host.on("set ", [] { throw support::Broken(); });
    app::Options options;
    options.command = app::Command::checkCatalogues;
    options.installRoot = host.expand("$T/vorlan");
    app::configureHost(options);
    EXPECT_EQ(app::checkCatalogues(options), app::ExitStatus::done);
}

}  // namespace
