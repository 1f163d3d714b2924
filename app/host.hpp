#pragma once

namespace app {

struct Options;

// Sets the host's roots, the user's settings and the log as the options say. Belongs before the first use of the
// library, which resolves its roots then.
void configureHost(const Options& options);

}  // namespace app
