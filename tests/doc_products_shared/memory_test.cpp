#include <gtest/gtest.h>

#include <array>
#include <iostream>
#include <memory>
#include <set>

#include "doc_products_shared/DocProductCacheManager.hpp"
#include "doc_products_shared/DocSetJsonParser.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "docroot_cache/DocrootCache.hpp"
#include "fl/i18n.hpp"
#include "settings/in_vorlan.hpp"
#include "support/Allocations.hpp"
#include "support/RecordLog.hpp"
#include "support/TemporaryFolder.hpp"
#include "vorlan/host.hpp"
#include "vorlan/services.hpp"

namespace {

using namespace doc_products_shared;
using docroot_cache::DocrootCache;
using fl::filesystem::upath;
using settings::core::SettingsValueChangeEvent;
using support::Starvation;
using enum foundation::log::level;

const char* const s_catalogue = R"({"documentation_set": {"format": "1.0", "release": "7.2", "product_list": [
    {"product": {"display_name": "Alpha Kit, the longest of names", "help_location": "alphakit", "short_name": "ak",
                 "basecode": "AK", "product_family_list": [{"product_family": {"family": "kits"}}]}},
    {"product": {"display_name": "Beta Kit", "help_location": "beta", "short_name": "betakit", "basecode": "BK",
                 "alt_short_name": "bk", "status": "current", "product_family_list": []}},
    {"product": {"display_name": "Gamma Kit, on the web alone", "help_location": "alphakit", "short_name": "gk",
                 "basecode": "GK", "product_family_list": [{"product_family": {"family": "webonlyproducts"}}]}},
    {"product": {"display_name": "Delta Kit", "help_location": "absent", "short_name": "deltakit",
                 "basecode": "DK", "product_family_list": []}}]}})";

// An installation of two products out of four, whose documentation lies below the support packages, and a host that
// gives no thread of its own to change events: `change` delivers them here.
class Memory : public testing::Test, public vorlan::Services {
protected:
    Memory() {
        m_folder.write("packages/help/index.html");
        m_folder.write("packages/help/docset.json", s_catalogue);
        m_folder.write("packages/help/docCatalog/dataroot.txt");
        m_folder.write("packages/help/alphakit/doccenter.properties");
        m_folder.write("packages/help/docCatalog/products/betakit.properties");
        m_folder.write("other/docCatalog/dataroot.txt");
        vorlan::setInstallRoot(path("/vorlan").native());
        vorlan::setSupportPackageRoot(path("/packages").native());
        std::cerr.rdbuf(nullptr);
    }
    ~Memory() override { vorlan::useServices(m_former); }

    std::unique_ptr<foundation::msg_svc::eventmgr::Connection> addListener(
        const settings::core::Settings&, const vorlan::ChangeHandler& handler) override {
        m_handler = handler;
        return nullptr;
    }

    upath path(const std::string& name) const { return upath(fl::i18n::to_ustring(m_folder.path().native() + name)); }

    // Runs the test under every shortage, with errors logged and with everything logged.
    template <class Test>
    long starve(Test test) {
        long strikes = 0;
        for (const auto& levels : {std::vector{error}, std::vector{error, note, detail, enter, exit}}) {
            support::RecordLog log(levels);
            DocSetJsonParser().parse(u"missing");  // the first record of a thread makes what later ones use
            strikes += support::starve([&](Starvation& starved) {
                vorlan::openSettings();
                test(starved);
                vorlan::closeSettings();
                m_handler.clear();
                log.take();
            });
        }
        return strikes;
    }

    support::TemporaryFolder m_folder;
    const upath m_default = path("/vorlan/help");
    const upath m_installed = path("/packages/help");
    const upath m_other = path("/other");
    vorlan::ChangeHandler m_handler;
    vorlan::Services& m_former = vorlan::useServices(*this);
};

void expectLackOfMemory(const std::string& thrown, const std::string& other = "") {
    EXPECT_TRUE(thrown.empty() || thrown == "std::bad_alloc" || thrown == other) << thrown;
}

// All products are found by each of their names, and at most one of the two installed ones doesn't count as such, for
// want of memory to test its files.
void expectWhole(DocProductCollector& collector) {
    for (const char* name : {"Alpha Kit, the longest of names", "alphakit", "ak", "AK", "Beta Kit", "beta", "betakit",
                             "BK", "bk", "Gamma Kit, on the web alone", "gk", "GK", "Delta Kit", "absent", "DK"}) {
        EXPECT_NE(collector.getProductInfo(name), nullptr) << name;
    }
    EXPECT_GE(collector.getInstalledTopLevelDocProducts()->size(), 1U);
}

