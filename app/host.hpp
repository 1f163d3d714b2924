#pragma once

namespace app {

struct Options;

// Plays the host: sets the roots, the user's settings and the log as the options say. Belongs before the first use of
// the library, which resolves its roots then.
void playHost(const Options& options);

}  // namespace app
