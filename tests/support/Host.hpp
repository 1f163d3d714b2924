#pragma once

#include <algorithm>
#include <array>
#include <boost/algorithm/string/replace.hpp>
#include <boost/format.hpp>
#include <boost/log/core.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/make_shared.hpp>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <mutex>

#include "fl/i18n.hpp"
#include "foundation/basic_path.hpp"
#include "foundation/log/level.hpp"
#include "vorlan/ObservedServices.hpp"
#include "vorlan/host.hpp"

namespace support {

using boost::algorithm::replace_all_copy;
using Strings = std::vector<std::string>;

// A std::exception of no kind that the standard library throws.
struct Broken : std::exception {
    const char* what() const noexcept override { return "broken"; }
};

// Thrown by an action to make its call return null, empty or false.
struct Nothing {};

// A host for one test. It has a temporary folder of its own, "$T" in texts, with the install root $T/vorlan, whose
// help folder exists, and the support-package root $T/packages, which doesn't exist. Its settings are empty. Its
// services are the real ones, but each call is recorded and can be made to fail.
class Host : public vorlan::ObservedServices {
public:
    using Action = std::function<void(const std::string& call)>;

    explicit Host(const std::vector<std::function<void(Host&)>>& scene = {}) {
        write("vorlan/help/");
        vorlan::closeSettings();
        vorlan::openSettings();
        vorlan::setInstallRoot(path("$T/vorlan").native());
        vorlan::setSupportPackageRoot(path("$T/packages").native());
        for (const auto& step : scene) {
            step(*this);
        }
        calls();
    }
    ~Host() override {
        vorlan::useServices(m_former);
        std::filesystem::remove_all(m_folder);
    }

    const std::filesystem::path& folder() const { return m_folder; }

    // Replace "$T" with the folder's path, and the reverse.
    std::string expand(const std::string& text) const { return replace_all_copy(text, "$T", m_folder.native()); }
    std::string shorten(const std::string& text) const { return replace_all_copy(text, m_folder.native(), "$T"); }
    fl::filesystem::upath path(const std::string& text) const {
        return fl::filesystem::upath(fl::i18n::to_ustring(expand(text)));
    }
    std::string shown(const fl::filesystem::upath& path) const { return shorten(fl::i18n::to_string(path.native())); }

    // Writes a file and creates the folders above it. A name that ends in "/" only creates a folder.
    void write(const std::string& name, const std::string& text = "") const {
        std::filesystem::create_directories((m_folder / name).parent_path());
        name.ends_with('/') ? void() : void(std::ofstream(m_folder / name) << text);
    }

    // Sets a setting of the group "vorlan.help" from outside, and waits until its listeners have run.
    void set(const std::string& name, const std::string& value, const std::string& level = "session") const {
        vorlan::setSetting("vorlan.help." + name, path(value).native(), level);
        vorlan::waitForEvents();
    }

    // Runs `action` before each call, or before those that start with `start`, instead of the former action. The call
    // throws what the action throws, except Nothing.
    void on(const Action& action) {
        const std::lock_guard lock(m_mutex);
        m_action = action;
    }
    void on(const std::string& start, const std::function<void()>& action) {
        on([=](const std::string& call) { call.starts_with(start) ? action() : void(); });
    }

    // The calls recorded since this was last called that start with one of `starts`, oldest first, one per line.
    std::string calls(const Strings& starts = {""}) {
        const std::lock_guard lock(m_mutex);
        std::string lines;
        for (const std::string& call : std::exchange(m_calls, {})) {
            const bool isOne = std::ranges::any_of(starts, [&](auto& start) { return call.starts_with(start); });
            lines += isOne ? call + "\n" : "";
        }
        return lines;
    }

private:
    // Records a call and runs the action on it.
    bool observe(const std::string& call) override {
        std::unique_lock lock(m_mutex);
        m_calls.push_back(shorten(call));
        const Action action = m_action;
        lock.unlock();
        try {
            action ? action(shorten(call)) : void();
        } catch (Nothing) {
            return false;
        }
        return true;
    }
    static std::filesystem::path makeFolder() {
        std::string pattern = std::filesystem::canonical(std::filesystem::temp_directory_path()) / "docproducts-XXXXXX";
        return ::mkdtemp(pattern.data());
    }

    const std::filesystem::path m_folder = makeFolder();
    std::mutex m_mutex;  // guards the next two
    Strings m_calls;
    Action m_action;
    vorlan::Services& m_former = vorlan::useServices(*this);
};

// Prepares the disk or the settings for a test. Names are relative to the host's folder. Texts may hold "$T".
using Step = std::function<void(Host&)>;

inline Step withFile(const std::string& name, const std::string& text = "") {
    return [=](Host& host) { host.write(name, host.expand(text)); };
}

inline Step withLink(const std::string& target, const std::string& name) {
    return [=](Host& host) { std::filesystem::create_symlink(host.expand(target), host.folder() / name); };
}

inline Step withSetting(const std::string& name, const std::string& value, const std::string& level = "session") {
    return [=](Host& host) { host.set(name, value, level); };
}

// A product's display name, location, short name, base code, status and families.
using Product = std::array<std::string, 6>;

inline Step withCatalogue(const std::string& file, const std::vector<Product>& products) {
    std::string list;
    for (const auto& [name, location, shortName, baseCode, status, families] : products) {
        boost::format entry(R"({"product": {"display_name": "%1%", "help_location": "%2%", "short_name": "%3%",
                                "basecode": "%4%", "status": "%5%", "product_family_list": [%6%]}})");
        list += (list.empty() ? "" : ",") + str(entry % name % location % shortName % baseCode % status % families);
    }
    return withFile(file, R"({"documentation_set": {"format": "", "release": "", "product_list": [)" + list + "]}}");
}

using foundation::log::level;

// The bits of the levels.
constexpr std::uint32_t maskOf(auto... levels) {
    return (0U | ... | static_cast<std::uint32_t>(levels));
}

// Collects the log records of the process as text, one per line: two blanks for each level of depth, then "> " for an
// entry, "< " for an exit, and "note: ", "detail: " or "error: " for the rest.
class RecordLog {
public:
    // Enables the levels of the mask in the library's loggers.
    explicit RecordLog(std::uint32_t mask = ~0U) {
        boost::log::core::get()->add_sink(m_sink);
        vorlan::setLevelMask("doc_products_shared", mask);
    }
    ~RecordLog() { boost::log::core::get()->remove_sink(m_sink); }

    // The lines since this was last called.
    std::string take() { return std::exchange(m_sink->locked_backend()->lines, {}); }

private:
    struct Backend : boost::log::sinks::basic_sink_backend<boost::log::sinks::synchronized_feeding> {
        void consume(const boost::log::record_view& record) {
            const auto depth = static_cast<std::size_t>(boost::log::extract<long>("Depth", record).get());
            const auto severity = static_cast<level>(boost::log::extract<int>("Severity", record).get());
            lines += std::string(2 * depth, ' ') + s_marks.at(severity) +
                     boost::log::extract<std::string>("Message", record).get() + "\n";
        }

        std::string lines;
    };

    using enum level;
    static inline const std::map<level, std::string> s_marks = {
        {note, "note: "}, {detail, "detail: "}, {error, "error: "}, {enter, "> "}, {exit, "< "}};

    using Sink = boost::log::sinks::synchronous_sink<Backend>;
    boost::shared_ptr<Sink> m_sink = boost::make_shared<Sink>();
};

}  // namespace support
