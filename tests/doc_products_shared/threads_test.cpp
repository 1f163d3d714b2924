#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <future>
#include <iostream>
#include <mutex>
#include <random>
#include <set>
#include <thread>

#include "doc_products_shared/DocProductCacheManager.hpp"
#include "doc_products_shared/DocSetJsonParser.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "docroot_cache/DocrootCache.hpp"
#include "fl/i18n.hpp"
#include "settings/in_vorlan.hpp"
#include "support/ScriptedServices.hpp"
#include "support/TemporaryFolder.hpp"
#include "vorlan/host.hpp"

namespace {

using namespace doc_products_shared;
using namespace std::chrono_literals;
using fl::filesystem::upath;
using settings::core::SettingsValueChangeEvent;

const std::string s_docRoot = "vorlan.help.DocRoot";
const std::string s_docDataRoot = "vorlan.help.DocDataRoot";

// Ends the process unless the test ends in time.
class Threads : public testing::Test {
    static void watch(const std::stop_token& stop) {
        std::mutex mutex;
        std::condition_variable_any never;
        std::unique_lock lock(mutex);
        never.wait_for(lock, stop, 110s, [] { return false; });
        if (!stop.stop_requested()) {
            std::fputs("a deadlock, or close to one\n", stderr);
            std::abort();
        }
    }

    const std::jthread m_watchdog{watch};
};

// Runs the task on so many threads at once, each of which gets its number.
void runTogether(int count, const std::function<void(int)>& task) {
    std::vector<std::jthread> threads;
    for (int number = 0; number < count; ++number) {
        threads.emplace_back(task, number);
    }
}

// Hears of a setting's changes and keeps what it read at the latest.
class Witness {
public:
    explicit Witness(const std::string& fullName) {
        const auto root = settings::in_vorlan::getSettingsRoot({});
        m_connection = settings::in_vorlan::addListener<SettingsValueChangeEvent>(
            root->getSettingsByFullName(fullName), [this, root, fullName](const auto&) {
                m_latest = root->get<fl::ustring>(fullName, "");
                ++m_events;
            });
    }

    // What the setting held when its last event came; belongs behind vorlan::waitForEvents.
    const fl::ustring& latest() const { return m_latest; }
    int events() const { return m_events; }

private:
    fl::ustring m_latest;
    int m_events = 0;
    std::unique_ptr<foundation::msg_svc::eventmgr::Connection> m_connection;
};

void expectAgreement(const Witness& docRoot, const Witness& docDataRoot) {
    vorlan::waitForEvents();
    const fl::ustring root = Docroot::getInstance().getDocroot().native();
    const fl::ustring dataRoot = Docroot::getInstance().getDocDataRoot().native();
    vorlan::waitForEvents();
    EXPECT_EQ(vorlan::settingAt(s_docRoot, "session"), root);
    EXPECT_EQ(vorlan::settingAt(s_docDataRoot, "session"), dataRoot);
    EXPECT_EQ(docRoot.latest(), root);
    EXPECT_EQ(docDataRoot.latest(), dataRoot);
}

class Crowd {
public:
    Crowd() {
        m_folder.write("marked/docCatalog/dataroot.txt");
        m_folder.write("one/docset.json",
                       R"({"documentation_set": {"format": "", "release": "", "product_list": []}})");
        m_written.push_back(fl::i18n::to_ustring(m_folder.path() / "marked"));
        m_catalogue = upath(fl::i18n::to_ustring(m_folder.path() / "one" / "docset.json"));
    }

    // One operation of a thread that draws them by lot.
    void act(std::minstd_rand& lot) {
        const fl::ustring& path = m_written[lot() % m_written.size()];
        Docroot& docroot = Docroot::getInstance();
        const DocProductCacheManager& manager = DocProductCacheManager::getInstance();
        switch (lot() % 10) {
            case 0:
                return docroot.setDocroot(upath(path));
            case 1:
                return docroot.setDocDataRoot(upath(path));
            case 2:
                return vorlan::setSetting(s_docRoot, path, "session");
            case 3:
                return vorlan::setSetting(s_docDataRoot, path, "session");
            case 4:
                return manager.setDocsetJsonFile(lot() % 2 == 0 ? m_catalogue : upath());
            case 5:
                EXPECT_TRUE(manager.getDocProductCache()->getInstalledTopLevelDocProducts()->empty());
                return;
            case 6:
                return expectWritten(docroot.getDocDataRoot());
            default:
                return expectWritten(docroot.getDocroot());
        }
    }

private:
    void expectWritten(const upath& root) const {
        EXPECT_NE(std::find(m_written.begin(), m_written.end(), root.native()), m_written.end());
    }

