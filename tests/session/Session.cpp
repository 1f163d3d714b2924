#include "session/Session.hpp"

#include <boost/algorithm/string.hpp>
#include <iostream>
#include <stdexcept>

#include "doc_products_shared/DocProductCacheManager.hpp"
#include "doc_products_shared/DocSetJsonParser.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "fl/i18n.hpp"
#include "vorlan/host.hpp"

namespace session {

using namespace doc_products_shared;
using docroot_cache::DocrootCache;
using fl::filesystem::upath;
using foundation::log::level;

namespace {

// The first word, and what follows the blank behind it.
std::pair<std::string, std::string> split(const std::string& line, char at = ' ') {
    const std::size_t end = line.find(at);
    return end == std::string::npos ? std::pair(line, std::string())
                                    : std::pair(line.substr(0, end), line.substr(end + 1));
}

std::string shown(const upath& path) {
    return path.empty() ? "(empty)" : fl::i18n::to_string(path.native());
}

std::string shown(bool value) {
    return value ? "true" : "false";
}

std::string shown(const DocProduct& product) {
    std::string text = product.getDisplayName() + " | " + product.getHelpLocation() + " | " + product.getShortName() +
                       " | " + product.getBaseCode() + " | " + product.getAltShortName() + " | " +
                       product.getAvailability();
    for (const ProductFamily& family : product.getProductFamilies()) {
        text += " | " + family.getFamily() + "/" + family.getGroup();
    }
    return text + "\n";
}

std::string shown(const std::vector<TopLevelDocProductPtr>& products) {
    std::string text;
    for (const auto& product : products) {
        text += shown(*product);
    }
    return text.empty() ? "(none)" : text;
}

std::string shown(const DocumentationSet& set) {
    return "format " + set.getFormat() + ", release " + set.getRelease() + "\n" + shown(set.getTopLevelProducts());
}

std::string catalogueText(const std::string& names) {
    std::vector<std::string> words;
    std::string products;
    for (const std::string& name : boost::split(words, names, boost::is_any_of(" "))) {
        const std::string location = boost::to_lower_copy(name);
        products += products.empty() ? "" : ", ";
        products += R"({"product": {"display_name": ")" + name + R"(", "help_location": ")" + location +
                    R"(", "short_name": ")" + location + R"(", "basecode": ")" + name +
                    R"(", "product_family_list": []}})";
    }
    return R"({"documentation_set": {"format": "", "release": "", "product_list": [)" +
           (names.empty() ? "" : products) + "]}}";
}

template <class Roots>
std::string runOnRoots(Roots& roots, const std::string& operation, const upath& argument) {
    if (operation == "setDocroot") {
        roots.setDocroot(argument);
    } else if (operation == "setDocDataRoot") {
        roots.setDocDataRoot(argument);
    } else {
        return shown(operation == "getDocroot" ? roots.getDocroot() : roots.getDocDataRoot());
    }
    return "";
}

}  // namespace

Session::Session() {
    m_folder.makeFolder("vorlan/help");
    vorlan::setInstallRoot(wide("$T/vorlan"));
    vorlan::setSupportPackageRoot(wide("$T/packages"));
    addScene();
    addHost();
    addOperations();
}

std::string Session::type(const std::string& line) {
    std::streambuf* const errors = std::cerr.rdbuf(m_errors.rdbuf());
    std::string result;
    try {
        result = run(line);
    } catch (const std::exception& e) {
        result = "! " + std::string(e.what());
    } catch (int) {
        result = "! no standard exception";
    }
    std::cerr.rdbuf(errors);
    return m_folder.generic(observed() + result);
}

std::string Session::run(const std::string& line) {
    const auto [command, argument] = split(line);
    return m_commands.at(command)(argument);
}

std::string Session::observed() {
    std::string text = m_log ? m_log->take() : "";
    for (const std::string& call : m_services.take()) {
        for (const std::string& start : m_shownCalls) {
            text += call.starts_with(start) ? "* " + call + "\n" : "";
        }
    }
    const std::string errors = m_errors.str();
    m_errors.str("");
    return errors.empty() ? text : text + "stderr: " + errors + "\n";
}

fl::ustring Session::wide(const std::string& text) const {
    return fl::i18n::to_ustring(boost::replace_all_copy(text, "$T", m_folder.path().native()));
}

