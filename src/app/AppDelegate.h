#pragma once

namespace kestrovan {

class AppState;
class Workspace;

/// The guard over quitting, asked before every end of the program that somebody requests: from menu and window, by a
/// signal, by the session's manager. Main thread.
class AppDelegate {
public:
    enum class TerminateReply { terminateNow, terminateCancel };

    /// `workspace` outlives the delegate.
    explicit AppDelegate(Workspace& workspace) : workspace_(workspace) {}

    /// None until the window has appeared; without it, nothing is refused.
    const AppState* sharedAppState = nullptr;

    /// A refusal beeps, and says nothing else.
    TerminateReply applicationShouldTerminate();

private:
    Workspace& workspace_;
};

} // namespace kestrovan
