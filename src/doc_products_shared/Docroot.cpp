#include "doc_products_shared/Docroot.hpp"

#include <boost/shared_ptr.hpp>
#include <exception>
#include <functional>
#include <string>

#include "docroot_cache/DocrootCache.hpp"
#include "docroot_cache/setting_names.hpp"
#include "foundation/diagnostic.hpp"
#include "foundation/function_trace.hpp"
#include "foundation/msg_svc/eventmgr.hpp"
#include "settings/core.hpp"
#include "settings/in_vorlan.hpp"
#include "vlutil/contextmgr.hpp"

namespace doc_products_shared {

using fl::filesystem::upath;
using foundation::msg_svc::eventmgr::Connection;
using settings::core::SettingsValueChangeEvent;

namespace {

namespace setting_names = docroot_cache::setting_names;

foundation::log::basic_diagnostic_logger<char> s_logger("doc_products_shared");

const std::string s_helpGroup = setting_names::helpGroup;
const std::string s_docRoot = setting_names::docRoot;
const std::string s_docDataRoot = setting_names::docDataRoot;

// Calls back with the setting's present value, not the event's: after two quick changes both calls may see the later
// one.
void handleChange(const SettingsValueChangeEvent& event, const std::string& name,
                  const std::function<void(const fl::ustring&)>& callback) {
    try {
        const auto group = event.getSubject()->getParent();
        if (!group) {
            return;
        }
        const fl::ustring value = group->get<fl::ustring>(name, "");
        DIAGNOSTIC(detail, "New setting: ", value);
        callback(value);
    } catch (const std::exception& e) {
        DIAGNOSTIC(error, "Error handling settings change event: ", e.what());
    }
}

// Listens on one setting, unless `connection` already does. Without settings, or after a failure, `connection` is
// unchanged.
void setSettingListener(const std::string group, const std::string name, std::unique_ptr<Connection>& connection,
                        const std::function<void(const fl::ustring&)>& callback) {
    FUNCTION_TRACE(
        "void (anonymous namespace)::setSettingListener(const std::string, const std::string, "
        "std::unique_ptr<foundation::msg_svc::eventmgr::Connection> &, "
        "const std::function<void (const fl::ustring &)> &)");
    if (connection) {
        return;
    }
    try {
        const auto root = settings::in_vorlan::getSettingsRoot(vlutil::contextmgr::ContextRegistry::getRtxID());
        if (!root) {
            return;
        }
        const auto node = root->getSettingsByFullName(group + "." + name);
        connection = settings::in_vorlan::addListener<SettingsValueChangeEvent>(
            node, [name, callback](const SettingsValueChangeEvent& event) { handleChange(event, name, callback); });
    } catch (const std::exception& e) {
        DIAGNOSTIC(error, "Caught exception: ", e.what());
    }
}

}  // namespace

Docroot& Docroot::getInstance() {
    FUNCTION_TRACE("static Docroot &doc_products_shared::Docroot::getInstance()");
    static Docroot s_instance;
    return s_instance;
}

Docroot::Docroot() {
    FUNCTION_TRACE("doc_products_shared::Docroot::Docroot()");
    m_docrootCache = std::make_shared<docroot_cache::DocrootCache>();
    try {
        setSettingListener(s_helpGroup, s_docRoot, m_docRootChangeListener, [this](const fl::ustring& newDocRoot) {
            DIAGNOSTIC(note, "m_docRootChangeListener callback: newDocRoot ", newDocRoot);
            const upath newDocRootPath(newDocRoot);
            DIAGNOSTIC(note, "m_docRootChangeListener callback: newDocRootPath ", newDocRootPath);
            setDocroot(newDocRootPath);
        });
        setSettingListener(
            s_helpGroup, s_docDataRoot, m_docDataRootChangeListener, [this](const fl::ustring& newDocDataRoot) {
                DIAGNOSTIC(note, "m_docDataRootChangeListener callback: newDocDataRoot ", newDocDataRoot);
                const upath newDocDataRootPath(newDocDataRoot);
                DIAGNOSTIC(note, "m_docDataRootChangeListener callback: newDocDataRootPath ", newDocDataRootPath);
                setDocDataRoot(newDocDataRootPath);
            });
    } catch (...) {
        closeListeners();
        throw;
    }
}

Docroot::~Docroot() {
    closeListeners();
}

// Called before the cache is destroyed, so that no handler finds it gone.
void Docroot::closeListeners() noexcept {
    m_docDataRootChangeListener.reset();
    m_docRootChangeListener.reset();
}

void Docroot::setDocroot(upath path) {
    FUNCTION_TRACE("void doc_products_shared::Docroot::setDocroot(fl::filesystem::upath)");
    const std::lock_guard lock(m_mutex);
    m_docrootCache->setDocroot(path);
}

void Docroot::setDocDataRoot(upath path) {
    FUNCTION_TRACE("void doc_products_shared::Docroot::setDocDataRoot(fl::filesystem::upath)");
    const std::lock_guard lock(m_mutex);
    m_docrootCache->setDocDataRoot(path);
}

upath Docroot::getDocroot() {
    FUNCTION_TRACE("fl::filesystem::upath doc_products_shared::Docroot::getDocroot()");
    const std::lock_guard lock(m_mutex);
    return m_docrootCache->getDocroot();
}

upath Docroot::getDocDataRoot() {
    FUNCTION_TRACE("fl::filesystem::upath doc_products_shared::Docroot::getDocDataRoot()");
    const std::lock_guard lock(m_mutex);
    return m_docrootCache->getDocDataRoot();
}

}  // namespace doc_products_shared
