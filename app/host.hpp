#pragma once

#include <string>
#include <vector>

namespace app {

struct Options;

// Something that the library asked of its host.
struct HostCall {
    enum class Kind {
        getSetting,  // text: the value
        supportPackageRoot,
        installRoot,
        exists,    // text: the path
        redirect,  // not a call but a log record: the library has read a docroot.txt; text: what it says
    };

    Kind kind;
    std::string text = {};
    bool exists = false;
};

// Makes this program the library's host: sets the roots, the user's settings, the log and the services as the options
// say. Call before the first use of the library, because that resolves the roots.
void configureHost(const Options& options);

// What the library has asked on this thread since the function was last called, in order; nothing unless the options
// ask for what is made of it.
std::vector<HostCall> takeCalls();

}  // namespace app
