#include <boost/regex.hpp>

#include "support/Allocations.hpp"
#include "support/library.hpp"

// How the library's operations end if a call to the host fails or memory runs out, also while logging.
namespace {

const std::vector<Step> s_scene = {
    withFile("vorlan/help/docroot.txt", std::string(20, ' ') + "../../link"), withLink("other", "link"),
    withFile("other/docCatalog/dataroot.txt"), withFile("other/in/a/doccenter.properties"),
    withCatalogue("named.json", {named("a"), named("b"), named("c"), named("d"), named("e"), named("f"), named("g"),
                                 named("h"), named("i"), named("j"), named("k"), named("l"), named("m")})};

// Operations that call the host. Each returns its results as a text.
std::string useRoots(const Host& host) {
    Docroot docroot;  // if nothing fails, its setters change nothing, so there are no events
    const std::string first = host.shown(docroot.getDocroot()) + " ";
    docroot.setDocroot(host.path("$T/other"));
    docroot.setDocDataRoot(host.path("$T/other"));
    return first + host.shown(docroot.getDocDataRoot()) + " " + host.shown(docroot.getDocroot());
}

std::string useCatalogue(const Host& host) {
    const DocProductCacheManager& manager = DocProductCacheManager::getInstance();
    manager.setDocsetJsonFile(host.path("$T/named.json"));
    const auto collector = manager.getDocProductCache();
    const auto product = collector->getProductInfo("b");
    return std::to_string(collector->getInstalledTopLevelDocProducts()->size()) +
           (product ? product->getDisplayName() : "none");
}

using Use = std::string (*)(const Host&);

// Runs an operation on empty settings. Returns its answer, or "! " and what it threw.
std::string outcome(Use use, Host& host) {
    vorlan::closeSettings();
    vorlan::openSettings();
    host.calls();
    try {
        return use(host);
    } catch (const std::exception& e) {
        return std::string("! ") + e.what();
    } catch (int) {
        return "! other type";
    }
}

// What follows a std::exception from a call: the error that is logged before the operation continues, or the empty text
// if the exception reaches the caller. The first pattern that matches the call applies.
const std::pair<std::string, std::string> s_rules[] = {
    {"Caught exception", "node vorlan.help.+|listen.*|exists .T/other/(in/|docCatalog/products).*"},
    {"Error getting setting", "context|root|node.*"},
    {"Error getting installed docroot", "support package root|exists .T/packages.*"},
    {"Error while getting docroot", "install root"},
    {"Error validating data root", "exists .T/other/docCatalog/dataroot.txt"},
    {"", ".*"},
};

std::string ruleOf(const std::string& call) {
    const auto matches = [&](const auto& rule) { return boost::regex_match(call, boost::regex(rule.second)); };
    return std::find_if(std::begin(s_rules), std::end(s_rules), matches)->first;
}

constexpr std::pair<const char*, void (*)()> s_faults[] = {
    {"exception", s_broken}, {"other type", [] { throw 7; }}, {"nothing", [] { throw Nothing(); }}};

// The distinct calls, without the values that they set.
std::set<std::string> kindsOf(const std::string& calls) {
    const boost::regex kind("^[^=\n]+");
    return {boost::sregex_token_iterator(calls.begin(), calls.end(), kind), {}};
}

TEST(Faults, OfTheHostFollowTheRulesAndDoNotLast) {
    Host host(s_scene);
    RecordLog log(maskOf(level::error));
    long count = 0;
    for (const Use use : {useRoots, useCatalogue}) {
        outcome(use, host);  // builds the singletons
        const std::string healthy = outcome(use, host);
        for (const std::string& call : kindsOf(host.calls())) {
            for (const auto& [fault, fail] : s_faults) {
                for (const bool always : {false, true}) {
                    SCOPED_TRACE(call + ", " + fault + (always ? ", always" : ", once"));
                    int calls = 0;
                    host.on(call, [&, fail = fail] { ++calls == 1 || always ? fail() : void(); });
                    const std::string answer = outcome(use, host), records = log.take();
                    host.on({});
                    const std::string logged = fault == s_faults[0].first ? ruleOf(call) : "";
                    const bool isThrown = logged.empty() && fault != s_faults[2].first;
                    // One listener that can't be installed doesn't keep the other from it.
                    EXPECT_TRUE(isThrown || !call.starts_with("listen") ||
                                host.calls({"listen vorlan.help.DocDataRoot"}) != "");
                    EXPECT_EQ(answer.starts_with("!"), isThrown) << answer;
                    EXPECT_TRUE(logged.empty() || call == "install root" ||
                                answer == (call.find("/in/a/") < call.size() ? "0 b " : healthy))
                        << answer;
                    EXPECT_EQ(records.find(logged + ": broken") == std::string::npos, logged.empty()) << records;
                    EXPECT_EQ(outcome(use, host), healthy);
                    ++count;
                }
            }
        }
    }
    EXPECT_GE(count, 200);
}

TEST(Faults, OfMemoryInASetChangeNothing) {
    Host host;
    host.on("parent", [] { throw Nothing(); });  // so that the listener sets nothing itself
    const Docroot docroot;
    failEachAllocation([&](const Attempt& attempt) {
        vorlan::setSetting("vorlan.help.DocRoot", u"/former", "session");
        const std::string thrown = attempt([] { vorlan::setSetting("vorlan.help.DocRoot", u"/new", "session"); });
        EXPECT_EQ(vorlan::settingAt("vorlan.help.DocRoot", "session"), thrown.empty() ? u"/new" : u"/former");
        vorlan::waitForEvents();
        host.calls();
    });
}

TEST(Faults, OfMemoryThrowBadAllocOrAreReported) {
    Host host(s_scene);
    long count = 0, refusals = 0;
    std::cerr.rdbuf(nullptr);
    for (const std::uint32_t levels : {~0U, maskOf(level::error)}) {
        RecordLog log(levels);
        auto docroot = std::make_unique<Docroot>();
        host.set("DocRoot", "/a");  // causes an event, so that the thread that delivers it exists and has logged
        docroot.reset();
        for (const Use use : {useRoots, useCatalogue}) {
            outcome(use, host);  // builds the singletons
            log.take();
            const std::string expected = outcome(use, host) + log.take();
            count += failEachAllocation([&](const Attempt& attempt) {
                vorlan::closeSettings();
                vorlan::openSettings();
                std::string answer;
                const std::string thrown = attempt([&] { answer = use(host); });
                const bool isSaid = log.take().find("std::bad_alloc") != std::string::npos;
                EXPECT_TRUE(thrown == "std::bad_alloc" || thrown.starts_with("Error while parsing ") || isSaid ||
                            (thrown.empty() && expected.starts_with(answer)))
                    << thrown << answer;
                refusals += thrown.starts_with("Error while parsing ") ? 1 : 0;
                EXPECT_EQ(outcome(use, host) + log.take(), expected);
                vorlan::waitForEvents();
                host.calls();
            });
        }
    }
    EXPECT_GE(refusals, 100);
    EXPECT_GE(count, 5000);
}

}  // namespace
