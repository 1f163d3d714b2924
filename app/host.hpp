#pragma once

namespace app {

struct Options;

// Makes this program the library's host: sets the roots, the user's settings, the log and the services as the options
// say. Call before the first use of the library, because that resolves the roots.
void configureHost(const Options& options);

}  // namespace app