    support::TemporaryFolder m_folder;
    std::vector<fl::ustring> m_written = {u"/start/help", u"/one", u"/two", u"/three"};
    upath m_catalogue;
};

TEST_F(Threads, EightOfThemComeToRestInAgreement) {
    constexpr int threads = 8, turns = 25'000;
    vorlan::setInstallRoot(u"/start");
    const Witness docRoot(s_docRoot), docDataRoot(s_docDataRoot);
    Docroot::getInstance();
    Crowd crowd;
    runTogether(threads, [&](int number) {
        std::minstd_rand lot(static_cast<unsigned>(number) + 1);
        for (int turn = 0; turn < turns; ++turn) {
            crowd.act(lot);
        }
    });
    expectAgreement(docRoot, docDataRoot);
    EXPECT_GE(docRoot.events(), 100);
    EXPECT_GE(docDataRoot.events(), 100);
}

TEST_F(Threads, BurstOfOutsideChangesIsEchoedAndComesToRest) {
    constexpr int changes = 10'000;
    vorlan::setInstallRoot(u"/start");
    const Witness docRoot(s_docRoot), docDataRoot(s_docDataRoot);
    Docroot::getInstance();
    Docroot::getInstance().setDocDataRoot(upath(u"/data"));
    vorlan::waitForEvents();
    support::ScriptedServices services;
    for (int change = 0; change < changes; ++change) {
        vorlan::setSetting(s_docRoot, fl::i18n::to_ustring(std::to_string(change)), "session");
    }
    expectAgreement(docRoot, docDataRoot);
    EXPECT_GE(docRoot.events(), changes);
    EXPECT_GE(services.take("set DocRoot=").size(), static_cast<std::size_t>(changes));
}

TEST_F(Threads, ServicesComeAndGoWhileTheirEventsAreDelivered) {
    const std::jthread host([&](const std::stop_token& stop) {
        for (int change = 0; !stop.stop_requested(); ++change) {
            vorlan::setSetting(s_docRoot, change % 2 == 0 ? u"/one" : u"/two", "session");
        }
    });
    while (vorlan::deliveredEvents() < 1000) {
        Docroot docroot;
        EXPECT_FALSE(docroot.getDocroot().empty());
    }
}

TEST_F(Threads, FailedConstructionWaitsForAnEventThatIsBeingHandled) {
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

// A catalogue of so many products, padded to be read in several pieces.
std::string catalogue(int products) {
    std::string list;
    for (int product = 0; product < products; ++product) {
        list += std::string(product == 0 ? "" : ",") + R"({"product": {"display_name": "A", "help_location": "",)" +
                R"("short_name": "", "basecode": "", "product_family_list": []}})" + std::string(20'000, ' ');
    }
    return R"({"documentation_set": {"format": "", "release": "", "product_list": [)" + list + "]}}";
}

// Reads 2,000 times while the host does something to the file, and on until there have been two outcomes.
std::set<std::string> readMeanwhile(const std::function<std::string()>& read,
                                    const std::function<void(int)>& change) {
    std::set<std::string> outcomes;
    const std::jthread host([&](const std::stop_token& stop) {
        for (int turn = 0; !stop.stop_requested(); ++turn) {
            change(turn);
        }
    });
    for (int turn = 0; turn < 2000 || outcomes.size() < 2; ++turn) {
        try {
            outcomes.insert(read());
        } catch (const std::runtime_error& e) {
            outcomes.insert(e.what());
        }
    }
    return outcomes;
}

// Puts another file in the place of one.
void swap(const support::TemporaryFolder& folder, const std::string& name, const std::string& content) {
    folder.write("next", content);
    std::filesystem::rename(folder.path() / "next", folder.path() / name);
}

TEST_F(Threads, CatalogueThatIsSwappedIsOneOrTheOtherAndOneThatShrinksMayBeRefused) {
    const support::TemporaryFolder folder;
    const std::string file = folder.path() / "docset.json";
    const auto parse = [&] {
        return std::to_string(DocSetJsonParser().parse(fl::i18n::to_ustring(file)).getTopLevelProducts().size());
    };
    std::cerr.rdbuf(nullptr);
    folder.write("docset.json", catalogue(1));
    const auto swapped =
        readMeanwhile(parse, [&](int turn) { swap(folder, "docset.json", catalogue(1 + turn % 2)); });
    EXPECT_EQ(swapped, (std::set<std::string>{"1", "2"}));
    folder.write("docset.json", catalogue(3));
    const auto shrunk = readMeanwhile(parse, [&](int turn) {
        folder.write("docset.json", catalogue(3));
        std::filesystem::resize_file(file, std::filesystem::file_size(file) / (1 + static_cast<unsigned>(turn % 2)));
    });
    EXPECT_EQ(shrunk, (std::set<std::string>{"3", "Error while parsing " + file}));
}

TEST_F(Threads, RedirectThatIsSwappedIsOneOrTheOther) {
    const support::TemporaryFolder folder;
    folder.makeFolder("help/one");
    folder.makeFolder("help/two");
    folder.write("help/docroot.txt", "one");
    vorlan::setInstallRoot(fl::i18n::to_ustring(folder.path()));
    vorlan::closeSettings();
    const docroot_cache::DocrootCache cache;
    const auto resolve = [&] { return folder.generic(fl::i18n::to_string(cache.getInitialDocroot().native())); };
    const auto swapped =
        readMeanwhile(resolve, [&](int turn) { swap(folder, "help/docroot.txt", turn % 2 == 0 ? "two" : "one"); });
    EXPECT_EQ(swapped, (std::set<std::string>{"$T/help/one", "$T/help/two"}));
}

}  // namespace
