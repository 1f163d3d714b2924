#include "console/Console.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <boost/algorithm/string.hpp>
#include <boost/format.hpp>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <utility>

#include "doc_products_shared/DocProductCacheManager.hpp"
#include "doc_products_shared/DocSetJsonParser.hpp"
#include "fl/filesystem.hpp"
#include "fl/i18n.hpp"
#include "vorlan/host.hpp"

namespace console {

using namespace doc_products_shared;
using docroot_cache::DocrootCache;
using fl::filesystem::upath;
using foundation::log::level;

namespace {

const std::vector<std::pair<std::string, std::string>> s_longTexts = {
    {"$MEGABYTE", std::string(std::size_t{1} << 20U, 'm')},
    {"$PATH5000", "/" + std::string(200, 'p') + boost::replace_all_copy(std::string(4799, 'p'), "pp", "p/")},
    {"$NAME256", std::string(256, 'n')},
};

// The text up to the first such character, and what follows it.
std::pair<std::string, std::string> split(const std::string& text, char at = ' ') {
    const std::size_t end = std::min(text.find(at), text.size());
    return {text.substr(0, end), text.substr(std::min(end + 1, text.size()))};
}

std::vector<std::string> words(const std::string& text, const char* separator) {
    std::vector<std::string> result;
    return text.empty() ? result : boost::split(result, text, boost::is_any_of(separator));
}

std::string shown(const upath& path) {
    return path.empty() ? "(empty)" : fl::i18n::to_string(path.native());
}

std::string shown(const DocProduct& product) {
    std::vector<std::string> fields = {product.getDisplayName(),  product.getHelpLocation(),
                                       product.getShortName(),    product.getBaseCode(),
                                       product.getAltShortName(), product.getAvailability()};
    for (const ProductFamily& family : product.getProductFamilies()) {
        fields.push_back(family.getFamily() + "/" + family.getGroup());
    }
    return boost::join(fields, " | ") + "\n";
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
    std::vector<std::string> products;
    for (const std::string& name : words(names, " ")) {
        boost::format product(R"({"product": {"display_name": "%1%", "help_location": "%2%", "short_name": "%2%", )"
                              R"("basecode": "%1%", "product_family_list": []}})");
        products.push_back(boost::str(product % name % boost::to_lower_copy(name)));
    }
    return R"({"documentation_set": {"format": "", "release": "", "product_list": [)" + boost::join(products, ", ") +
           "]}}";
}

// Runs as a user who may look into the folder, but isn't root.
class Unprivileged {
public:
    explicit Unprivileged(const std::filesystem::path& folder) {
        std::filesystem::permissions(folder, std::filesystem::perms{0755});
        if (m_user == 0 && ::seteuid(s_nobody) != 0) {
            throw std::runtime_error("can't become another user");
        }
    }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;
    ~Unprivileged() { EXPECT_EQ(::seteuid(m_user), 0); }

private:
    static constexpr uid_t s_nobody = 65534;
    const uid_t m_user = ::geteuid();
};

template <class Roots>
std::string runOnRoots(Roots& roots, const std::string& operation, const upath& argument) {
    if (operation.starts_with("get")) {
        return shown(operation == "getDocroot" ? roots.getDocroot() : roots.getDocDataRoot());
    }
    operation == "setDocroot" ? roots.setDocroot(argument) : roots.setDocDataRoot(argument);
    return "";
}

}  // namespace

Console::Console()
    : m_trials([this](Text line) { return answer(line); }, [this] { return observed(); }, m_services, m_log) {
    m_folder.makeFolder("vorlan/help");
    vorlan::setInstallRoot(wide("$T/vorlan"));
    vorlan::setSupportPackageRoot(wide("$T/packages"));
    addScene();
    addHost();
    addPlatform();
    addOperations();
    addTrials();
}

std::string Console::type(Text line) {
    std::streambuf* const errors = std::cerr.rdbuf(m_errors.rdbuf());
    std::string result;
    try {
        result = answer(line);
    } catch (const std::exception& e) {
        result = "! " + std::string(e.what());
    } catch (int) {
        result = "! no standard exception";
    }
    std::cerr.rdbuf(errors);
    result = m_folder.generic(observed() + result);
    for (const auto& [name, meaning] : s_longTexts) {
        boost::replace_all(result, meaning, name);
    }
    return result;
}

std::string Console::answer(Text line) {
    const auto [word, rest] = split(line);
    return m_commands.at(word)(rest);
}

std::string Console::observed() {
    std::string text = m_log ? m_log->take() : "";
    for (const std::string& call : m_services.take()) {
        for (const std::string& start : m_shownCalls) {
            text += call.starts_with(start) ? "* " + call + "\n" : "";
        }
    }
    const std::string errors = m_errors.str();
    m_errors.str("");
    m_errors.clear();
    return errors.empty() ? text : text + "stderr: " + errors + "\n";
}

fl::ustring Console::wide(Text text) const {
    std::string expanded = boost::replace_all_copy(text, "$T", m_folder.path().native());
    for (const auto& [name, meaning] : s_longTexts) {
        boost::replace_all(expanded, name, meaning);
    }
    return fl::i18n::to_ustring(expanded);
}

void Console::addAction(Text word, std::function<void(Text)> action) {
    m_commands[word] = [action = std::move(action)](Text argument) {
        action(argument);
        return "";
    };
}

void Console::addScene() {
    addAction("file", [this](Text argument) {
        const auto [name, text] = split(argument);
        m_folder.write(name, fl::i18n::to_string(wide(text)));
    });
    addAction("catalogue", [this](Text argument) {
        const auto [name, products] = split(argument);
        m_folder.write(name, catalogueText(products));
    });
    addAction("folder", [this](Text name) { m_folder.makeFolder(name); });
    addAction("link", [this](Text argument) {
        std::filesystem::create_symlink(fl::i18n::to_string(wide(split(argument).first)),
                                        m_folder.path() / split(argument).second);
    });
    addAction("forbid", [this](Text name) { std::filesystem::permissions(m_folder.path() / name, {}); });
    addAction("allow", [this](Text name) {
        std::filesystem::permissions(m_folder.path() / name, std::filesystem::perms{0755});
    });
    addAction("context", [](Text number) { vorlan::setContext({static_cast<unsigned>(std::stoul(number))}); });
    addAction("install-root", [this](Text text) { vorlan::setInstallRoot(wide(text)); });
    addAction("packages", [this](Text text) { vorlan::setSupportPackageRoot(wide(text)); });
    addAction("settings", [](Text state) { state == "on" ? vorlan::openSettings() : vorlan::closeSettings(); });
    addAction("clear", [](Text setting) {
        vorlan::clearSetting("vorlan.help." + split(setting, '@').first, split(setting, '@').second);
        vorlan::waitForEvents();
    });
    m_commands["set"] = [this](Text argument) { return change(argument); };
    m_commands["held"] = [](Text setting) {
        const auto [name, atLevel] = split(setting, '@');
        const auto text = vorlan::settingAt("vorlan.help." + name, atLevel);
        return text ? "\"" + fl::i18n::to_string(*text) + "\"" : "unset";
    };
}

std::string Console::change(Text argument) const {
    const auto [setting, text] = split(argument);
    const auto [name, atLevel] = split(setting, '@');
    const std::uint64_t before = vorlan::deliveredEvents();
    vorlan::setSetting("vorlan.help." + name, wide(text), atLevel.empty() ? "session" : atLevel);
    vorlan::waitForEvents();
    const std::uint64_t events = vorlan::deliveredEvents() - before;
    return events == 0 ? "" : "events: " + std::to_string(events);
}

void Console::addHost() {
    addAction("fail", [this](Text argument) { fail(argument); });
    addAction("nothing", [this](Text call) { m_services.on(call, [] { throw support::Nothing(); }); });
    addAction("deliver", [this](Text name) { m_services.deliver("vorlan.help." + name); });
    m_commands["unprivileged"] = [this](Text line) {
        const Unprivileged user(m_folder.path());
        return answer(line);
    };
    addAction("heal", [this](Text) { m_services.reset(); });
    addAction("calls", [this](Text starts) { m_shownCalls = words(starts, ","), m_services.take(); });
    addAction("log", [this](Text levels) { show(levels); });
}

void Console::fail(Text argument) {
    const bool oddly = argument.starts_with("oddly ");
    m_services.on(fl::i18n::to_string(wide(oddly ? split(argument).second : argument)), [oddly] {
        if (oddly) {
            throw 7;
        }
        throw std::runtime_error("broken");
    });
}

void Console::show(Text levels) {
    static const std::map<std::string, level> s_levels = {{"note", level::note},
                                                          {"detail", level::detail},
                                                          {"enter", level::enter},
                                                          {"exit", level::exit},
                                                          {"error", level::error}};
    std::vector<level> shownLevels;
    for (const std::string& word : words(levels, " ")) {
        shownLevels.push_back(s_levels.at(word));
    }
    m_log.reset();
    m_log = std::make_unique<support::RecordLog>(shownLevels);
}

void Console::addPlatform() {
    m_commands["text"] = [](Text bytes) {
        std::string units;
        for (const char16_t unit : fl::i18n::to_ustring(bytes)) {
            units += boost::str(boost::format("%04X ") % static_cast<unsigned>(unit));
        }
        return units + (fl::i18n::to_string(fl::i18n::utf8_to_ustring(bytes)) == bytes ? "and back" : "but not back");
    };
    m_commands["units"] = [](Text hex) {
        fl::ustring units;
        for (const std::string& unit : words(hex, " ")) {
            units.push_back(static_cast<char16_t>(std::stoul(unit, nullptr, 16)));
        }
        return fl::i18n::to_string(units);
    };
    m_commands["join"] = [this](Text argument) {
        return shown(path(split(argument, ',').first) / wide(split(argument, ',').second));
    };
    m_commands["double"] = [this](Text name) {
        upath whole = path(name);
        return shown(whole /= whole.native());
    };
    m_commands["exists"] = [this](Text name) { return fl::filesystem::exists(path(name)) ? "true" : "false"; };
    m_commands["canonical"] = [this](Text argument) {
        return shown(fl::filesystem::canonical(path(split(argument).first), path(split(argument).second)));
    };
}

void Console::addOperations() {
    m_commands["cache"] = [this](Text argument) { return onCache(argument); };
    m_commands["docroot"] = [this](Text argument) { return onDocroot(argument); };
    m_commands["parse"] = [this](Text file) { return shown(DocSetJsonParser().parse(wide(file))); };
    addAction("collector", [this](Text file) { m_collector = std::make_shared<DocProductCollector>(path(file)); });
    m_commands["find"] = [this](Text file) { return shown(m_collector->findDocsetJsonFile(path(file))); };
    m_commands["installed"] = [this](Text) { return shown(*m_collector->getInstalledTopLevelDocProducts()); };
    m_commands["info"] = [this](Text name) {
        const auto product = m_collector->getProductInfo(name);
        return product ? shown(*product) : "(none)";
    };
    m_commands["request"] = [this](Text) { return request(); };
    addAction("name", [this](Text file) { DocProductCacheManager::getInstance().setDocsetJsonFile(path(file)); });
}

std::string Console::onCache(Text argument) {
    using Operation = std::function<std::string(DocrootCache&, const upath&)>;
    static const std::map<std::string, Operation> s_operations = {
        {"init", [](auto& cache, auto&) { return cache.init(), ""; }},
        {"setDocContentRoot", [](auto& cache, auto& path) { return cache.setDocContentRoot(path), ""; }},
        {"isValidDataRoot", [](auto& cache, auto& path) { return cache.isValidDataRoot(path) ? "true" : "false"; }},
        {"getInitialDocroot", [](auto& cache, auto&) { return shown(cache.getInitialDocroot()); }},
        {"getInitialDocDataRoot", [](auto& cache, auto&) { return shown(cache.getInitialDocDataRoot()); }},
        {"getDefaultDocroot", [](auto& cache, auto&) { return shown(cache.getDefaultDocroot()); }},
    };
    const auto [operation, rest] = split(argument);
    if (operation == "new") {
        return m_cache = std::make_unique<DocrootCache>(), "";
    }
    if (operation == "readSetting") {
        return shown(m_cache->readSetting(rest));
    }
    if (operation == "writeSetting") {
        return m_cache->writeSetting(split(rest).first, path(split(rest).second)), "";
    }
    const auto found = s_operations.find(operation);
    return found == s_operations.end() ? runOnRoots(*m_cache, operation, path(rest))
                                       : found->second(*m_cache, path(rest));
}

std::string Console::onDocroot(Text argument) {
    const auto [operation, rest] = split(argument);
    if (operation == "another") {
        m_docroot.reset();
        m_docroot = std::make_unique<Docroot>();
        return "";
    }
    Docroot& docroot = m_docroot ? *m_docroot : Docroot::getInstance();
    const std::string result = operation == "new" ? "" : runOnRoots(docroot, operation, path(rest));
    vorlan::waitForEvents();
    return result;
}

void Console::addTrials() {
    addAction("before", [this](Text lines) { m_trials.setBefore(lines); });
    addAction("behind", [this](Text lines) { m_trials.setBehind(lines); });
    const auto add = [this](Text word, std::string (Trials::*trial)(long, const std::string&)) {
        m_commands[word] = [this, trial](Text argument) {
            const auto [least, lines] = split(argument);
            return (m_trials.*trial)(std::stol(least), lines);
        };
    };
    add("starve", &Trials::starve);
    add("break-records", &Trials::breakRecords);
    add("break-calls", &Trials::breakCalls);
    m_commands["change-logging"] = [this](Text lines) { return m_trials.changeLogging(lines); };
}

// What the manager hands out, against what it handed out before.
std::string Console::request() {
    const auto former = m_collector;
    m_collector = DocProductCacheManager::getInstance().getDocProductCache();
    if (!m_collector) {
        return "null";
    }
    return m_collector == former ? "the same" : "another";
}

}  // namespace console
