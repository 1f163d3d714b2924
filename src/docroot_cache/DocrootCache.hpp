#pragma once

#include <string>

#include "foundation/basic_path.hpp"

namespace docroot_cache {

// Holds the documentation root, where the documentation content lives, and the documentation data root, below which
// the catalogue data lies: resolves them, keeps them, and writes every stored value through to the setting of the
// same name, `DocRoot` or `DocDataRoot` in the group "vorlan.help".
//
// An empty path means "no value" throughout: as an argument it asks for a fresh resolution, in a setting it counts as
// unset, from a resolution step it passes on to the next source. Paths are copied in and out; nothing is shared.
//
// Who wins. The root: the setting; "help" below the support-package root if it holds an index.html or a
// documentation-center.html; the path that docroot.txt in the default root names, if it exists; the default root,
// "help" below the install root. The data root: the setting; the current root if it holds the marker
// docCatalog/dataroot.txt; the default root. A setting is taken as it stands, whether or not the path exists.
//
// Every store is written at once, at the level "session", also when nothing has changed. Not finding something is no
// failure, and a std::exception while the disk is looked at or the settings are sought is logged and passes to the
// next source. What reading or writing a setting throws goes through to the caller, and so does a failure to read and
// resolve the redirect. Without settings reads find nothing and writes do nothing.
//
// Not safe for concurrent use; doc_products_shared::Docroot puts a lock around its instance.
class DocrootCache {  // its operations are listed in the library's version script
public:
    // Resolves both roots at once and writes both settings. If that throws there is no object.
    DocrootCache();

    // Resolves both roots, the data root second because it looks at the root, and writes both settings.
    void init();

    // Stores the root, or for an empty path a newly resolved one, and writes `DocRoot`. Unlike the two setters below
    // it leaves open whether the next read resolves again.
    void setDocContentRoot(const fl::filesystem::upath& path);

    // Stores the root as above, and as the data root too if `path` holds the marker; otherwise the data root and its
    // setting stay. The next read resolves again, settings first.
    void setDocroot(const fl::filesystem::upath& path);

    // Stores the data root, or for an empty path a newly resolved one, and writes `DocDataRoot`. No marker is asked
    // for. The next read resolves again, settings first.
    void setDocDataRoot(const fl::filesystem::upath& path);

    // The root and the data root. The first read after a set resolves both again and writes both settings; any other
    // is one copy, without disk or settings access. If the resolution throws, the next read tries again.
    fl::filesystem::upath getDocroot();
    fl::filesystem::upath getDocDataRoot();

    // Resolves the root, and the data root for the root now held. Stores and writes nothing.
    fl::filesystem::upath getInitialDocroot() const;
    fl::filesystem::upath getInitialDocDataRoot();

    // "help" below the install root, the relative path "help" where that is empty. Empty after a failure. The disk
    // isn't consulted.
    fl::filesystem::upath getDefaultDocroot() const;

    // True if the marker docCatalog/dataroot.txt, of whatever kind, stands below the path; false after a failure too.
    bool isValidDataRoot(const fl::filesystem::upath& path);

    // The setting as a path; empty where it is unset or there are no settings.
    fl::filesystem::upath readSetting(const std::string& name) const;

    // Writes the path's text to the setting, at the level "session". The empty path writes the empty text.
    void writeSetting(const std::string& name, const fl::filesystem::upath& path);

private:
    fl::filesystem::upath m_docroot;
    fl::filesystem::upath m_docDataRoot;
    bool m_needsInit = true;  // the next read resolves before it answers
};

}  // namespace docroot_cache
