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

// Reads and changes the documentation root and the documentation data root of the process: the class for every user
// of the library. Its docroot_cache::DocrootCache resolves, keeps and persists the paths, and that class's header
// defines the empty path, when a read resolves again, and what throws. This class adds the process-wide instance, a
// lock around every access, and two listeners that carry changes of the settings `DocRoot` and `DocDataRoot` into the
// cache.
//
// A change of a setting from outside calls the setter of the same name, which writes the value back at the level
// "session". That write is itself a change, and its event arrives later. So of two sets in quick succession the
// second can be undone by the event of the first. To avoid this, wait for the event of a set before the next set. If
// a listener fails, that is logged and the event is dropped.
//
// Any thread may call any operation. Each holds the lock until it returns or throws, also while it tests files and
// writes settings. The lock isn't recursive: a log sink, a settings service, a file test or a change event delivered
// inside a settings call deadlocks if it calls this object on the same thread.
//
// No call may run once exit() has been called or the library is being unloaded: the instance is destroyed then. After
// the first change event a child of fork() must not call the library; it may only exec.
class Docroot {  // exported: see src/docproducts.map
public:
    // The instance, built on first use and kept until the process exits. If the constructor throws, so does this, and
    // the next call tries again.
    static Docroot& getInstance();

    // Resolves both roots and writes both settings, then listens on `DocRoot` and on `DocDataRoot`. If a listener
    // can't be installed, that is logged and the object works without it.
    Docroot();
    Docroot(const Docroot&) = delete;
    Docroot& operator=(const Docroot&) = delete;
    ~Docroot();

    // The operations of DocrootCache, each under the lock.
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
