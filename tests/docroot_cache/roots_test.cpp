#include "support/library.hpp"

namespace {

TEST(Roots, AreResolvedInOrderUntilASettingHoldsThem) {
    Host host({withFile("marked/docCatalog/dataroot.txt")});
    std::filesystem::current_path(host.folder());
    DocrootCache cache;
    const auto set = [](const std::string& setting) { return "set " + setting + " @session\n"; };
    const std::string node = "context\nroot\nnode vorlan.help\n", getRoot = node + "get DocRoot @\n",
                      getDataRoot = node + "get DocDataRoot @\n", setRoot = node + set("DocRoot=$T/vorlan/help"),
                      setDataRoot = node + set("DocDataRoot=$T/vorlan/help");
    const std::string sources =
        "support package root\nexists $T/packages/help/index.html\n"
        "exists $T/packages/help/documentation-center.html\n"
        "install root\nexists $T/vorlan/help/docroot.txt\n";
    const std::string marker = "exists $T/vorlan/help/docCatalog/dataroot.txt\ninstall root\n";
    EXPECT_EQ(host.calls(), getRoot + sources + setRoot + getDataRoot + marker + setDataRoot);
    cache.setDocroot({});
    EXPECT_EQ(host.calls(), getRoot + setRoot + "exists docCatalog/dataroot.txt\n");
    cache.getDocroot();
    EXPECT_EQ(host.calls(), getRoot + setRoot + getDataRoot + setDataRoot);
    cache.getDocDataRoot();
    EXPECT_EQ(host.calls(), "");  // a warm read makes no call
    cache.setDocContentRoot(host.path("$T/marked"));
    cache.getDocroot();  // returns the stored root and resolves nothing
    EXPECT_EQ(host.calls(), node + set("DocRoot=$T/marked"));
    cache.setDocroot(host.path("$T/marked"));
    EXPECT_EQ(host.calls({"set", "exists"}),
              set("DocRoot=$T/marked") + "exists $T/marked/docCatalog/dataroot.txt\n" + set("DocDataRoot=$T/marked"));
    cache.setDocDataRoot({});
    EXPECT_EQ(host.calls({"set", "get"}), "get DocDataRoot @\n" + set("DocDataRoot=$T/marked"));
    cache.setDocDataRoot(host.path("/none"));
    cache.setDocroot(host.path("/unmarked"));
    EXPECT_EQ(host.shown(cache.getDocroot()) + host.shown(cache.getDocDataRoot()), "/unmarked/none");
    host.set("DocDataRoot", "");
    EXPECT_EQ(host.shown(cache.getInitialDocDataRoot()), "$T/vorlan/help");
    host.calls();
    cache.writeSetting("DocRoot", {});
    EXPECT_TRUE(cache.readSetting("DocRoot").empty());
    EXPECT_EQ(host.calls(), node + set("DocRoot=") + getRoot);
    host.on("set DocRoot=/first", [&] { cache.setDocContentRoot(host.path("/second")); });  // a re-entrant call
    cache.setDocContentRoot(host.path("/first"));
    EXPECT_EQ(vorlan::settingAt("vorlan.help.DocRoot", "session"), u"/first");
}

TEST(Roots, KeepWhatWasStoredBeforeAFailure) {
    Host host;
    DocrootCache cache;
    host.on("set", s_broken);
    EXPECT_THROW(cache.setDocroot(host.path("/new")), Broken);
    EXPECT_THROW(cache.setDocDataRoot(host.path("/data")), Broken);
    host.calls();
    EXPECT_EQ(host.shown(cache.getDocroot()) + host.shown(cache.getDocDataRoot()) + host.calls(), "/new/data");
    host.on("exists", s_broken);
    cache.setDocroot(host.path("/unmarked"));
    host.on("get DocDataRoot", s_broken);
    EXPECT_THROW(cache.getDocroot(), Broken);
    EXPECT_THROW(cache.getDocDataRoot(), Broken);  // the next read tries again
    host.on({});
    EXPECT_EQ(host.shown(cache.getDocroot()) + host.shown(cache.getDocDataRoot()), "/unmarked$T/vorlan/help");
}

// What a resolution of both roots logs, or a part of it. "begin" and "end" mark the ends of the log.
const std::pair<std::vector<Step>, std::string> s_logs[] = {
    {{withFile("vorlan/help/docroot.txt", "../../other"), withFile("other/docCatalog/dataroot.txt")},
     "begin\nnote: Returning setting \nnote: DocRoot setting is empty, return empty upath\n"
     "note: spRoot $T/packages\nnote: spRoot exists false\nnote: installedDocFile $T/packages/help/index.html\n"
     "note: installedDocFile $T/packages/help/documentation-center.html\nnote: Returning empty fl::filesystem::upath\n"
     "note: Looking for docroot.txt file at $T/vorlan/help/docroot.txt\n"
     "note: Using docroot.txt to redirect docroot to ../../other\n"
     "note: Resolved relative path to: $T/vorlan/help/../../other\nnote: Default docroot redirected to $T/other\n"
     "note: m_docroot $T/other\nnote: Saving settingValue $T/other\n"
     "note: Returning setting \nnote: DocDataRoot setting is empty, return empty upath\n"
     "note: dataRootMarkerFile $T/other/docCatalog/dataroot.txt exists? true\nnote: Returning m_docroot $T/other\n"
     "note: m_docDataRoot $T/other\nnote: Saving settingValue $T/other\nend\n"},
    {{withFile("vorlan/help/docroot.txt", "\t/missing\n")},
     "note: Using docroot.txt to redirect docroot to /missing\nnote: Redirected docroot folder does not exist\n"
     "note: No valid redirect found, using default docroot\nnote: Using default initial docroot (<vorlanroot>/help)\n"},
    {{}, "exists? false\nnote: Returning default docroot\nnote: m_docDataRoot $T/vorlan/help\n"},
    {{withFile("packages/help/index.html")},
     "note: spRoot exists true\nnote: installedDocFile $T/packages/help/index.html\n"
     "note: index.html file exists, returning installedDocRoot $T/packages/help\n"
     "note: Returning installedDocRoot $T/packages/help\n"},
    {{withFile("vorlan/help/help/index.html"), [](Host&) { vorlan::setSupportPackageRoot({}); }},
     "note: Returning installedDocRoot help\nnote: m_docroot help\n"},  // below the working folder
    {{[](Host& host) { host.on("root", s_broken); }},
     "begin\nerror: Error getting setting: broken\nnote: DocRoot setting is empty, return empty upath\n"},
    {{withSetting("DocRoot", "/r")},
     "note: Returning setting /r\nnote: path /r\nnote: Returning docRootFromSetting /r\n"},
    {{withSetting("DocDataRoot", "/d", "factory")}, "note: path /d\nnote: Returning docDataRootFromSetting /d\n"},
};

TEST(Roots, LogHowTheyAreFound) {
    for (const auto& [scene, expected] : s_logs) {
        const Host host(scene);
        std::filesystem::current_path(host.folder() / "vorlan/help");  // a redirect isn't relative to this
        RecordLog log(maskOf(level::note, level::error));
        const DocrootCache cache;
        EXPECT_THAT(host.shorten("begin\n" + log.take() + "end\n"), testing::HasSubstr(expected));
    }
}

}  // namespace
