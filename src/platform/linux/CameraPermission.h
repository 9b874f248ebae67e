#pragma once

#include "platform/Camera.h"

#include <filesystem>
#include <functional>
#include <memory>

namespace kestrovan {

class Diagnostics;
class Files;

/// Whether the user lets this program use the camera. The system asks nobody: any local user may open the device. So
/// the program asks, once, and keeps the answer in a file of its own. Main thread.
class CameraPermission {
public:
    /// The one who puts the question to the user: a dialog of the program's, or PortalCameraQuestion in a sandbox. It
    /// is called on the main thread, returns at once (the alarm must never wait for a dialog), and calls `answer` on
    /// the main thread when the user has decided. Letting go of `answer` without calling it (a dialog that is closed, a
    /// missing portal) leaves the question unanswered, to be put again at the next request; until one or the other
    /// happens the question is open, and nobody is asked a second time.
    using Ask = std::function<void(std::function<void(bool granted)> answer)>;

    /// A file that is missing or makes no sense means that the user was never asked. Without `ask` nobody is asked,
    /// and nothing is granted. `files` and `diagnostics` outlive this object and the question.
    CameraPermission(const std::filesystem::path& answerFile, Ask ask, Files& files, Diagnostics& diagnostics);

    CameraAuthorization authorization() const;

    /// As Camera::requestAccess().
    void request(std::function<void(bool granted)> answered);

private:
    struct State;
    class Question;

    Ask ask_;
    std::shared_ptr<State> state_;
};

} // namespace kestrovan
