#include <dlfcn.h>
#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <future>
#include <iostream>
#include <stdexcept>
#include <utility>

#include "fl/i18n.hpp"
#include "support/RecordLog.hpp"
#include "vorlan/host.hpp"
#include "vorlan/services.hpp"

// A host that takes the library in and lets go of it: unloading PLUGIN INSTALL_ROOT MODE. With "idle" it does so a
// hundred times after the last event, with "busy" a hundred times while one event is handled and others are pending;
// with "exit" and "return" it ends in the midst of them. The plug-in alone links the library.
namespace {

using foundation::msg_svc::eventmgr::Connection;

const std::string s_docRoot = "vorlan.help.DocRoot";
const std::string s_docDataRoot = "vorlan.help.DocDataRoot";

struct WatchedConnection : Connection {
    ~WatchedConnection() override { atEnd(); }

    std::unique_ptr<Connection> connection;
    std::function<void()> atEnd;
};

// Holds an event in its handler until the library has begun to end the registration.
class BusyServices : public vorlan::Services {
public:
    void beBusy() {
        m_handled = {};
        m_ends = {};
        m_armed = true;
        vorlan::setSetting(s_docRoot, u"/handled", "session");
        m_handled.get_future().wait();
        for (const char16_t* value : {u"/pending", u"/pending too"}) {  // to the listener that is ended first
            vorlan::setSetting(s_docDataRoot, value, "session");
        }
    }

    boost::shared_ptr<settings::core::Settings> parent(const settings::core::Settings& node) override {
        if (m_armed.exchange(false)) {
            m_handled.set_value();
            m_ends.get_future().wait();
        }
        return Services::parent(node);
    }

    std::unique_ptr<Connection> addListener(const settings::core::Settings& node,
                                            const vorlan::ChangeHandler& handler) override {
        auto watched = std::make_unique<WatchedConnection>();
        watched->connection = Services::addListener(node, handler);
        watched->atEnd = [this, last = node.getFullName() == s_docRoot] { last ? m_ends.set_value() : void(); };
        return watched;
    }

private:
    std::atomic<bool> m_armed = false;
    std::promise<void> m_handled;
    std::promise<void> m_ends;
};

void require(bool good, const char* what) {
    if (!good) {
        throw std::runtime_error(what);
    }
}

bool loaded() {
    void* const library = dlopen("libdocproducts.so.1", RTLD_NOW | RTLD_NOLOAD);
    return library != nullptr && dlclose(library) == 0;
}

// Loads the library and uses it, up to changes of the settings from outside. Logging begins when all else is built.
void* use(const char* plugin) {
    vorlan::clearSetting(s_docRoot, "session");
    vorlan::clearSetting(s_docDataRoot, "session");
    vorlan::setLevelMask("doc_products_shared", 0);
    void* const module = dlopen(plugin, RTLD_NOW | RTLD_LOCAL);
    require(module != nullptr && loaded(), "not loaded");
    const auto installedProducts = reinterpret_cast<std::size_t (*)()>(dlsym(module, "installedProducts"));
    require(installedProducts() == 11, "other products in the installation");
    vorlan::setLevelMask("doc_products_shared", ~0U);
    const std::uint64_t delivered = vorlan::deliveredEvents();
    vorlan::setSetting(s_docRoot, u"/nowhere", "session");
    vorlan::setSetting(s_docDataRoot, u"/nowhere", "session");
    vorlan::waitForEvents();
    require(vorlan::deliveredEvents() == delivered + 2, "events not delivered");
    require(installedProducts() == 0, "events without effect");
    return module;
}

void turn(const char* plugin, BusyServices* busy, support::RecordLog& log) {
    void* const module = use(plugin);
    require(!log.take().empty(), "nothing logged");
    const std::uint64_t delivered = vorlan::deliveredEvents();
    if (busy != nullptr) {
        busy->beBusy();
    }
    require(dlclose(module) == 0 && !loaded(), "still loaded");
    vorlan::setSetting(s_docRoot, u"/unheard", "session");
    vorlan::waitForEvents();
    require(vorlan::deliveredEvents() == delivered + (busy == nullptr ? 0 : 1), "events for nobody");
}

// Less growth than a tenth of what the smallest block left behind at each turn would make. A sanitizer's heap isn't
// seen here, and looks empty.
void turnAHundredTimes(const char* plugin, BusyServices* busy, support::RecordLog& log) {
    std::size_t before = 0;
    for (int count = 1; count <= 100; ++count) {
        turn(plugin, busy, log);
        before = count == 20 ? mallinfo2().uordblks : before;
    }
    const std::size_t after = mallinfo2().uordblks;
    std::cout << "heap in use after 20 turns: " << before << ", after 100: " << after << '\n';
    require(after < before + 256, "the heap grows");
}

void run(const char* plugin, const std::string& mode) {
    // Neither ends before the process has.
    static auto& log = *new support::RecordLog({});
    static auto& services = *new BusyServices;
    if (mode == "idle") {
        return turnAHundredTimes(plugin, nullptr, log);
    }
    vorlan::useServices(services);
    if (mode == "busy") {
        return turnAHundredTimes(plugin, &services, log);
    }
    use(plugin);
    if (mode == "return") {
        vorlan::setLevelMask("doc_products_shared", 0);  // what a thread logs with ends before the held handler does
    }
    services.beBusy();
    std::cout << "busy" << std::endl;
    if (mode == "exit") {
        std::exit(0);
    }
}

}  // namespace

int main(int /*argc*/, char** argv) {
    try {
        vorlan::setInstallRoot(fl::i18n::to_ustring(argv[2]));
        run(argv[1], argv[3]);
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        return 1;
    }
}
