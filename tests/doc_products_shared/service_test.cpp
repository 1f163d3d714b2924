#include <boost/regex.hpp>

#include "support/library.hpp"

namespace {

// Changes a setting from outside. Returns the number of events that this causes.
std::uint64_t change(const Host& host, const std::string& name, const std::string& value) {
    const std::uint64_t before = vorlan::deliveredEvents();
    host.set(name, value);
    return vorlan::deliveredEvents() - before;
}

TEST(Service, ResolvesThenListensThenFollows) {
    Host host({withFile("marked/docCatalog/dataroot.txt")});
    const Docroot docroot;
    EXPECT_EQ(host.calls({"set", "node vorlan.help.", "listen"}),
              "set DocRoot=$T/vorlan/help @session\nset DocDataRoot=$T/vorlan/help @session\n"
              "node vorlan.help.DocRoot\nlisten vorlan.help.DocRoot\n"
              "node vorlan.help.DocDataRoot\nlisten vorlan.help.DocDataRoot\n");
    RecordLog log(maskOf(level::note, level::detail));
    for (const std::string name : {"Root", "DataRoot"}) {
        EXPECT_EQ(change(host, "Doc" + name, "/a"), 1U);
        const std::string callback = "note: m_doc" + name + "ChangeListener callback: newDoc" + name;
        EXPECT_THAT(log.take(), testing::StartsWith("detail: New setting: /a\n" + callback + " /a\n" + callback +
                                                    "Path /a\nnote: m_doc"));
    }
    EXPECT_EQ(host.calls({"get"}), "get DocRoot @\nget DocDataRoot @\n");
    EXPECT_EQ(change(host, "DocRoot", ""), 2U);  // the root is resolved and written back, a second change
    host.calls();
    EXPECT_EQ(change(host, "DocRoot", "$T/marked"), 2U);  // the data root moves with it, a second change
    const std::string data = "set DocDataRoot=$T/marked @session\n";
    EXPECT_EQ(host.calls({"set"}), "set DocRoot=$T/marked @session\n" + data + data);
}

TEST(Service, LogsAndDropsAnEventThatItCannotHandle) {
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

// The return types and names of the operations that are traced, by scope.
const std::map<std::string, std::set<std::string>> s_traced = {
    {"docroot_cache::DocrootCache::",
     {"bool isValidDataRoot", "DocrootCache", "fl::filesystem::upath getDefaultDocroot",
      "fl::filesystem::upath getDocDataRoot", "fl::filesystem::upath getDocroot",
      "fl::filesystem::upath getInitialDocDataRoot", "fl::filesystem::upath getInitialDocroot",
      "fl::filesystem::upath readSetting", "void init", "void setDocContentRoot", "void setDocDataRoot",
      "void setDocroot", "void writeSetting"}},
    {"doc_products_shared::Docroot::",
     {"Docroot", "fl::filesystem::upath getDocDataRoot", "fl::filesystem::upath getDocroot",
      "static Docroot &getInstance", "void setDocDataRoot", "void setDocroot"}},
    {"doc_products_shared::DocProductCollector::",
     {"DocProductPtr getProductInfo", "TopLevelDocProductVectorPtr getInstalledTopLevelDocProducts",
      "DocProductCollector", "fl::filesystem::upath findDocsetJsonFile", "void populateTopLevelDocProductList"}},
    {"(anonymous namespace)::",
     {"bool isDoccenterPropertiesExist", "bool isWebonlyProduct",
      "boost::shared_ptr<settings::core::Settings> getSettingsHelpRoot", "fl::filesystem::upath getDocrootRedirect",
      "fl::filesystem::upath getInstalledDocRoot", "fl::ustring getSetting", "void populateProductsMap",
      "void setSetting", "void setSettingListener"}},
};

TEST(Service, TracesEveryOperation) {
    Host host(
        {withCatalogue("vorlan/help/docset.json", {named("a")}), withFile("vorlan/help/in/a/doccenter.properties")});
    RecordLog log(maskOf(level::enter));
    const auto collector = DocProductCacheManager::getInstance().getDocProductCache();
    EXPECT_EQ(collector->getInstalledTopLevelDocProducts()->at(0), collector->getProductInfo("a"));
    // These change nothing, so no event is handled concurrently.
    Docroot::getInstance().setDocroot(Docroot::getInstance().getDocroot());
    Docroot::getInstance().setDocDataRoot(Docroot::getInstance().getDocDataRoot());
    std::map<std::string, std::set<std::string>> entered;
    const boost::regex operation(" *[<>] (.*?)((\\w+::)+|\\(anonymous namespace\\)::)(\\w+)\\(.*\\).*");
    std::istringstream lines(log.take());
    EXPECT_LT(lines.str().find("::Docroot::getDocroot"), lines.str().find("::Docroot::getDocDataRoot"));
    boost::smatch match;
    for (std::string line; std::getline(lines, line);) {
        ASSERT_TRUE(boost::regex_match(line, match, operation)) << line;
        entered[match[2]].insert(match[1] + match[4]);
    }
    EXPECT_EQ(entered, s_traced);
}

}  // namespace
