#include "platform/linux/WindowKeeper.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWindow>

namespace kestrovan {

class WindowKeeper::EventFilter : public QObject {
public:
    EventFilter() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (!event->spontaneous() || !receiver->isWindowType())
            return false;
        if (event->type() == QEvent::Close) {
            event->ignore();
            return true;
        }
        if (event->type() == QEvent::WindowStateChange)
            bringBack(static_cast<QWindow&>(*receiver));
        return false;
    }

private:
    // Later: the window is still being told.
    static void bringBack(QWindow& window)
    {
        if (window.windowStates().testFlag(Qt::WindowMinimized))
            QTimer::singleShot(0, &window, [&window] {
                window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
                window.requestActivate();
            });
    }
};

WindowKeeper::WindowKeeper() = default;

WindowKeeper::~WindowKeeper() = default;

void WindowKeeper::hold(bool wanted)
{
    if (!wanted)
        eventFilter_.reset();
    else if (!eventFilter_)
        eventFilter_ = std::make_unique<EventFilter>();
}

} // namespace kestrovan