TEST_F(Memory, RunsOutWhileACatalogueIsRead) {
    const upath file = path("/packages/help/docset.json");
    const std::string failure = "Error while parsing " + fl::i18n::to_string(file.native());
    const long parses = starve([&](Starvation& starved) {
        DocumentationSet set;
        const std::string thrown = starved([&] { set = DocSetJsonParser().parse(file.native()); });
        expectLackOfMemory(thrown, failure);
        EXPECT_EQ(set.getTopLevelProducts().size(), thrown.empty() ? 4U : 0U);
    });
    const long collectors = starve([&](Starvation& starved) {
        std::unique_ptr<DocProductCollector> collector;
        const std::string thrown = starved([&] { collector = std::make_unique<DocProductCollector>(file); });
        expectLackOfMemory(thrown, failure);
        if (thrown.empty()) {
            expectWhole(*collector);
        }
    });
    EXPECT_GE(parses, 300);
    EXPECT_GE(collectors, 1020);
}

// A source that can't be asked for want of memory is passed over, so a later one may be taken.
template <class Roots>
void resolve(Starvation& starved, const std::set<fl::ustring>& sources) {
    std::unique_ptr<Roots> roots;
    expectLackOfMemory(starved([&] { roots = std::make_unique<Roots>(); }));
    if (!roots) {
        roots = std::make_unique<Roots>();
    }
    EXPECT_TRUE(sources.contains(roots->getDocroot().native()));
    EXPECT_TRUE(sources.contains(roots->getDocDataRoot().native()));
}

TEST_F(Memory, RunsOutInAColdResolution) {
    const std::set<fl::ustring> sources = {m_default.native(), m_installed.native()};
    EXPECT_GE(starve([&](Starvation& starved) { resolve<DocrootCache>(starved, sources); }), 820);
    EXPECT_GE(starve([&](Starvation& starved) { resolve<Docroot>(starved, sources); }), 940);
}

// Changes a documentation root short of memory: it is one or the other then, and the next change is whole.
template <class Change>
void change(Starvation& starved, Docroot& docroot, const upath& other, Change change) {
    const fl::ustring former = docroot.getDocroot().native();
    expectLackOfMemory(starved(change));
    const fl::ustring root = docroot.getDocroot().native();
    EXPECT_TRUE(root == former || root == other.native());
    change();
    EXPECT_EQ(docroot.getDocroot(), other);
    EXPECT_EQ(docroot.getDocDataRoot(), other);
}

TEST_F(Memory, RunsOutInAWarmObject) {
    const long reads = starve([&](Starvation& starved) {
        Docroot docroot;
        upath root = m_installed;
        expectLackOfMemory(starved([&] { root = docroot.getDocroot(); }));
        EXPECT_EQ(root, m_installed);
        EXPECT_EQ(docroot.getDocroot(), m_installed);
    });
    const long sets = starve([&](Starvation& starved) {
        Docroot docroot;
        change(starved, docroot, m_other, [&] {
            docroot.setDocDataRoot(m_other);
            docroot.setDocroot(m_other);
        });
    });
    const long events = starve([&](Starvation& starved) {
        Docroot docroot;
        const auto settings = settings::in_vorlan::getSettingsRoot({});
        const SettingsValueChangeEvent event(settings->getSettingsByFullName("vorlan.help.DocDataRoot"));
        vorlan::setSetting("vorlan.help.DocDataRoot", m_other.native(), "session");
        expectLackOfMemory(starved([&] { m_handler(event); }));
        const upath root = docroot.getDocDataRoot();
        EXPECT_TRUE(root == m_installed || root == m_other);
        m_handler(event);
        EXPECT_EQ(docroot.getDocDataRoot(), m_other);
    });
    EXPECT_GE(reads, 50);
    EXPECT_GE(sets, 570);
    EXPECT_GE(events, 230);
}

TEST_F(Memory, RunsOutWhileTheManagerRebuilds) {
    const auto& manager = DocProductCacheManager::getInstance();
    auto former = manager.getDocProductCache();
    long kept = 0;
    const long strikes = starve([&](Starvation& starved) {
        manager.setDocsetJsonFile(path("/packages/help/docset.json"));
        const std::string thrown = starved([&] { manager.getDocProductCache(); });
        auto present = manager.getDocProductCache();
        expectWhole(*present);
        kept += present == former ? 1 : 0;
        former = std::move(present);
    });
    EXPECT_GE(strikes, 1180);
    EXPECT_GE(kept, 800);
}

}  // namespace
