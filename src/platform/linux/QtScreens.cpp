#include "platform/linux/QtScreens.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <qpa/qplatformscreen.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto sweepInterval = 10ms;
constexpr int patientSweeps = 100; ///< a window that cannot be seen by then will not be
constexpr auto keyboardRescueDelay = 50ms;
constexpr auto patrolInterval = 250ms;

// Qt invents a screen where there is none.
bool isReal(const QScreen& screen)
{
    return screen.handle() && !screen.handle()->isPlaceholder() && !screen.geometry().isEmpty();
}

QScreen* findScreen(const std::string& name)
{
    const auto all = QGuiApplication::screens();
    const auto found = std::find_if(all.begin(), all.end(), [&](const QScreen* screen) {
        return isReal(*screen) && screen->name().toStdString() == name;
    });
    return found == all.end() ? nullptr : *found;
}

Screen describe(const QScreen& screen)
{
    const auto frame = screen.geometry();
    return {screen.name().toStdString(), {frame.x(), frame.y(), frame.width(), frame.height()}};
}

} // namespace

/// One window and what it covers.
struct QtScreens::Sheet {
    std::string screenName;
    std::unique_ptr<HostedView> view;
    QWindow* window = nullptr;
    bool isWanted = false; ///< ordered to the front, and not out again
    bool isPlaced = false; ///< its screen is there, and so is it
    bool isGivenUp = false;
};

// Whoever asks for the windows to be closed has no say: their owner alone has.
bool QtScreens::Listener::eventFilter(QObject* /*window*/, QEvent* event)
{
    if (event->type() != QEvent::Close)
        return false;
    event->ignore();
    return true;
}

/// What the owner of a window holds. The window itself may outlive it by a turn of the loop: its view may be the
/// caller.
class QtScreens::Handle final : public OverlayWindow {
public:
    Handle(QtScreens& desk, std::shared_ptr<Sheet> sheet) : desk_(desk), sheet_(std::move(sheet)) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() override
    {
        sheet_->isGivenUp = true;
        desk_.hide(*sheet_);
    }

    void makeKeyAndOrderFront() override
    {
        desk_.show(*sheet_);
        desk_.giveKeyboard(*sheet_);
    }
    void makeKey() override { desk_.giveKeyboard(*sheet_); }
    void orderOut() override { desk_.hide(*sheet_); }

private:
    QtScreens& desk_;
    std::shared_ptr<Sheet> sheet_;
};

QtScreens::QtScreens(std::unique_ptr<ScreenCover> cover) : cover_(std::move(cover))
{
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &listener_,
                     [this](QScreen* screen) { screenCame(*screen); });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &listener_,
                     [this](const QScreen* screen) { screenLeft(*screen); });
    QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &listener_,
                     [this](QWindow* window) { focusChanged(window); });
    for (auto* screen : QGuiApplication::screens())
        screenCame(*screen);
    QObject::connect(&sweeper_, &QTimer::timeout, [this] { sweep(); });
    keyboardRescue_.setSingleShot(true);
    QObject::connect(&keyboardRescue_, &QTimer::timeout, [this] { takeKeyboardBack(); });
    QObject::connect(&patrol_, &QTimer::timeout, [this] { followScreens(); });
}

QtScreens::~QtScreens()
{
    for (const auto& sheet : sheets_)
        if (sheet->isPlaced)
            cover_->uncover(*sheet->window);
}

std::vector<Screen> QtScreens::screens() const
{
    std::vector<Screen> found;
    for (const auto* screen : QGuiApplication::screens())
        if (isReal(*screen))
            found.push_back(describe(*screen));
    return found;
}

std::unique_ptr<OverlayWindow> QtScreens::makeWindow(const OverlayWindowTraits& traits,
                                                     std::unique_ptr<HostedView> contentView)
{
    auto sheet = std::make_shared<Sheet>();
    sheet->screenName = traits.screen.name;
    sheet->window = contentView->nativeWindow();
    sheet->window->installEventFilter(&listener_);
    sheet->view = std::move(contentView);
    sheets_.push_back(sheet);
    return std::make_unique<Handle>(*this, std::move(sheet));
}

void QtScreens::show(Sheet& sheet)
{
    sheet.isWanted = true;
    place(sheet);
    patrol_.start(patrolInterval);
}

