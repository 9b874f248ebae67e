#include "platform/linux/WaylandPresentationOptions.h"

#include "platform/Diagnostics.h"
#include "platform/linux/Wayland.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPlatformSurfaceEvent>
#include <QPointer>
#include <QTimer>
#include <QWindow>

#include <keyboard-shortcuts-inhibit-unstable-v1.h>
#include <wayland-client.h>

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds firstInhibitorPause = 50ms;
constexpr std::chrono::milliseconds longestInhibitorPause = 2000ms;
constexpr std::uint32_t needsShortcuts =
    PresentationOptions::disableSystemMenu | PresentationOptions::disableProcessSwitching |
    PresentationOptions::disableForceQuit | PresentationOptions::disableHidingApplication;

} // namespace

/// The shortcuts of one surface, inhibited until the end of this object.
class WaylandPresentationOptions::Inhibitor {
public:
    Inhibitor(zwp_keyboard_shortcuts_inhibit_manager_v1* manager, wl_seat* seat, wl_surface* surface,
              std::function<void(bool)> changed)
        : changed_(std::move(changed)),
          proxy_(zwp_keyboard_shortcuts_inhibit_manager_v1_inhibit_shortcuts(manager, surface, seat))
    {
        static const zwp_keyboard_shortcuts_inhibitor_v1_listener listener{
            [](void* self, zwp_keyboard_shortcuts_inhibitor_v1*) { static_cast<Inhibitor*>(self)->set(true); },
            [](void* self, zwp_keyboard_shortcuts_inhibitor_v1*) { static_cast<Inhibitor*>(self)->set(false); },
        };
        zwp_keyboard_shortcuts_inhibitor_v1_add_listener(proxy_, &listener, this);
    }
    Inhibitor(const Inhibitor&) = delete;
    Inhibitor& operator=(const Inhibitor&) = delete;
    ~Inhibitor() { zwp_keyboard_shortcuts_inhibitor_v1_destroy(proxy_); }

    bool isActive() const { return isActive_; }

private:
    void set(bool active)
    {
        isActive_ = active;
        changed_(active);
    }

    std::function<void(bool)> changed_;
    zwp_keyboard_shortcuts_inhibitor_v1* proxy_;
    bool isActive_ = false;
};

/// Windows get and lose their surfaces as they are shown and hidden.
class WaylandPresentationOptions::WindowWatch : public QObject {
public:
    explicit WindowWatch(WaylandPresentationOptions& owner) : owner_(owner)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (!receiver->isWindowType())
            return false;
        auto& window = static_cast<QWindow&>(*receiver);
        if (event->type() == QEvent::Expose)
            owner_.cover(window);
        else if (event->type() == QEvent::Hide || isEndOfSurface(*event))
            owner_.forget(window);
        return false;
    }

private:
    static bool isEndOfSurface(const QEvent& event)
    {
        return event.type() == QEvent::PlatformSurface &&
               static_cast<const QPlatformSurfaceEvent&>(event).surfaceEventType() ==
                   QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed;
    }

    WaylandPresentationOptions& owner_;
};

WaylandPresentationOptions::WaylandPresentationOptions(Diagnostics& diagnostics)
    : diagnostics_(diagnostics), windowWatch_(std::make_unique<WindowWatch>(*this)), pause_(firstInhibitorPause)
{
    listen();
}

WaylandPresentationOptions::~WaylandPresentationOptions()
{
    windowWatch_.reset();
    inhibitors_.clear();
    if (manager_)
        zwp_keyboard_shortcuts_inhibit_manager_v1_destroy(manager_);
    if (seat_)
        wl_seat_destroy(seat_);
    if (allGlobals_)
        wl_callback_destroy(allGlobals_);
    if (registry_)
        wl_registry_destroy(registry_);
    if (auto* connection = wayland::display())
        wl_display_flush(connection);
}

