#include "fl/filesystem.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#include "fl/i18n.hpp"
#include "support/TemporaryFolder.hpp"
#include "support/row_name.hpp"
#include "vorlan/host.hpp"

namespace {

using fl::filesystem::upath;

TEST(Path, IsItsText) {
    EXPECT_TRUE(upath().empty());
    EXPECT_TRUE(upath(u"").empty());
    EXPECT_EQ(upath(u"/a//b/").native(), u"/a//b/");
    EXPECT_FALSE(upath(u"/a") == upath(u"/a/"));
}

struct Appended {
    const char* name;
    fl::ustring path, component, whole;
};

const Appended s_appended[] = {
    {"OneSeparator", u"/a", u"b", u"/a/b"},
    {"SeparatorThere", u"/a/", u"b", u"/a/b"},
    {"AbsoluteComponent", u"/a", u"/b", u"/a//b"},
    {"EmptyPath", u"", u"b", u"b"},
    {"EmptyPathAbsolute", u"", u"/b", u"/b"},
    {"EmptyComponent", u"/a", u"", u"/a"},
    {"BothEmpty", u"", u"", u""},
    {"SeveralComponents", u"a", u"b/c", u"a/b/c"},
};

class Appending : public testing::TestWithParam<Appended> {};

TEST_P(Appending, GivesWhole) {
    const auto& [name, path, component, whole] = GetParam();
    EXPECT_EQ((upath(path) / component).native(), whole);
}

INSTANTIATE_TEST_SUITE_P(Paths, Appending, testing::ValuesIn(s_appended), support::s_rowName);

TEST(Exists, AnswersForWhateverIsThereOrCannotBeReached) {
    const support::TemporaryFolder folder;
    folder.write("file");
    folder.makeFolder("\xFF\xC3\xA9");
    std::filesystem::create_symlink("nowhere", folder.path() / "dangling");
    std::filesystem::create_symlink("loop", folder.path() / "loop");

    EXPECT_TRUE(fl::filesystem::exists(folder()));
    EXPECT_TRUE(fl::filesystem::exists(folder("file")));
    EXPECT_TRUE(fl::filesystem::exists(upath(folder("\xFF\xC3\xA9"))));

    const std::string unreachable[] = {"missing",
                                       "file/below",
                                       "file/",
                                       "dangling",
                                       "loop",
                                       std::string(256, 'x'),
                                       std::string(5000, '/') + "file",
                                       {"file\0", 5}};
    for (const std::string& name : unreachable) {
        EXPECT_FALSE(fl::filesystem::exists(folder() + u"/" + fl::i18n::to_ustring(name))) << name;
    }
    EXPECT_FALSE(fl::filesystem::exists(fl::ustring()));
}

TEST(Canonical, ResolvesLinksParentsAndTheBase) {
    const support::TemporaryFolder folder;
    folder.write("a/b/file");
    std::filesystem::create_symlink("a", folder.path() / "link");
    const upath base(folder());

    EXPECT_EQ(fl::filesystem::canonical(upath(folder("link/b/.././b/file")), upath()).native(), folder("a/b/file"));
    EXPECT_EQ(fl::filesystem::canonical(upath(u"link/b"), base).native(), folder("a/b"));
    EXPECT_EQ(fl::filesystem::canonical(upath(folder("a")), upath(u"/elsewhere")).native(), folder("a"));
    EXPECT_THROW(fl::filesystem::canonical(upath(folder("missing")), upath()), std::filesystem::filesystem_error);
}

TEST(InstallRoot, IsWhatTheHostSetOrLiesAboveTheProgram) {
    const auto program = std::filesystem::canonical("/proc/self/exe");
    EXPECT_EQ(fl::i18n::to_string(fl::filesystem::get_install_path()), program.parent_path().parent_path());
    vorlan::setInstallRoot(u"/opt/vorlan/");
    EXPECT_EQ(fl::filesystem::get_install_path(), u"/opt/vorlan/");
    vorlan::setInstallRoot(u"");
    EXPECT_EQ(fl::filesystem::get_install_path(), u"");
}

}  // namespace
