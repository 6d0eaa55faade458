/// Requests to end the game that come as signals: SIGINT, SIGTERM and SIGHUP alike.
#pragma once

namespace vorn {

/// From now on the first of them is a request to close the window, to be taken
/// by `takeQuitSignal`. From the second on the program has a second left to end
/// by itself; then it is ended, with exit status 0, wherever it stands.
void catchQuitSignals();

/// Whether one has come that has not been taken yet.
bool takeQuitSignal();

}  // namespace vorn
