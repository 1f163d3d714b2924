#include <filesystem>

#include "docroot_cache/DocrootCache.hpp"
#include "fuzz/Host.hpp"

namespace {

// Folders, files, links, and names that white space and odd bytes are part of, for a redirect to lead to.
struct Scene : fuzz::Host {
    docroot_cache::DocrootCache cache;

    Scene() {
        vorlan::closeSettings();
        for (const char* name : {"other", "in side\u3000", "\xFF\xC2", "help/one\ntwo", "help/guide/pages"}) {
            folder.makeFolder(name);
        }
        std::filesystem::create_symlink("../other", root + "/link");
        std::filesystem::create_symlink("missing", root + "/dangling");
    }
};

// Where a docroot.txt of that text leads.
std::string redirected(const std::string& text, const std::string& defaultRoot) {
    const std::string value(fuzz::trimmed(text));
    const std::string target = value.starts_with('/') ? value : defaultRoot + "/" + value;
    std::error_code unreachable;
    return target.find('\0') == std::string::npos && std::filesystem::exists(target, unreachable)
               ? std::filesystem::canonical(target).native()
               : defaultRoot;
}

// A pipe below /proc exists and has no canonical form.
template <class Read>
std::string outcome(Read read) {
    try {
        return read();
    } catch (const std::filesystem::filesystem_error&) {
        return "no canonical form";
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Scene s_scene;
    const std::string text(data, data + size);
    s_scene.folder.write("help/docroot.txt", text);
    const std::string root = outcome([] { return fl::i18n::to_string(s_scene.cache.getInitialDocroot().native()); });
    fuzz::check(root == outcome([&] { return redirected(text, s_scene.root); }),
                "a redirect leads to what its text names, and to the default root where that doesn't exist");
    s_scene.forgetRecords();
    return 0;
}
