#pragma once

#include <memory>
#include <mutex>

#include "foundation/basic_path.hpp"

namespace docroot_cache {
class DocrootCache;
}

namespace foundation::msg_svc::eventmgr {
class Connection;
}

namespace doc_products_shared {

// The one object through which the process reads and changes the documentation root and the documentation data root.
// It holds no path of its own: docroot_cache::DocrootCache resolves, keeps and persists them, and tells what an empty
// path means, when a read resolves again, and what can throw. This adds the process-wide instance, one lock around
// every access, and two listeners that carry changes of the settings `DocRoot` and `DocDataRoot` into the cache.
//
// Precedence. Whoever sets last wins, a caller or the settings: a change of a setting from outside ends in the setter
// of the same name, which writes the value back at the level "session". A listener's failure is logged and the event
// is dropped.
//
// Any thread may call any operation; each holds the lock to its end, file tests and settings writes included, and
// releases it when an exception passes. The lock isn't recursive, so change events must never be delivered inside a
// settings call of this object on the same thread.
class Docroot {  // its operations are listed in the library's version script
public:
    // The instance, built on first use and kept to process exit. If building it throws, what was thrown comes out
    // here, and the next call builds anew.
    static Docroot& getInstance();

    // Resolves both roots and writes both settings, then listens on `DocRoot` and on `DocDataRoot`. A listener that
    // can't be installed is logged and done without.
    Docroot();
    Docroot(const Docroot&) = delete;
    Docroot& operator=(const Docroot&) = delete;
    ~Docroot();

    void setDocroot(fl::filesystem::upath path);
    void setDocDataRoot(fl::filesystem::upath path);
    fl::filesystem::upath getDocroot();
    fl::filesystem::upath getDocDataRoot();

private:
    void closeListeners() noexcept;

    std::mutex m_mutex;  // serialises the four accessors
    std::unique_ptr<foundation::msg_svc::eventmgr::Connection> m_docRootChangeListener;      // empty: none installed
    std::unique_ptr<foundation::msg_svc::eventmgr::Connection> m_docDataRootChangeListener;  // empty: none installed
    std::shared_ptr<docroot_cache::DocrootCache> m_docrootCache;
};

}  // namespace doc_products_shared
