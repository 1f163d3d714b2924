#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <future>

#include "fl/filesystem.hpp"
#include "fl/i18n.hpp"
#include "settings/in_vorlan.hpp"
#include "vlutil/contextmgr.hpp"
#include "vorlan/host.hpp"

namespace {

using foundation::msg_svc::eventmgr::Connection;
using settings::core::SettingsValueChangeEvent;

boost::shared_ptr<settings::core::Settings> root() {
    return settings::in_vorlan::getSettingsRoot(vlutil::contextmgr::ContextRegistry::getRtxID());
}

std::unique_ptr<Connection> listen(const std::string& fullName,
                                   std::function<void(const SettingsValueChangeEvent&)> handler) {
    return settings::in_vorlan::addListener<SettingsValueChangeEvent>(root()->getSettingsByFullName(fullName),
                                                                      handler);
}

TEST(InstallRoot, LiesAboveTheProgramUntilItIsSet) {
    const auto program = std::filesystem::canonical("/proc/self/exe");
    EXPECT_EQ(fl::i18n::to_string(fl::filesystem::get_install_path()), program.parent_path().parent_path());
}

TEST(Connection, ListenerMayEndItself) {
    std::unique_ptr<Connection> connection;
    std::atomic<int> events = 0;
    connection = listen("group.name", [&](const auto&) {
        ++events;
        connection.reset();
        vorlan::waitForEvents();  // on this thread it returns at once
    });
    vorlan::setSetting("group.name", u"a", "user");
    vorlan::setSetting("group.name", u"b", "user");
    vorlan::waitForEvents();
    EXPECT_EQ(events, 1);
}

TEST(Connection, EndLetsGoOfTheHandlerThoughItsCallIsPending) {
    std::promise<void> gate;
    const auto holdsUp = listen("group.name", [&](const auto&) { gate.get_future().wait(); });
    const auto held = std::make_shared<int>();
    auto connection = listen("group.name", [held](const auto&) { FAIL(); });
    vorlan::setSetting("group.name", u"a", "user");
    connection.reset();
    EXPECT_EQ(held.use_count(), 1);
    gate.set_value();
}

TEST(ConnectionDeathTest, ListenerMayEndTheProcess) {
    static std::unique_ptr<Connection> s_connection;  // outlives the host's state
    const auto run = [] {
        s_connection = listen("group.name", [](const auto&) { std::exit(0); });
        vorlan::setSetting("group.name", u"a", "user");
        vorlan::waitForEvents();
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

}  // namespace
