#include <numeric>

#include "support/library.hpp"

namespace {

// Changes a setting from outside. Returns the number of events that this leads to.
std::uint64_t change(const Host& host, const std::string& name, const std::string& value) {
    const std::uint64_t before = vorlan::deliveredEvents();
    host.set(name, value);
    return vorlan::deliveredEvents() - before;
}

TEST(Service, ResolvesThenListensThenFollows) {
    Host host({withFile("marked/docCatalog/dataroot.txt")});
    Docroot docroot;
    EXPECT_EQ(host.calls({"set", "node vorlan.help.", "listen"}),
              "set DocRoot=$T/vorlan/help @session\nset DocDataRoot=$T/vorlan/help @session\n"
              "node vorlan.help.DocRoot\nlisten vorlan.help.DocRoot\n"
              "node vorlan.help.DocDataRoot\nlisten vorlan.help.DocDataRoot\n");
    RecordLog log(maskOf(level::note, level::detail));
    for (const std::string name : {"Root", "DataRoot"}) {
        EXPECT_EQ(change(host, "Doc" + name, "/a"), 1U);
        const std::string callback = "note: m_doc" + name + "ChangeListener callback: newDoc" + name;
        const std::string expected =
            "detail: New setting: /a\n" + callback + " /a\n" + callback + "Path /a\nnote: m_doc";
        EXPECT_EQ(log.take().substr(0, expected.size()), expected);
    }
    EXPECT_EQ(host.calls({"get"}), "get DocRoot @\nget DocDataRoot @\n");
    EXPECT_EQ(change(host, "DocRoot", ""), 2U);  // resolved afresh and written back, which is a change as well
    host.calls();
    EXPECT_EQ(change(host, "DocRoot", "$T/marked"), 2U);  // and so is the data root that moves with it
    const std::string data = "set DocDataRoot=$T/marked @session\n";
    EXPECT_EQ(host.calls({"set"}), "set DocRoot=$T/marked @session\n" + data + data);
    EXPECT_EQ(host.shown(docroot.getDocDataRoot()), "$T/marked");
}

TEST(Service, InstallsOneListenerIfTheOtherFails) {
    Host host;
    host.on("listen vorlan.help.DocRoot", s_broken);
    const Docroot docroot;
    EXPECT_EQ(host.calls({"listen"}), "listen vorlan.help.DocRoot\nlisten vorlan.help.DocDataRoot\n");
}

TEST(Service, DropsAnEventThatFails) {
    Host host;
    Docroot docroot;
    RecordLog log(maskOf(level::error));
    for (const char* setting : {"DocRoot", "DocDataRoot"}) {
        for (const std::string call : {"parent", "get", "set"}) {
            host.on(call, s_broken);
            change(host, setting, "/" + call);
            EXPECT_EQ(log.take(), "error: Error handling settings change event: broken\n") << setting << call;
        }
        host.on("parent", [] { throw Nothing(); });
        change(host, setting, "/ignored");
        host.on({});
        change(host, setting, "/heard");
    }
    EXPECT_EQ(host.shown(docroot.getDocroot()) + host.shown(docroot.getDocDataRoot()) + log.take(), "/heard/heard");
}

// The signatures of all operations that are traced, sorted.
const std::string s_signatures =