void QtScreens::hide(Sheet& sheet)
{
    sheet.isWanted = false;
    sweepSoon();
}

void QtScreens::place(Sheet& sheet)
{
    if (auto* screen = findScreen(sheet.screenName)) {
        sheet.isPlaced = true;
        cover_->cover(*sheet.window, *screen);
    }
}

void QtScreens::displace(Sheet& sheet)
{
    sheet.isPlaced = false;
    cover_->uncover(*sheet.window);
}

void QtScreens::giveKeyboard(Sheet& sheet)
{
    const auto found =
        std::find_if(sheets_.begin(), sheets_.end(), [&](const auto& known) { return known.get() == &sheet; });
    if (found == sheets_.end() || !sheet.isWanted)
        return;
    keySheet_ = *found;
    if (sheet.isPlaced)
        cover_->takeKeyboard(*sheet.window);
    else
        keyboardRescue_.start(keyboardRescueDelay);
}

void QtScreens::screenCame(QScreen& screen)
{
    QObject::connect(&screen, &QScreen::geometryChanged, &listener_, [this, &screen] { screenChanged(screen); });
    followScreens();
}

void QtScreens::screenChanged(const QScreen& screen)
{
    const auto name = screen.name().toStdString();
    for (const auto& sheet : sheets_)
        if (sheet->isWanted && sheet->screenName == name)
            place(*sheet);
}

// Before Qt moves the windows of the screen to another one.
void QtScreens::screenLeft(const QScreen& screen)
{
    for (const auto& sheet : sheets_) {
        if (sheet->isPlaced && sheet->window->screen() == &screen)
            displace(*sheet);
    }
    takeKeyboardBack();
}

// Not every change is told. On X11 the last screen to go stays as a nameless one, until it takes the name of the next.
void QtScreens::followScreens()
{
    for (const auto& sheet : sheets_) {
        const auto* screen = findScreen(sheet->screenName);
        if (sheet->isPlaced && sheet->window->screen() != screen)
            displace(*sheet);
        if (sheet->isWanted && !(sheet->isPlaced && cover_->isCovering(*sheet->window)))
            place(*sheet);
    }
    if (isAnythingShown())
        takeKeyboardBack();
}

void QtScreens::focusChanged(QWindow* window)
{
    if (isAnythingShown() && !isOursToFocus(window))
        keyboardRescue_.start(keyboardRescueDelay);
}

void QtScreens::takeKeyboardBack()
{
    const auto canHave = [](const std::shared_ptr<Sheet>& sheet) {
        return sheet && sheet->isWanted && sheet->isPlaced;
    };
    if (isOursToFocus(QGuiApplication::focusWindow()))
        return;
    auto sheet = keySheet_.lock();
    if (!canHave(sheet)) {
        const auto other = std::find_if(sheets_.begin(), sheets_.end(), canHave);
        sheet = other == sheets_.end() ? nullptr : *other;
    }
    if (sheet)
        cover_->takeKeyboard(*sheet->window);
}

bool QtScreens::isOursToFocus(const QWindow* window) const
{
    return std::any_of(sheets_.begin(), sheets_.end(), [window](const auto& sheet) {
        return sheet->isWanted && sheet->isPlaced && sheet->window == window;
    });
}

bool QtScreens::isAnythingShown() const
{
    return std::any_of(sheets_.begin(), sheets_.end(),
                       [](const auto& sheet) { return sheet->isWanted && sheet->isPlaced; });
}

bool QtScreens::isSomeWindowAwaited() const
{
    return std::any_of(sheets_.begin(), sheets_.end(), [](const auto& sheet) {
        return sheet->isWanted && sheet->isPlaced && !sheet->window->isExposed();
    });
}

void QtScreens::sweepSoon()
{
    sweeps_ = 0;
    sweeper_.start(0ms);
}

void QtScreens::sweep()
{
    if (isSomeWindowAwaited() && ++sweeps_ < patientSweeps) {
        sweeper_.start(sweepInterval);
        return;
    }
    sweeper_.stop();
    for (const auto& sheet : sheets_) {
        if (!sheet->isWanted && sheet->isPlaced)
            displace(*sheet);
    }
    sheets_.remove_if([](const auto& sheet) { return sheet->isGivenUp; });
    if (sheets_.empty())
        patrol_.stop();
}

} // namespace kestrovan