// Everything is on Qt's own queue, whose events it hands out on the main thread. The seat is bound here, since Qt does
// not survive being asked for one that is not there.
void WaylandPresentationOptions::listen()
{
    auto* connection = wayland::display();
    if (!connection)
        return;
    static const wl_registry_listener registryListener{
        [](void* self, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t) {
            static_cast<WaylandPresentationOptions*>(self)->bind(registry, name, interface);
        },
        [](void*, wl_registry*, std::uint32_t) {},
    };
    static const wl_callback_listener doneListener{[](void* self, wl_callback*, std::uint32_t) {
        static_cast<WaylandPresentationOptions*>(self)->globalsKnown();
    }};
    registry_ = wl_display_get_registry(connection);
    wl_registry_add_listener(registry_, &registryListener, this);
    allGlobals_ = wl_display_sync(connection);
    wl_callback_add_listener(allGlobals_, &doneListener, this);
    wl_display_flush(connection);
}

void WaylandPresentationOptions::bind(wl_registry* registry, std::uint32_t name, const char* interface)
{
    const auto is = [interface](const wl_interface& wanted) { return std::string_view(interface) == wanted.name; };
    if (is(wl_seat_interface) && !seat_)
        seat_ = static_cast<wl_seat*>(wl_registry_bind(registry, name, &wl_seat_interface, 1));
    else if (is(zwp_keyboard_shortcuts_inhibit_manager_v1_interface) && !manager_)
        manager_ = static_cast<zwp_keyboard_shortcuts_inhibit_manager_v1*>(
            wl_registry_bind(registry, name, &zwp_keyboard_shortcuts_inhibit_manager_v1_interface, 1));
    if (globalsKnown_)
        refresh();
}

void WaylandPresentationOptions::globalsKnown()
{
    wl_callback_destroy(std::exchange(allGlobals_, nullptr));
    globalsKnown_ = true;
    refresh();
}

void WaylandPresentationOptions::setOptions(std::uint32_t options)
{
    wanted_ = (options & needsShortcuts) != 0;
    if (!wanted_)
        inhibitors_.clear();
    refresh();
    if (auto* connection = wayland::display())
        wl_display_flush(connection);
}

bool WaylandPresentationOptions::isHeld() const
{
    return std::any_of(inhibitors_.begin(), inhibitors_.end(),
                       [](const auto& each) { return each.second->isActive(); });
}

void WaylandPresentationOptions::refresh()
{
    if (!wanted_)
        return;
    complain();
    for (auto* window : QGuiApplication::topLevelWindows())
        cover(*window);
}

void WaylandPresentationOptions::complain()
{
    const bool isMissing = !wayland::display() || (globalsKnown_ && (!manager_ || !seat_));
    if (isMissing && !std::exchange(complained_, true))
        diagnostics_.line("Lockdown: this Wayland compositor does not let its keyboard shortcuts be inhibited");
}

// A second inhibitor for a surface is a protocol error, which would end the program.
void WaylandPresentationOptions::cover(QWindow& window)
{
    if (!wanted_ || !manager_ || !seat_ || inhibitors_.contains(&window))
        return;
    auto* surface = wayland::surfaceOf(window);
    if (!surface)
        return;
    const auto changed = [this, &window](bool active) {
        if (active)
            pause_ = firstInhibitorPause;
        else
            renewLater(window);
    };
    inhibitors_.emplace(&window, std::make_unique<Inhibitor>(manager_, seat_, surface, changed));
}

void WaylandPresentationOptions::forget(const QWindow& window)
{
    inhibitors_.erase(&window);
}

// The user may end an inhibitor with a key combination of the compositor; so may a thief.
void WaylandPresentationOptions::renewLater(QWindow& window)
{
    QTimer::singleShot(pause_, &window, lifetime_.guard([this, watched = QPointer<QWindow>(&window)] {
        if (!watched)
            return;
        forget(*watched);
        cover(*watched);
    }));
    pause_ = std::min(pause_ * 2, longestInhibitorPause);
}

} // namespace kestrovan
