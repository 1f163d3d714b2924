#pragma once

#include <string>

#include "foundation/basic_path.hpp"

namespace docroot_cache {

// Finds, keeps and persists the documentation root, where the documentation content lives, and the documentation data
// root, which holds the catalogue. Use doc_products_shared::Docroot instead: it adds the process-wide instance, the
// lock and the listeners. This class isn't safe for concurrent use.
//
// Every stored value is written at once to the setting of the same name, `DocRoot` or `DocDataRoot` in the group
// "vorlan.help", at the level "session", even if it hasn't changed. A folder is a data root if it holds the marker,
// docCatalog/dataroot.txt.
//
// An empty path means "no value" throughout: as an argument it asks for a fresh resolution, in a setting it counts as
// unset, and a source that gives it is skipped. Paths are copied in and out; nothing is shared.
//
// Precedence, highest first. The root: the setting; "help" below the support-package root, if it holds an index.html
// or a documentation-center.html; the path that docroot.txt in the default root names, if it exists; the default
// root, "help" below the install root. The data root: the setting; the current root, if it holds the marker; the
// default root. A setting is used unchecked, whether or not its path exists.
//
// If a call to the host throws a std::exception:
//
//     call                                    guarded  logged error                       what follows
//     context, settings root, settings node   yes      Error getting setting              as without settings
//     reading a setting                       no       -                                  reaches the caller
//     writing a setting                       no       -                                  reaches the caller
//     support-package root, its two proofs    yes      Error getting installed docroot    the next source
//     install root                            yes      Error while getting docroot        an empty default root
//     docroot.txt and the path that it names  no       -                                  reaches the caller
//     the marker                              yes      Error validating data root         no data root
//
// Other exceptions reach the caller. Without settings, reads find nothing and writes do nothing.
class DocrootCache {  // exported: see src/docproducts.map
public:
    // Resolves both roots at once and writes both settings. If that throws there is no object.
    DocrootCache();

    // Resolves both roots, the data root second because it looks at the root, and writes both settings.
    void init();

    // Stores the root, or for an empty path a newly resolved one, and writes `DocRoot`. Unlike the two setters below,
    // doesn't make the next read resolve again.
    void setDocContentRoot(const fl::filesystem::upath& path);

    // Stores the root as above, and as the data root too if `path` holds the marker; otherwise the data root and its
    // setting stay. The next read resolves again.
    void setDocroot(const fl::filesystem::upath& path);

    // Stores the data root, or for an empty path a newly resolved one, and writes `DocDataRoot`. The marker isn't
    // required. The next read resolves again.
    void setDocDataRoot(const fl::filesystem::upath& path);

    // The root and the data root. The first read after a set resolves both again and writes both settings; any other
    // read is a copy, without disk or settings access. If the resolution throws, the next read tries again.
    fl::filesystem::upath getDocroot();
    fl::filesystem::upath getDocDataRoot();

    // Resolve the root, and the data root for the present root. Store and write nothing.
    fl::filesystem::upath getInitialDocroot() const;
    fl::filesystem::upath getInitialDocDataRoot();

    // "help" below the install root; the relative path "help" if that is empty; empty after a failure. The disk isn't
    // consulted.
    fl::filesystem::upath getDefaultDocroot() const;

    // True if the path holds the marker, a file of any kind; false after a failure too.
    bool isValidDataRoot(const fl::filesystem::upath& path);

    // The setting as a path; empty if it is unset or there are no settings.
    fl::filesystem::upath readSetting(const std::string& name) const;

    // Writes the path's text to the setting, at the level "session"; of the empty path, the empty text.
    void writeSetting(const std::string& name, const fl::filesystem::upath& path);

private:
    fl::filesystem::upath m_docroot;
    fl::filesystem::upath m_docDataRoot;
    bool m_needsInit = true;  // the next read resolves before it answers
};

}  // namespace docroot_cache
