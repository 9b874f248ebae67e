#pragma once

#include "platform/Lifetime.h"
#include "platform/Screens.h"
#include "platform/linux/ScreenCover.h"

#include <QObject>
#include <QTimer>

#include <list>
#include <memory>

class QScreen;
class QWindow;

namespace kestrovan {

/// The screens of a QGuiApplication, and the windows over them.
///
/// The keyboard stays with these windows as long as one of them is shown: another window that gets it loses it soon,
/// and if the screen of the window that has it goes away, another window takes it. Windows that are ordered out leave
/// the screens a turn of the loop later or, if others have come by then, once those can be seen: what is underneath
/// does not show in between. Needs a QGuiApplication that outlives it. Main thread.
class QtScreens final : public Screens {
public:
    explicit QtScreens(std::unique_ptr<ScreenCover> cover);
    QtScreens(const QtScreens&) = delete;
    QtScreens& operator=(const QtScreens&) = delete;
    ~QtScreens() override;

    std::vector<Screen> screens() const override;
    std::unique_ptr<OverlayWindow> makeWindow(const OverlayWindowTraits& traits,
                                              std::unique_ptr<HostedView> contentView) override;

private:
    struct Sheet;
    class Handle;
    class Listener : public QObject {
    public:
        bool eventFilter(QObject* window, QEvent* event) override;
    };

    void show(Sheet& sheet);
    void hide(Sheet& sheet);
    void place(Sheet& sheet);
    void displace(Sheet& sheet);
    void giveKeyboard(Sheet& sheet);
    void screenCame(QScreen& screen);
    void screenChanged(const QScreen& screen);
    void screenLeft(const QScreen& screen);
    void followScreens();
    void focusChanged(QWindow* window);
    void takeKeyboardBack();
    void sweepSoon();
    void sweep();
    bool isOursToFocus(const QWindow* window) const;
    bool isSomeWindowAwaited() const;
    bool isAnythingShown() const;

    std::unique_ptr<ScreenCover> cover_;
    std::list<std::shared_ptr<Sheet>> sheets_;
    std::weak_ptr<Sheet> keySheet_;
    Listener listener_;
    QTimer sweeper_;
    QTimer keyboardRescue_;
    QTimer patrol_; ///< while there are windows
    int sweeps_ = 0;
};

} // namespace kestrovan
