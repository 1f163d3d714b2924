#include <dlfcn.h>

#include <future>
#include <thread>

#include "support/Allocations.hpp"
#include "support/Host.hpp"

namespace {

bool isLoaded() {
    void* const library = dlopen("libdocproducts.so.1", RTLD_NOW | RTLD_NOLOAD);
    return library != nullptr && dlclose(library) == 0;
}

// Loads the library through a plug-in that links it, uses it, and unloads it while an event is being handled.
void loadAndUnload() {
    support::Host host;
    vorlan::setInstallRoot(fl::i18n::to_ustring(EXAMPLES "/vorlan"));
    void* const plugin = dlopen(PLUGIN, RTLD_NOW | RTLD_LOCAL);
    ASSERT_TRUE(plugin != nullptr && isLoaded());
    const auto installedProducts = reinterpret_cast<std::size_t (*)()>(dlsym(plugin, "installedProducts"));
    EXPECT_EQ(installedProducts(), 11U);
    host.set("DocRoot", "/nowhere");
    host.set("DocDataRoot", "/nowhere");
    EXPECT_EQ(installedProducts(), 0U);
    const std::uint64_t delivered = vorlan::deliveredEvents();
    std::promise<void> handling;
    host.on("parent", [&] {
        handling.set_value();
        std::this_thread::sleep_for(std::chrono::milliseconds(2));  // enough for a dlclose that doesn't wait
    });
    vorlan::setSetting("vorlan.help.DocRoot", u"/handled", "session");
    handling.get_future().wait();
    ASSERT_EQ(dlclose(plugin), 0);
    EXPECT_FALSE(isLoaded());
    host.set("DocRoot", "/unheard");
    EXPECT_EQ(vorlan::deliveredEvents(), delivered + 1);
}

TEST(Unloading, WaitsForARunningListenerAndLeavesNothing) {
    support::RecordLog log;
    long before = 0;
    for (int turn = 1; turn <= 100; ++turn) {
        loadAndUnload();
        EXPECT_NE(log.take().find("> "), std::string::npos);
        before = turn == 20 ? support::s_liveBlocks.load() : before;
    }
    EXPECT_LT(support::s_liveBlocks, before + 40) << "more than one block is lost in every second turn";
}

}  // namespace