void Session::addScene() {
    m_commands["file"] = [this](const std::string& argument) {
        const auto [name, text] = split(argument);
        m_folder.write(name, fl::i18n::to_string(wide(text)));
        return "";
    };
    m_commands["catalogue"] = [this](const std::string& argument) {
        const auto [name, products] = split(argument);
        return m_folder.write(name, catalogueText(products)), "";
    };
    m_commands["folder"] = [this](const std::string& name) { return m_folder.makeFolder(name), ""; };
    m_commands["install-root"] = [this](const std::string& text) { return vorlan::setInstallRoot(wide(text)), ""; };
    m_commands["packages"] = [this](const std::string& text) {
        return vorlan::setSupportPackageRoot(wide(text)), "";
    };
    m_commands["settings"] = [](const std::string& state) {
        return state == "on" ? vorlan::openSettings() : vorlan::closeSettings(), "";
    };
    m_commands["set"] = [this](const std::string& argument) {
        const auto [setting, text] = split(argument);
        const auto [name, atLevel] = split(setting, '@');
        const std::uint64_t before = vorlan::deliveredEvents();
        vorlan::setSetting("vorlan.help." + name, wide(text), atLevel.empty() ? "session" : atLevel);
        vorlan::waitForEvents();
        const std::uint64_t events = vorlan::deliveredEvents() - before;
        return events == 0 ? "" : "events: " + std::to_string(events);
    };
    m_commands["held"] = [](const std::string& setting) {
        const auto [name, atLevel] = split(setting, '@');
        const auto text = vorlan::settingAt("vorlan.help." + name, atLevel);
        return text ? "\"" + fl::i18n::to_string(*text) + "\"" : "unset";
    };
}

void Session::addHost() {
    m_commands["fail"] = [this](const std::string& argument) {
        const bool oddly = argument.starts_with("oddly ");
        const std::string call = oddly ? split(argument).second : argument;
        m_services.on(fl::i18n::to_string(wide(call)), [oddly] {
            if (oddly) {
                throw 7;
            }
            throw std::runtime_error("broken");
        });
        return "";
    };
    m_commands["nothing"] = [this](const std::string& call) { return m_services.answerNothing(call), ""; };
    m_commands["heal"] = [this](const std::string&) { return m_services.reset(), ""; };
    m_commands["calls"] = [this](const std::string& argument) {
        boost::split(m_shownCalls, argument, boost::is_any_of(","));
        m_services.take();
        return "";
    };
    m_commands["log"] = [this](const std::string& argument) {
        static const std::map<std::string, level> s_levels = {{"note", level::note},
                                                              {"detail", level::detail},
                                                              {"enter", level::enter},
                                                              {"exit", level::exit},
                                                              {"error", level::error}};
        Words words;
        std::vector<level> levels;
        for (const std::string& word : boost::split(words, argument, boost::is_any_of(" "))) {
            levels.push_back(s_levels.at(word));
        }
        m_log.reset();
        m_log = std::make_unique<support::RecordLog>(levels);
        return "";
    };
    m_commands["break-log"] = [this](const std::string& start) { return m_log->failAt(start), ""; };
}

void Session::addOperations() {
    m_commands["cache"] = [this](const std::string& argument) { return onCache(argument); };
    m_commands["docroot"] = [this](const std::string& argument) { return onDocroot(argument); };
    m_commands["parse"] = [this](const std::string& file) { return shown(DocSetJsonParser().parse(wide(file))); };
    m_commands["collector"] = [this](const std::string& file) {
        m_collector = std::make_shared<DocProductCollector>(path(file));
        return "";
    };
    m_commands["find"] = [this](const std::string& file) {
        return shown(m_collector->findDocsetJsonFile(path(file)));
    };
    m_commands["installed"] = [this](const std::string&) {
        return shown(*m_collector->getInstalledTopLevelDocProducts());
    };
    m_commands["info"] = [this](const std::string& name) {
        const auto product = m_collector->getProductInfo(name);
        return product ? shown(*product) : "(none)";
    };
    m_commands["request"] = [this](const std::string&) { return request(); };
    m_commands["name"] = [this](const std::string& file) {
        return DocProductCacheManager::getInstance().setDocsetJsonFile(path(file)), "";
    };
}

std::string Session::onCache(const std::string& argument) {
    const auto [operation, rest] = split(argument);
    if (operation == "new") {
        m_cache = std::make_unique<DocrootCache>();
    } else if (operation == "init") {
        m_cache->init();
    } else if (operation == "setDocContentRoot") {
        m_cache->setDocContentRoot(path(rest));
    } else if (operation == "getInitialDocroot") {
        return shown(m_cache->getInitialDocroot());
    } else if (operation == "getInitialDocDataRoot") {
        return shown(m_cache->getInitialDocDataRoot());
    } else if (operation == "getDefaultDocroot") {
        return shown(m_cache->getDefaultDocroot());
    } else if (operation == "isValidDataRoot") {
        return shown(m_cache->isValidDataRoot(path(rest)));
    } else if (operation == "readSetting") {
        return shown(m_cache->readSetting(rest));
    } else if (operation == "writeSetting") {
        const auto [name, value] = split(rest);
        m_cache->writeSetting(name, path(value));
    } else {
        return runOnRoots(*m_cache, operation, path(rest));
    }
    return "";
}

std::string Session::onDocroot(const std::string& argument) const {
    const auto [operation, rest] = split(argument);
    Docroot& docroot = Docroot::getInstance();
    const std::string result = operation == "new" ? "" : runOnRoots(docroot, operation, path(rest));
    vorlan::waitForEvents();
    return result;
}

// What the manager hands out, against what it handed out before.
std::string Session::request() {
    const auto former = m_collector;
    m_collector = DocProductCacheManager::getInstance().getDocProductCache();
    if (!m_collector) {
        return "null";
    }
    return m_collector == former ? "the same" : "another";
}

}  // namespace session
