#include "docroot_cache/DocrootCache.hpp"

#include <boost/shared_ptr.hpp>
#include <exception>

#include "SupportPackageRootReader.hpp"
#include "docroot_cache/setting_names.hpp"
#include "fl/filesystem.hpp"
#include "fl/i18n.hpp"
#include "foundation/diagnostic.hpp"
#include "foundation/function_trace.hpp"
#include "foundation/text_file.hpp"
#include "settings/core.hpp"
#include "settings/in_vorlan.hpp"
#include "vlutil/contextmgr.hpp"

// A root is found by asking its sources in order; the first that gives a path wins. Every access to the settings looks
// up the group node anew. The setters store a path before they write it, so it stays in force if the write throws.
namespace docroot_cache {

using fl::filesystem::upath;

namespace {

foundation::log::basic_diagnostic_logger<char> s_logger("doc_products_shared");

const std::string s_helpGroup = setting_names::helpGroup;
const std::string s_docRoot = setting_names::docRoot;
const std::string s_docDataRoot = setting_names::docDataRoot;

const fl::ustring s_helpFolder = u"help";

// The group node, looked up on every access; no handle is kept between calls. Null if there are no settings.
boost::shared_ptr<settings::core::Settings> getSettingsHelpRoot() {
    FUNCTION_TRACE("boost::shared_ptr<settings::core::Settings> (anonymous namespace)::getSettingsHelpRoot()");
    boost::shared_ptr<settings::core::Settings> helpRoot;
    try {
        const auto root = settings::in_vorlan::getSettingsRoot(vlutil::contextmgr::ContextRegistry::getRtxID());
        if (root) {
            helpRoot = root->getSettingsByFullName(s_helpGroup);
        }
    } catch (const std::exception& e) {
        DIAGNOSTIC(error, "Error getting setting: ", e.what());
    }
    return helpRoot;
}

fl::ustring getSetting(const std::string& name) {
    FUNCTION_TRACE("fl::ustring (anonymous namespace)::getSetting(const std::string &)");
    fl::ustring value;
    if (const auto helpRoot = getSettingsHelpRoot()) {
        value = helpRoot->get<fl::ustring>(name, "");
        DIAGNOSTIC(note, "Returning setting ", value);
    }
    return value;
}

void setSetting(const std::string& name, const fl::ustring& value) {
    FUNCTION_TRACE("void (anonymous namespace)::setSetting(const std::string &, const fl::ustring &)");
    if (const auto helpRoot = getSettingsHelpRoot()) {
        DIAGNOSTIC(note, "Saving settingValue ", value);
        helpRoot->set<fl::ustring>(name, value, "session");
    }
}

fl::ustring readSupportPackageRoot() {
    const SupportPackageRootReader reader;
    fl::ustring spRoot = reader.getSupportPackageRootNoCreate();
    DIAGNOSTIC(note, "spRoot ", spRoot);
    DIAGNOSTIC(note, "spRoot exists ", fl::filesystem::exists(spRoot));
    return spRoot;
}

// True if the folder holds the file, which proves installed documentation.
bool holdsProof(const upath& installedDocRoot, const fl::ustring& fileName) {
    const upath installedDocFile = installedDocRoot / fileName;
    DIAGNOSTIC(note, "installedDocFile ", installedDocFile);
    if (!fl::filesystem::exists(installedDocFile)) {
        return false;
    }
    DIAGNOSTIC(note, fileName, " file exists, returning installedDocRoot ", installedDocRoot);
    return true;
}

upath getInstalledDocRoot() {
    FUNCTION_TRACE("fl::filesystem::upath (anonymous namespace)::getInstalledDocRoot()");
    try {
        upath installedDocRoot = upath(readSupportPackageRoot()) / s_helpFolder;
        if (holdsProof(installedDocRoot, u"index.html") || holdsProof(installedDocRoot, u"documentation-center.html")) {
            return installedDocRoot;
        }
    } catch (const std::exception& e) {
        DIAGNOSTIC(error, "Error getting installed docroot: ", e.what());
    }
    DIAGNOSTIC(note, "Returning empty fl::filesystem::upath");
    return {};
}

// The path that the redirect file names; a relative one is resolved against the default root.
upath redirectTarget(const std::string& text, const upath& defaultDocroot) {
    upath target(fl::i18n::utf8_to_ustring(text));
    if (fl::filesystem::detail::is_absolute(target.native())) {
        return target;
    }
    upath resolved = defaultDocroot / target.native();
    DIAGNOSTIC(note, "Resolved relative path to: ", foundation::log::utf16_piece{resolved.native()});
    return resolved;
}

upath getDocrootRedirect(const upath& defaultDocroot) {
    FUNCTION_TRACE("fl::filesystem::upath (anonymous namespace)::getDocrootRedirect(const fl::filesystem::upath &)");
    const upath file = defaultDocroot / u"docroot.txt";
    DIAGNOSTIC(note, "Looking for docroot.txt file at ", foundation::log::utf16_piece{file.native()});
    if (fl::filesystem::exists(file)) {
        std::string text = foundation::read_text_file(to_string(file));
        foundation::trimmer()(text);
        DIAGNOSTIC(note, "Using docroot.txt to redirect docroot to ", text);
        const upath target = redirectTarget(text, defaultDocroot);
        if (fl::filesystem::exists(target)) {
            return fl::filesystem::canonical(target, upath());
        }
        DIAGNOSTIC(note, "Redirected docroot folder does not exist");
    }
    DIAGNOSTIC(note, "No valid redirect found, using default docroot");
    return {};
}

}  // namespace

DocrootCache::DocrootCache() {
    FUNCTION_TRACE("docroot_cache::DocrootCache::DocrootCache()");
    init();
}

void DocrootCache::init() {
    FUNCTION_TRACE("void docroot_cache::DocrootCache::init()");
    setDocContentRoot(getInitialDocroot());
    setDocDataRoot(getInitialDocDataRoot());
    m_needsInit = false;  // the setter above has just set it
}

void DocrootCache::setDocContentRoot(const upath& path) {
    FUNCTION_TRACE("void docroot_cache::DocrootCache::setDocContentRoot(const fl::filesystem::upath &)");
    m_docroot = path.empty() ? getInitialDocroot() : path;
    DIAGNOSTIC(note, "m_docroot ", m_docroot);
    writeSetting(s_docRoot, m_docroot);
}

void DocrootCache::setDocroot(const upath& path) {
    FUNCTION_TRACE("void docroot_cache::DocrootCache::setDocroot(const fl::filesystem::upath &)");
    setDocContentRoot(path);
    // `path`, not m_docroot: an empty argument doesn't move the data root to the resolved root.
    if (isValidDataRoot(path)) {
        setDocDataRoot(path);
    }
    m_needsInit = true;
}

void DocrootCache::setDocDataRoot(const upath& path) {
    FUNCTION_TRACE("void docroot_cache::DocrootCache::setDocDataRoot(const fl::filesystem::upath &)");
    m_docDataRoot = path.empty() ? getInitialDocDataRoot() : path;
    DIAGNOSTIC(note, "m_docDataRoot ", m_docDataRoot);
    writeSetting(s_docDataRoot, m_docDataRoot);
    m_needsInit = true;
}

upath DocrootCache::getDocroot() {
    FUNCTION_TRACE("fl::filesystem::upath docroot_cache::DocrootCache::getDocroot()");
    if (m_needsInit) {
        init();
    }
    return m_docroot;
}

upath DocrootCache::getDocDataRoot() {
    FUNCTION_TRACE("fl::filesystem::upath docroot_cache::DocrootCache::getDocDataRoot()");
    if (m_needsInit) {
        init();
    }
    return m_docDataRoot;
}

upath DocrootCache::getInitialDocroot() const {
    FUNCTION_TRACE("fl::filesystem::upath docroot_cache::DocrootCache::getInitialDocroot() const");
    if (upath docRootFromSetting = readSetting(s_docRoot); !docRootFromSetting.empty()) {
        DIAGNOSTIC(note, "Returning docRootFromSetting ", docRootFromSetting);
        return docRootFromSetting;
    }
    if (upath installedDocRoot = getInstalledDocRoot(); !installedDocRoot.empty()) {
        DIAGNOSTIC(note, "Returning installedDocRoot ", installedDocRoot);
        return installedDocRoot;
    }
    upath defaultDocroot = getDefaultDocroot();
    if (upath redirect = getDocrootRedirect(defaultDocroot); !redirect.empty()) {
        DIAGNOSTIC(note, "Default docroot redirected to ", redirect);
        return redirect;
    }
    DIAGNOSTIC(note, "Using default initial docroot (<vorlanroot>/help)");
    return defaultDocroot;
}

upath DocrootCache::getInitialDocDataRoot() {
    FUNCTION_TRACE("fl::filesystem::upath docroot_cache::DocrootCache::getInitialDocDataRoot()");
    if (upath docDataRootFromSetting = readSetting(s_docDataRoot); !docDataRootFromSetting.empty()) {
        DIAGNOSTIC(note, "Returning docDataRootFromSetting ", docDataRootFromSetting);
        return docDataRootFromSetting;
    }
    if (isValidDataRoot(m_docroot)) {
        DIAGNOSTIC(note, "Returning m_docroot ", m_docroot);
        return m_docroot;
    }
    DIAGNOSTIC(note, "Returning default docroot");
    return getDefaultDocroot();
}

upath DocrootCache::getDefaultDocroot() const {
    FUNCTION_TRACE("fl::filesystem::upath docroot_cache::DocrootCache::getDefaultDocroot() const");
    try {
        const fl::ustring installRoot = fl::filesystem::get_install_path();
        if (installRoot.empty()) {
            DIAGNOSTIC(error, "VORLAN Root is empty");
        }
        return upath(installRoot) / s_helpFolder;
    } catch (const std::exception& e) {
        DIAGNOSTIC(error, "Error while getting docroot: ", e.what());
    }
    DIAGNOSTIC(note, "Returning empty fl::filesystem::upath");
    return {};
}

bool DocrootCache::isValidDataRoot(const upath& path) {
    FUNCTION_TRACE("bool docroot_cache::DocrootCache::isValidDataRoot(const fl::filesystem::upath &)");
    try {
        const upath dataRootMarkerFile = path / u"docCatalog" / u"dataroot.txt";
        const bool exists = fl::filesystem::exists(dataRootMarkerFile);
        DIAGNOSTIC(note, "dataRootMarkerFile ", dataRootMarkerFile, " exists? ", exists);
        return exists;
    } catch (const std::exception& e) {
        DIAGNOSTIC(error, "Error validating data root: ", e.what());
    }
    DIAGNOSTIC(note, "Returning false");
    return false;
}

upath DocrootCache::readSetting(const std::string& name) const {
    FUNCTION_TRACE("fl::filesystem::upath docroot_cache::DocrootCache::readSetting(const std::string &) const");
    const fl::ustring value = getSetting(name);
    if (value.empty()) {
        DIAGNOSTIC(note, name, " setting is empty, return empty upath");
        return {};
    }
    try {
        upath path(value);
        DIAGNOSTIC(note, "path ", path);
        return path;
    } catch (const std::exception& e) {
        DIAGNOSTIC(error, "Error getting upath for ", name, " setting: ", e.what());
    }
    DIAGNOSTIC(note, "Returning empty fl::filesystem::upath");
    return {};
}

void DocrootCache::writeSetting(const std::string& name, const upath& path) {
    FUNCTION_TRACE(
        "void docroot_cache::DocrootCache::writeSetting(const std::string &, const fl::filesystem::upath &)");
    // A copy of the text: a settings service that calls back may change m_docroot.
    setSetting(name, fl::ustring(path.native()));
}

}  // namespace docroot_cache
