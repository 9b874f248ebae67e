#pragma once

#include "platform/MainQueue.h"

#include <QQuickView>

namespace kestrovan {

/// The program's one window. Closing it does what it is told to do, and never destroys it. Main thread.
class MainWindow final : public QQuickView {
public:
    /// Shows nothing yet. `engine` and `contentView` outlive the window.
    MainWindow(QQmlEngine& engine, QObject& contentView, Task closeRequested);

    bool isLoaded() const { return status() == Ready; }

protected:
    bool event(QEvent* event) override;

private:
    const Task closeRequested_;
};

} // namespace kestrovan
