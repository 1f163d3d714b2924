#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <thread>

#include "doc_products_shared/DocProductCacheManager.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "support/ScriptedServices.hpp"
#include "vorlan/host.hpp"

namespace {

using namespace doc_products_shared;
using fl::filesystem::upath;

constexpr int s_turns = 200;

void runTogether(const std::vector<std::function<void()>>& tasks) {
    std::vector<std::thread> threads;
    for (const auto& task : tasks) {
        threads.emplace_back(task);
    }
    for (auto& thread : threads) {
        thread.join();
    }
}

TEST(Threads, ReadersWritersAndEventsComeToRestInAgreement) {
    vorlan::setInstallRoot(u"/start");
    Docroot& docroot = Docroot::getInstance();
    const auto sets = [&](const char16_t* path) {
        return [&docroot, path] {
            for (int turn = 0; turn < s_turns; ++turn) {
                docroot.setDocroot(upath(path));
                docroot.setDocDataRoot(upath(path));
            }
        };
    };
    const auto reads = [&] {
        for (int turn = 0; turn < s_turns; ++turn) {
            const fl::ustring root = docroot.getDocroot().native();
            EXPECT_TRUE(root == u"/one" || root == u"/two" || root == u"/three" || root == u"/start/help");
        }
    };
    const auto changesOutside = [] {
        for (int turn = 0; turn < s_turns; ++turn) {
            vorlan::setSetting("vorlan.help.DocRoot", turn % 2 == 0 ? u"/three" : u"/one", "session");
        }
    };
    runTogether({sets(u"/one"), sets(u"/two"), reads, changesOutside});
    vorlan::waitForEvents();
    const fl::ustring settled = docroot.getDocroot().native();
    vorlan::waitForEvents();
    EXPECT_EQ(vorlan::settingAt("vorlan.help.DocRoot", "session"), settled);
    EXPECT_EQ(docroot.getDocroot().native(), settled);
}

TEST(Threads, FailedConstructionWaitsForAnEventThatIsBeingHandled) {
    support::ScriptedServices services;
    std::promise<void> handling;
    services.on("parent", [&] {
        handling.set_value();
        std::this_thread::sleep_for(
            std::chrono::milliseconds(50));  // time to take the cache away, were it not for us
    });
    services.on("listen vorlan.help.DocDataRoot", [&] {
        vorlan::setSetting("vorlan.help.DocRoot", u"/late", "session");
        handling.get_future().wait();
        throw 7;
    });
    EXPECT_THROW(Docroot::getInstance(), int);
    EXPECT_EQ(services.take("set DocRoot=/late").size(), 1U);
}

TEST(Threads, ManagerServesAllOfThemOneCollector) {
    vorlan::setInstallRoot(u"/start");
    std::vector<std::shared_ptr<DocProductCollector>> collectors(4);
    std::vector<std::function<void()>> requests;
    for (auto& collector : collectors) {
        requests.emplace_back([&collector] {
            for (int turn = 0; turn < s_turns; ++turn) {
                collector = DocProductCacheManager::getInstance().getDocProductCache();
                EXPECT_TRUE(collector->getInstalledTopLevelDocProducts()->empty());
            }
        });
    }
    runTogether(requests);
    EXPECT_EQ(collectors, std::vector(4, DocProductCacheManager::getInstance().getDocProductCache()));
}

}  // namespace
