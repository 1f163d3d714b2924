#include "support/library.hpp"

namespace {

const std::string s_webOnly = R"({"product_family": {"family": "webonlyproducts"}})";

TEST(Collector, TestsTheFilesOfEachProductInOrder) {
    Host host({withCatalogue("root/docset.json", {named("c"), named("b"), named("a"), named("web", s_webOnly)}),
               withFile("vorlan/help/in/web/doccenter.properties/"), withFile("vorlan/help/in/c/doccenter.properties"),
               withFile("vorlan/help/docCatalog/products/a.properties"), withSetting("DocRoot", "$T/root")});
    RecordLog log(maskOf(level::detail));
    DocProductCollector collector({});
    const std::string in = "exists $T/vorlan/help/in/", proof = "/doccenter.properties\n",
                      products = "exists $T/vorlan/help/docCatalog/products/";
    EXPECT_EQ(host.calls({in, products}), in + "c" + proof + in + "b" + proof + products + "b.properties\n" + in + "a" +
                                              proof + products + "a.properties\n" + in + "web" + proof);
    EXPECT_THAT(log.take(),
                testing::EndsWith("helpLocation: in/c\ndetail: helpLocation: in/b\ndetail: shortName: b\n"
                                  "detail: helpLocation: in/a\ndetail: shortName: a\ndetail: helpLocation: in/web\n"));
    const auto installed = collector.getInstalledTopLevelDocProducts();
    ASSERT_EQ(installed->size(), 2U);
    EXPECT_EQ(installed->at(0)->getShortName() + installed->at(1)->getShortName(), "ca");
    EXPECT_EQ(collector.getProductInfo("code")->getShortName(), "web");  // the last of those that share the name
    collector.populateTopLevelDocProductList({});
    EXPECT_TRUE(collector.getInstalledTopLevelDocProducts()->empty());
}

// Returns the file that was read, "same" if the collector is that of the last request, "none" if there is none, or what
// was thrown.
std::string request() {
    RecordLog log(maskOf(level::detail, level::error));
    try {
        const auto collector = DocProductCacheManager::getInstance().getDocProductCache();
        const std::string records = log.take();
        return !collector ? "none" : records.empty() ? "same" : records.substr(24, records.find('\n') - 24);
    } catch (const std::exception& e) {
        return e.what();
    }
}

TEST(Manager, RebuildsWhenARootOrTheFileChanges) {
    Host host({withFile("bad.json", "{"), withCatalogue("first.json", {})});
    std::cerr.rdbuf(nullptr);
    host.on("install root", s_broken);  // so both roots are empty
    const auto setRoot = [&](const char* path) {
        return [&, path] { Docroot::getInstance().setDocroot(host.path(path)); };
    };
    const auto name = [&](const char* file) {
        return [&, file] { DocProductCacheManager::getInstance().setDocsetJsonFile(host.path(file)); };
    };
    const auto write = [&](const char* file) {
        return [&, file] { withCatalogue(file, {})(host), name("$T/named.json")(); };
    };
    const std::string refused = "Error while parsing $T/bad.json", data = "$T/data/docset.json", own = "$T/named.json";
    // The outcome of a request, and the change before it.
    const std::pair<std::string, std::function<void()>> requests[] = {
        {"none", {}},
        {"$T/first.json", name("$T/first.json")},
        {data, [&] { name("")(), host.on({}), setRoot("$T/vorlan/help")(), host.set("DocDataRoot", "$T/data"); }},
        {"same", {}},
        {data, setRoot("$T/vorlan/help/")},  // another spelling of the same folder
        {"same", setRoot("$T/vorlan/help/")},
        {data, write("data/docset.json")},
        {"$T/vorlan/help/docset.json", write("vorlan/help/docset.json")},
        {own, write("named.json")},
        {own, [&] { Docroot::getInstance().setDocDataRoot(host.path("/data")); }},
        {own, [&] { host.set("DocRoot", "/outside"); }},
        {refused, name("$T/bad.json")},  // reported once
        {"same", {}},
        {"broken", [&] { name("$T/named.json")(), setRoot("/a")(), host.on("get", s_broken); }},
        {own, [&] { host.on({}); }},
        {own, setRoot("/b")},
        {"same", [&] { host.calls(); }}};
    int number = 0;
    for (const auto& [expected, change] : requests) {
        change ? change() : void();
        vorlan::waitForEvents();
        EXPECT_EQ(host.shorten(request()), expected) << "request " << ++number;
    }
    EXPECT_EQ(host.calls(), "");
    EXPECT_EQ(host.shown(DocProductCollector(host.path("$T/none")).findDocsetJsonFile({})), "/data/docset.json");
    EXPECT_EQ(host.calls({"exists"}).find("exists $T/none\nexists /b/docset.json\nexists /data/docset.json\n"), 0U);
}

}  // namespace
