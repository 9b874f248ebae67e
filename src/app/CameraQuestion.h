#pragma once

#include "platform/ChangeFollower.h"

#include <QMessageBox>

#include <memory>
#include <optional>

namespace kestrovan {

class AppState;

/// Asks the user, in a window of its own, whether the guard may use the camera, while everything else goes on. Closing
/// it answers nothing. It is out of the way while the alarm sounds. Main thread.
class CameraQuestion {
public:
    using Answer = std::function<void(bool granted)>;

    /// Puts the question.
    void ask(Answer answer);

    /// Whose language the question follows; both outlive it. Without it nobody is asked.
    void follow(AppState& appState, MainQueue& mainQueue);

private:
    void refresh();
    void decide(const QAbstractButton* pressed);

    AppState* appState_ = nullptr;
    std::optional<ChangeFollower> follower_;
    std::unique_ptr<QMessageBox> dialog_;
    QAbstractButton* allow_ = nullptr;
    QAbstractButton* refuse_ = nullptr;
    Answer answer_;
};

} // namespace kestrovan
