#pragma once

namespace app {

struct Options;

// Sets the host's roots, the user's settings, the log and the services as the options say. Call before the first use
// of the library, which resolves its roots then.
void configureHost(const Options& options);

}  // namespace app
