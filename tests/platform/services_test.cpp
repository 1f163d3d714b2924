#include <gtest/gtest.h>

#include <boost/algorithm/string/join.hpp>
#include <stdexcept>

#include "SupportPackageRootReader.hpp"
#include "fl/filesystem.hpp"
#include "settings/in_vorlan.hpp"
#include "support/ScriptedServices.hpp"
#include "vlutil/contextmgr.hpp"
#include "vorlan/host.hpp"

namespace {

using settings::core::SettingsValueChangeEvent;
using vlutil::contextmgr::ContextRegistry;

// Every entry of the layer once, as the library uses them.
void callEverything() {
    const auto root = settings::in_vorlan::getSettingsRoot(ContextRegistry::getRtxID());
    const auto group = root->getSettingsByFullName("vorlan.help");
    group->set<fl::ustring>("DocRoot", u"/a", "session");
    group->get<fl::ustring>("DocRoot", "");
    const auto node = root->getSettingsByFullName("vorlan.help.DocRoot");
    node->getParent();
    const auto connection = settings::in_vorlan::addListener<SettingsValueChangeEvent>(node, [](const auto&) {});
    fl::filesystem::get_install_path();
    SupportPackageRootReader().getSupportPackageRootNoCreate();
    fl::filesystem::exists(fl::ustring(u"/"));
    fl::filesystem::canonical(fl::filesystem::upath(u"/"), {});
}

TEST(Services, EachCallArrivesOnceAndCanFail) {
    support::ScriptedServices services;
    callEverything();
    const std::vector<std::string> calls = services.take();
    EXPECT_EQ(boost::algorithm::join(calls, ", "),
              "context, root, node vorlan.help, set DocRoot=/a @session, get DocRoot, node vorlan.help.DocRoot, "
              "parent vorlan.help.DocRoot, listen vorlan.help.DocRoot, install root, support package root, exists /, "
              "canonical /");
    for (const std::string& call : calls) {
        services.on(call, [&] { throw std::runtime_error(call); });
        EXPECT_THROW(callEverything(), std::runtime_error) << call;
        services.reset();
    }
    EXPECT_NO_THROW(callEverything());
}

TEST(Services, WithoutSettingsEveryEntryAnswersNull) {
    vorlan::closeSettings();
    EXPECT_EQ(settings::in_vorlan::getSettingsRoot(ContextRegistry::getRtxID()), nullptr);
    EXPECT_EQ(settings::in_vorlan::addListener<SettingsValueChangeEvent>(nullptr, [](const auto&) {}), nullptr);
    vorlan::setSetting("vorlan.help.DocRoot", u"/a", "user");
    EXPECT_EQ(vorlan::settingAt("vorlan.help.DocRoot", "user"), std::nullopt);
    vorlan::openSettings();
    EXPECT_NE(settings::in_vorlan::getSettingsRoot(ContextRegistry::getRtxID()), nullptr);
}

TEST(Services, EachContextHasItsOwnSettings) {
    vorlan::setSetting("group.name", u"first", "user");
    vorlan::setContext({7});
    EXPECT_EQ(settings::in_vorlan::getSettingsRoot(ContextRegistry::getRtxID()), nullptr);
    vorlan::openSettings();
    EXPECT_EQ(vorlan::settingAt("group.name", "user"), std::nullopt);
    vorlan::setContext({0});
    EXPECT_EQ(vorlan::settingAt("group.name", "user"), u"first");
}

TEST(Settings, ParentsLeadToTheRoot) {
    const auto root = settings::in_vorlan::getSettingsRoot(ContextRegistry::getRtxID());
    const auto group = root->getSettingsByFullName("vorlan.help.DocRoot")->getParent();
    EXPECT_EQ(group->getFullName(), "vorlan.help");
    EXPECT_EQ(group->getParent()->getParent()->getFullName(), "");
    EXPECT_EQ(root->getParent(), nullptr);
}

}  // namespace
