#pragma once

#include <string>
#include <vector>

namespace app {

struct Options;

// Something that the library asked of its host, and the answer.
struct HostCall {
    enum class Kind {
        getSetting,          // subject: the setting's name; answer: its value
        supportPackageRoot,  // answer: the root
        installRoot,         // answer: the root
        exists,              // subject: the path
        canonical,           // subject: the path
        redirect,            // not a call but a log record: the library has read a docroot.txt; answer: its text
    };

    Kind kind;
    std::string subject = {};
    std::string answer = {};
    bool exists = false;
};

// Makes this program the library's host: sets the roots, the user's settings, the log and the services as the options
// say. Call before the first use of the library, because that resolves the roots.
void configureHost(const Options& options);

// What the library has asked on this thread since the function was last called, in order; nothing unless the options
// ask for what is made of it. A call that threw isn't recorded.
std::vector<HostCall> takeCalls();

}  // namespace app
