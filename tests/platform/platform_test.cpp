#include <future>

#include "fl/filesystem.hpp"
#include "settings/in_vorlan.hpp"
#include "support/library.hpp"

namespace {

using namespace std::string_literals;
using Event = settings::core::SettingsValueChangeEvent;

TEST(Text, ReplacesASurrogateThatStandsForNoByte) {
    EXPECT_EQ(fl::i18n::to_string(u"a\xD83D\xD83D\xDE00\xDC7F\xDD00\xDC80"), "a\uFFFD\U0001F600\uFFFD\uFFFD\x80");
}

TEST(Path, AppendsAComponentAfterOneSeparator) {
    auto path = fl::filesystem::upath() / u"" / u"/a" / u"b/" / u"c" / u"/d" / u"";
    EXPECT_EQ(path.native(), u"/a/b/c//d");
    EXPECT_EQ((path /= path.native()).native(), u"/a/b/c//d//a/b/c//d");
}

TEST(Path, BecomesCanonicalIfItExists) {
    Host host({withFile("a/\xFF/file"), withLink("a", "link")});
    const auto canonical = [&](const std::string& path, const std::string& base) {
        return host.shown(fl::filesystem::canonical(host.path(path), host.path(base)));
    };
    EXPECT_EQ(canonical("$T/link/\xFF/.././\xFF/file", ""), "$T/a/\xFF/file");
    EXPECT_EQ(canonical("link/\xFF", "$T") + " " + canonical("$T/a", "/b"), "$T/a/\xFF $T/a");
    for (const std::string& path : {""s, "$T/a/\xFF/file/"s, "$T/a\0"s, "$T/" + std::string(256, 'x')}) {
        EXPECT_FALSE(fl::filesystem::exists(host.path(path))) << path;
        EXPECT_THROW(canonical(path, ""), std::filesystem::filesystem_error) << path;
    }
}

const std::string s_name = "group.name";

const auto root = [] { return settings::in_vorlan::getSettingsRoot(vlutil::contextmgr::ContextRegistry::getRtxID()); };

const auto listen = [](const std::function<void(const Event&)>& handler) {
    return settings::in_vorlan::addListener<Event>(root()->getSettingsByFullName(s_name), handler);
};

// A level, the value that it is set to (none: it is cleared), and what a read without a level returns then.
const std::tuple<const char*, std::optional<fl::ustring>, fl::ustring> s_changes[] = {
    {"user", u"", u""},     {"factory", u"f", u""}, {"user", u"u", u"u"}, {"session", u"u", u"u"},
    {"session", u"", u""},  {"session", {}, u"u"},  {"user", {}, u"f"},   {"session", u"s", u"s"},
    {"factory", u"", u"s"}, {"session", {}, u""}};

TEST(Settings, ReturnTheHighestLevelAndRaiseAnEventIfThatChanges) {
    std::uint64_t events = 0;
    fl::ustring former;
    const auto connection = listen([](const Event&) {}), other = listen([](const Event&) {});
    const auto group = root()->getSettingsByFullName(s_name)->getParent();
    for (const auto& [level, value, answer] : s_changes) {
        value ? vorlan::setSetting(s_name, *value, level) : vorlan::clearSetting(s_name, level);
        vorlan::waitForEvents();
        EXPECT_EQ(group->get<fl::ustring>("name", ""), answer);
        EXPECT_EQ(group->get<fl::ustring>("name", level), value.value_or(u""));
        EXPECT_EQ(vorlan::settingAt(s_name, level), value);
        EXPECT_EQ(vorlan::deliveredEvents(), events += std::exchange(former, answer) == answer ? 0 : 2) << level;
    }
    EXPECT_EQ(group->getParent()->getFullName() + group->getSettingsByFullName("name")->getFullName(), "name");
    EXPECT_EQ(group->getParent()->getParent(), nullptr);
    EXPECT_THROW(group->set<fl::ustring>("name", u"", "User"), std::invalid_argument);
    EXPECT_THROW(group->get<fl::ustring>("name", "machine"), std::invalid_argument);
}

TEST(Settings, BelongToTheirContextUntilTheyAreClosed) {
    vorlan::setSetting(s_name, u"first", "user");
    vorlan::openSettings();  // already open: nothing changes
    const auto first = root();
    vorlan::setContext({7});
    vorlan::setSetting(s_name, u"lost", "user");
    EXPECT_EQ(root(), nullptr);
    vorlan::openSettings();
    EXPECT_EQ(vorlan::settingAt(s_name, "user"), std::nullopt);
    vorlan::setContext({0});
    EXPECT_EQ(vorlan::settingAt(s_name, "user"), u"first");
    vorlan::closeSettings();
    EXPECT_EQ(root(), nullptr);
    EXPECT_EQ(first->get<fl::ustring>(s_name, ""), u"first");  // the handle keeps its settings
    vorlan::setContext({7});
    EXPECT_NE(root(), nullptr);
}

// An object for a handler to hold. It must be destroyed with the handler, and without the queue's lock, which it takes.
const auto held = [](bool& isGone) {
    return std::shared_ptr<void>(nullptr, [&isGone](auto) { isGone = vorlan::deliveredEvents() < 100; });
};

TEST(Connection, ListenerMayThrowAndMayDisconnectItself) {
    int events = 0;
    bool isGone = false;
    decltype(listen({})) connection = listen([&, handle = held(isGone)](const Event& event) {
        events += event.getSubject()->getFullName() == s_name ? 1 : 9;
        if (events == 2) {
            connection.reset();
            vorlan::waitForEvents();  // returns at once on this thread
            EXPECT_FALSE(isGone);
        }
        throw 7;
    });
    for (const char16_t* value : {u"a", u"b", u"c"}) {
        vorlan::setSetting(s_name, value, "user");
    }
    vorlan::waitForEvents();
    EXPECT_TRUE(events == 2 && vorlan::deliveredEvents() == 2 && isGone);
}

TEST(Connection, DestroysItsHandlerThoughACallIsPending) {
    std::promise<void> gate;
    const auto holdsUp = listen([&](const Event&) { gate.get_future().wait(); });
    bool isGone = false;
    auto connection = listen([handle = held(isGone)](const Event&) { FAIL(); });
    vorlan::setSetting(s_name, u"a", "user");
    connection.reset();
    EXPECT_TRUE(isGone);
    gate.set_value();
}

TEST(ConnectionDeathTest, ListenerMayEndTheProcess) {
    static decltype(listen({})) s_connection;  // outlives the host's state
    s_connection = listen([](const Event&) { std::exit(0); });
    EXPECT_EXIT((vorlan::setSetting(s_name, u"a", "user"), vorlan::waitForEvents()), testing::ExitedWithCode(0), "");
}

}  // namespace
