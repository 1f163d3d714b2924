#include <atomic>
#include <future>
#include <random>
#include <thread>

#include "foundation/log/basic_diagnostic_logger.hpp"
#include "settings/in_vorlan.hpp"
#include "support/library.hpp"

namespace {

using Path = fl::filesystem::upath;

const std::string s_docRoot = "vorlan.help.DocRoot", s_docDataRoot = "vorlan.help.DocDataRoot";

// What any thread may call at any time: first in the library, then in its host.
const std::function<void(const Path&)> s_operations[] = {
    [](const Path&) { EXPECT_FALSE(Docroot::getInstance().getDocroot().empty()); },
    [](const Path&) { EXPECT_FALSE(Docroot::getInstance().getDocDataRoot().empty()); },
    [](const Path& path) { Docroot::getInstance().setDocroot(path); },
    [](const Path& path) { Docroot::getInstance().setDocDataRoot(path); },
    [](const Path& path) { DocProductCacheManager::getInstance().setDocsetJsonFile(path); },
    [](const Path&) {
        const auto collector = DocProductCacheManager::getInstance().getDocProductCache();
        EXPECT_TRUE(collector->getInstalledTopLevelDocProducts()->empty());
    },
    [](const Path& path) { vorlan::setSetting(s_docRoot, path.native(), "session"); },
    [](const Path& path) { vorlan::setSetting(s_docDataRoot, path.native(), "session"); },
    [](const Path&) {
        const auto root = settings::in_vorlan::getSettingsRoot({});
        const auto connection = settings::in_vorlan::addListener<settings::core::SettingsValueChangeEvent>(
            root->getSettingsByFullName(s_docRoot), [](const auto&) {});
        EXPECT_EQ(root->get<fl::ustring>(s_docRoot, "user"), vorlan::settingAt(s_docRoot, "user").value_or(u""));
    },
    [](const Path&) {
        vorlan::setInstallRoot(vorlan::services().installRoot());
        vorlan::setSupportPackageRoot(vorlan::services().supportPackageRoot());
        vorlan::setContext(vorlan::services().currentContext());
        vorlan::openSettings();
    },
    [](const Path&) {
        const foundation::log::basic_diagnostic_logger<char> logger("doc_products_shared");
        vorlan::setLevelMask("doc_products_shared", static_cast<unsigned>(vorlan::deliveredEvents() % 2 * 512));
    },
};

TEST(Threads, MayCallAnythingAtOnceAndEndInAgreement) {
    std::atomic<int> operations = 0;
    boost::log::core::get()->set_logging_enabled(false);
    Docroot::getInstance();
    std::vector<std::jthread> threads;
    for (unsigned number = 1; number <= 8; ++number) {
        threads.emplace_back([&operations, random = std::minstd_rand(number)]() mutable {
            while (operations++ < 200'000) {
                const Path path(fl::ustring(1 + random() % 3, u'n'));  // doesn't exist
                s_operations[random() % std::size(s_operations)](path);
            }
        });
    }
    threads.clear();
    vorlan::waitForEvents();
    const Path root = Docroot::getInstance().getDocroot(), dataRoot = Docroot::getInstance().getDocDataRoot();
    vorlan::waitForEvents();
    EXPECT_EQ(vorlan::settingAt(s_docRoot, "session"), root.native());
    EXPECT_EQ(vorlan::settingAt(s_docDataRoot, "session"), dataRoot.native());
    EXPECT_GE(vorlan::deliveredEvents(), 1000U);
}

TEST(Threads, FailedConstructionWaitsForARunningListenerAndLeavesNone) {
    Host host;
    std::promise<void> handling;
    host.on([&](const std::string& call) {
        if (call.starts_with("parent")) {
            handling.set_value();
            std::this_thread::sleep_for(std::chrono::milliseconds(50));  // enough for a destructor that doesn't wait
        } else if (call == "listen vorlan.help.DocDataRoot") {
            vorlan::setSetting(s_docRoot, u"/late", "session");
            handling.get_future().wait();
            throw 7;
        }
    });
    EXPECT_THROW(Docroot::getInstance(), int);
    EXPECT_EQ(host.calls({"set DocRoot=/late"}), "set DocRoot=/late @session\n");
    host.on({});
    const std::uint64_t delivered = vorlan::deliveredEvents();
    host.set("DocRoot", "/unheard");
    EXPECT_EQ(vorlan::deliveredEvents(), delivered);
    EXPECT_EQ(host.shown(Docroot::getInstance().getDocroot()), "/unheard");  // the instance is built again
}

}  // namespace
