#pragma once

#include <memory>
#include <mutex>

#include "doc_products_shared/DocProductCollector.hpp"
#include "foundation/basic_path.hpp"

namespace doc_products_shared {

// The library's entry to the catalogue: keeps one collector and hands it out until a root has changed or another
// catalogue file was named. Nobody tells it of a change; each request compares the roots that Docroot reports with
// those of the last rebuild, on their text alone.
//
// A failed rebuild is reported once, by exception. Later requests answer with the last collector that was built, or
// with a null pointer if there is none, until a root changes or a catalogue file is named again.
//
// Any thread may call getInstance, getDocProductCache and setDocsetJsonFile. One lock covers a request to its end, a
// whole rebuild included; callers use the collector outside it.
class DocProductCacheManager {  // its operations are listed in the library's version script
public:
    static DocProductCacheManager& getInstance();

    // The current collector, rebuilt first if need be. Null while both roots are empty and no file was named, and
    // after a failed first rebuild. Throws what Docroot and a rebuild throw. A request on an unchanged system reads
    // two roots and touches no file.
    std::shared_ptr<DocProductCollector> getDocProductCache() const;

    // The check and the rebuild of a request. Takes no lock: getDocProductCache calls it with the lock held.
    void validateDocCollector() const;

    // Names the preferred catalogue file for the next rebuild and those after it, and makes the next request rebuild.
    // An empty path forgets the preferred file. Reads nothing.
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
