#pragma once

#include <functional>
#include <map>
#include <memory>
#include <sstream>
#include <string>

#include "console/Trials.hpp"
#include "doc_products_shared/DocProductCollector.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "docroot_cache/DocrootCache.hpp"
#include "support/RecordLog.hpp"
#include "support/ScriptedServices.hpp"
#include "support/TemporaryFolder.hpp"

namespace console {

// clang-format off
// A host and the library in it, driven line by line, for the transcripts of the library's rooms. The install root is
// "$T/vorlan", whose help folder exists, the support-package root "$T/packages", which doesn't; the settings are empty.
// "$T" stands for a folder of the console's own, "$NAME256", "$PATH5000" and "$MEGABYTE" for texts of so many bytes.
//
// The scene:   file NAME [TEXT] | folder NAME | link TARGET NAME
//              catalogue FILE [NAME...]: products of that display name and base code; the name in lower case is their
//                  help location and short name
//              forbid NAME | allow NAME: whether it can be read, and searched; root always can
//              install-root [PATH] | packages [PATH] | settings on|off | context NUMBER
//              set NAME[@LEVEL] [TEXT]: a change from outside, delivered before the next line
//              clear NAME@LEVEL: takes away what a level of a setting holds
//              held NAME@LEVEL: what a level of a setting holds
// The host:    fail CALL | fail oddly CALL (no std::exception) | nothing CALL (null or empty) | heal
//              deliver NAME: a change event of that setting, on this very thread
//              unprivileged LINE: the line as a user who isn't root
// What shows:  log LEVEL...: records, from here on
//              calls START,...: calls of the host by the start of their lines, from here on
// Platform:    text BYTES and units HEX...: each as the other | join PATH,COMPONENT | exists PATH
//              canonical PATH [BASE]
// Operations:  cache OPERATION [ARGUMENT] | docroot OPERATION [ARGUMENT], "new" for the construction of the one, and
//                  "another" for that of one to use from here on
//              parse FILE | collector [FILE] | find [FILE] | installed | info NAME | request | name [FILE]
// Trials:      before LINES and behind LINES, separated by "; ": what stands there in every trial from here on
//              starve LEAST LINES | break-records LEAST LINES | change-logging LINES | break-calls LEAST LINES
//
// An answer shows the records, the calls, what went to standard error, then the result or what was thrown.
// clang-format on
class Console {
public:
    Console();

    // Runs a line and gives its answer.
    std::string type(const std::string& line);

private:
    using Text = const std::string&;

    void addAction(Text word, std::function<void(Text)> action);
    void addScene();
    void addHost();
    void addPlatform();
    void addOperations();
    void addTrials();
    std::string answer(Text line);
    std::string observed();
    fl::ustring wide(Text text) const;
    fl::filesystem::upath path(Text text) const { return fl::filesystem::upath(wide(text)); }
    std::string change(Text argument) const;
    void fail(Text argument);
    void show(Text levels);
    std::string onCache(Text argument);
    std::string onDocroot(Text argument);
    std::string request();

    std::map<std::string, std::function<std::string(Text)>> m_commands;  // by first word, given the rest of the line
    support::TemporaryFolder m_folder;
    support::ScriptedServices m_services;
    std::unique_ptr<support::RecordLog> m_log;
    std::vector<std::string> m_shownCalls;
    std::ostringstream m_errors;
    std::unique_ptr<docroot_cache::DocrootCache> m_cache;
    std::unique_ptr<doc_products_shared::Docroot> m_docroot;  // null: the process-wide one
    std::shared_ptr<doc_products_shared::DocProductCollector> m_collector;
    Trials m_trials;
};

}  // namespace console