    "DocProductPtr doc_products_shared::DocProductCollector::getProductInfo(const std::string &)\n"
    "TopLevelDocProductVectorPtr doc_products_shared::DocProductCollector::getInstalledTopLevelDocProducts()\n"
    "bool (anonymous namespace)::isDoccenterPropertiesExist(const fl::ustring &, const std::string &, const "
    "std::string &)\n"
    "bool (anonymous namespace)::isWebonlyProduct(const DocProductPtr)\n"
    "bool docroot_cache::DocrootCache::isValidDataRoot(const fl::filesystem::upath &)\n"
    "boost::shared_ptr<settings::core::Settings> (anonymous namespace)::getSettingsHelpRoot()\n"
    "doc_products_shared::DocProductCollector::DocProductCollector(const fl::filesystem::upath &)\n"
    "doc_products_shared::Docroot::Docroot()\n"
    "docroot_cache::DocrootCache::DocrootCache()\n"
    "fl::filesystem::upath (anonymous namespace)::getDocrootRedirect(const fl::filesystem::upath &)\n"
    "fl::filesystem::upath (anonymous namespace)::getInstalledDocRoot()\n"
    "fl::filesystem::upath doc_products_shared::DocProductCollector::findDocsetJsonFile(const fl::filesystem::upath "
    "&) const\n"
    "fl::filesystem::upath doc_products_shared::Docroot::getDocDataRoot()\n"
    "fl::filesystem::upath doc_products_shared::Docroot::getDocroot()\n"
    "fl::filesystem::upath docroot_cache::DocrootCache::getDefaultDocroot() const\n"
    "fl::filesystem::upath docroot_cache::DocrootCache::getDocDataRoot()\n"
    "fl::filesystem::upath docroot_cache::DocrootCache::getDocroot()\n"
    "fl::filesystem::upath docroot_cache::DocrootCache::getInitialDocDataRoot()\n"
    "fl::filesystem::upath docroot_cache::DocrootCache::getInitialDocroot() const\n"
    "fl::filesystem::upath docroot_cache::DocrootCache::readSetting(const std::string &) const\n"
    "fl::ustring (anonymous namespace)::getSetting(const std::string &)\n"
    "static Docroot &doc_products_shared::Docroot::getInstance()\n"
    "void (anonymous namespace)::populateProductsMap(TopLevelDocProductMap &, const TopLevelDocProductPtr)\n"
    "void (anonymous namespace)::setSetting(const std::string &, const fl::ustring &)\n"
    "void (anonymous namespace)::setSettingListener(const std::string, const std::string, "
    "std::unique_ptr<foundation::msg_svc::eventmgr::Connection> &, const std::function<void (const fl::ustring &)> "
    "&)\n"
    "void doc_products_shared::DocProductCollector::populateTopLevelDocProductList(const DocumentationSet &)\n"
    "void doc_products_shared::Docroot::setDocDataRoot(fl::filesystem::upath)\n"
    "void doc_products_shared::Docroot::setDocroot(fl::filesystem::upath)\n"
    "void docroot_cache::DocrootCache::init()\n"
    "void docroot_cache::DocrootCache::setDocContentRoot(const fl::filesystem::upath &)\n"
    "void docroot_cache::DocrootCache::setDocDataRoot(const fl::filesystem::upath &)\n"
    "void docroot_cache::DocrootCache::setDocroot(const fl::filesystem::upath &)\n"
    "void docroot_cache::DocrootCache::writeSetting(const std::string &, const fl::filesystem::upath &)\n";

TEST(Service, TracesEveryOperationFromEntryToExit) {
    Host host(
        {withCatalogue("vorlan/help/docset.json", {named("a")}), withFile("vorlan/help/in/a/doccenter.properties")});
    RecordLog log(maskOf(level::enter, level::exit));
    const auto collector = DocProductCacheManager::getInstance().getDocProductCache();
    EXPECT_EQ(collector->getInstalledTopLevelDocProducts()->at(0), collector->getProductInfo("a"));
    // These change nothing, so no event is handled at the same time.
    Docroot::getInstance().setDocroot(Docroot::getInstance().getDocroot());
    Docroot::getInstance().setDocDataRoot(Docroot::getInstance().getDocDataRoot());
    host.set("DocRoot", "/a");
    std::set<std::string> entered;
    Strings open;  // the scopes, with their depth
    std::istringstream lines(log.take());
    EXPECT_EQ(lines.str().find("> static Docroot &"), 0U);
    EXPECT_LT(lines.str().find("::Docroot::getDocroot"), lines.str().find("::Docroot::getDocDataRoot"));
    for (std::string line; std::getline(lines, line);) {
        const std::size_t mark = line.find_first_of("<>");
        const bool isEntry = std::exchange(line[mark], ' ') == '>';
        isEntry ? open.push_back(line) : void();
        ASSERT_EQ(open.empty() ? "none" : open.back(), line);
        isEntry ? void(entered.insert(line.substr(mark + 2) + "\n")) : open.pop_back();
    }
    EXPECT_EQ(open, Strings());
    EXPECT_EQ(std::accumulate(entered.begin(), entered.end(), std::string()), s_signatures);
}

}  // namespace
