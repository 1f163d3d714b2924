#pragma once

#include <memory>
#include <mutex>

#include "doc_products_shared/DocProductCollector.hpp"
#include "foundation/basic_path.hpp"

namespace doc_products_shared {

// Gives the products of the catalogue in force: the class for every user of the library. It keeps one
// DocProductCollector, which holds the answers, and rebuilds it after a root has changed or a catalogue file was
// named. It isn't notified of changes: each request compares the roots that Docroot reports with those of the last
// rebuild, by their text alone. So products that were installed in the meantime are seen after the next
// setDocsetJsonFile, even of the same file. A root that changes while the collector is being built, and changes back
// afterwards, goes unnoticed: the products of the other root stay until the next change.
//
// A failed rebuild is reported once, by exception. Later requests return the last collector that was built, or a null
// pointer if there is none, until a root changes or a catalogue file is named again.
//
// Any thread may call getInstance, getDocProductCache and setDocsetJsonFile. A lock is held for a whole request, any
// rebuild included; callers use the collector outside it. What Docroot.hpp says of callbacks, exit() and fork() holds
// here too.
class DocProductCacheManager {  // exported: see src/docproducts.map
public:
    // The instance, built on first use and kept until the process exits.
    static DocProductCacheManager& getInstance();

    // The current collector, rebuilt first if necessary. Null while both roots are empty and no file was named, and
    // after a failed first rebuild. Throws what Docroot and DocProductCollector's constructor throw. Without a change
    // a request reads two roots and accesses no file.
    std::shared_ptr<DocProductCollector> getDocProductCache() const;

    // Compares the roots and rebuilds if necessary. Takes no lock: getDocProductCache calls it with the lock held.
    void validateDocCollector() const;

    // Names the preferred catalogue file and makes the next request rebuild, even if nothing has changed. An empty
    // path means none. Reads nothing.
    void setDocsetJsonFile(fl::filesystem::upath docsetJsonFile) const;

private:
    static std::mutex s_mutex;                   // guards the rest
    static fl::filesystem::upath s_docroot;      // as seen by the last rebuild, successful or not
    static fl::filesystem::upath s_docDataRoot;  // likewise
    static fl::filesystem::upath s_docsetJsonFile;
    static std::shared_ptr<DocProductCollector> s_docCollector;  // of the last rebuild that succeeded
    static bool s_forceRebuild;
};

}  // namespace doc_products_shared
