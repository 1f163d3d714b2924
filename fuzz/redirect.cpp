#include <boost/locale/encoding_utf.hpp>
#include <boost/locale/utf.hpp>
#include <filesystem>

#include "docroot_cache/DocrootCache.hpp"
#include "fuzz/Host.hpp"

namespace {

// An installation with targets for a redirect: folders and links, and names with white space and invalid UTF-8.
struct Scene : fuzz::Host {
    docroot_cache::DocrootCache cache;

    Scene() {
        vorlan::closeSettings();
        for (const char* name : {"other", "in side\u3000", "\xFF\xC2", "help/one\ntwo", "help/guide/pages"}) {
            write("vorlan/" + std::string(name) + "/");
        }
        std::filesystem::create_symlink("../other", root + "/link");
        std::filesystem::create_symlink("missing", root + "/dangling");
    }
};

// Bytes as UTF-16: valid UTF-8 is converted, every other byte becomes a low surrogate of its own.
fl::ustring widened(const std::string& bytes) {
    using Utf8 = boost::locale::utf::utf_traits<char>;
    fl::ustring wide;
    for (auto place = bytes.begin(); place != bytes.end();) {
        const auto start = place;
        const bool isValid = boost::locale::utf::is_valid_codepoint(Utf8::decode(place, bytes.end()));
        place = isValid ? place : start + 1;
        wide += isValid ? boost::locale::conv::utf_to_utf<char16_t>(&*start, &*start + (place - start))
                        : fl::ustring(1, static_cast<char16_t>(0xDC00 + static_cast<unsigned char>(*start)));
    }
    return wide;
}

// The root for a docroot.txt with that text.
std::string redirected(const std::string& text, const std::string& defaultRoot) {
    const std::string value(fuzz::trimmed(text));
    const std::string target = value.starts_with('/') ? value : defaultRoot + "/" + value;
    std::error_code unreachable;
    return target.find('\0') == std::string::npos && std::filesystem::exists(target, unreachable)
               ? std::filesystem::canonical(target).native()
               : defaultRoot;
}

// Some paths that exist have no canonical form, such as a pipe below /proc.
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
    const fl::ustring wide = fl::i18n::to_ustring(text);
    fuzz::check(wide == widened(text) && wide == fl::i18n::utf8_to_ustring(text), "text becomes UTF-16");
    fuzz::check(fl::i18n::to_string(wide) == text, "text survives the conversion to UTF-16 and back");
    s_scene.write("vorlan/help/docroot.txt", text);
    const std::string root = outcome([] { return fl::i18n::to_string(s_scene.cache.getInitialDocroot().native()); });
    fuzz::check(root == outcome([&] { return redirected(text, s_scene.root); }),
                "a redirect leads to what its text names, or to the default root if that doesn't exist");
    s_scene.forgetRecords();
    return 0;
}
