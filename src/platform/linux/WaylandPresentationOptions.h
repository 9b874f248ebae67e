#pragma once

#include "platform/Lifetime.h"
#include "platform/PresentationOptions.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>

class QWindow;
struct wl_callback;
struct wl_registry;
struct wl_seat;
struct zwp_keyboard_shortcuts_inhibit_manager_v1;

namespace kestrovan {

class Diagnostics;

/// The kiosk on Wayland, as far as the compositor lends itself to one: while a window of ours has the keyboard, the
/// compositor's own shortcuts are inhibited (protocol keyboard-shortcuts-inhibit-unstable-v1). Windows that appear
/// later are covered too, and an inhibitor that the compositor ends is asked for again after 50 ms, then ever more
/// slowly. Giving the keyboard to one of our windows is the business of those who show it.
///
/// Needs a QGuiApplication on a wayland platform that outlives it. Main thread; never waits for the compositor.
class WaylandPresentationOptions final : public PresentationOptions {
public:
    explicit WaylandPresentationOptions(Diagnostics& diagnostics);
    WaylandPresentationOptions(const WaylandPresentationOptions&) = delete;
    WaylandPresentationOptions& operator=(const WaylandPresentationOptions&) = delete;
    ~WaylandPresentationOptions() override;

    void setOptions(std::uint32_t options) override;

    /// True while the compositor says that its shortcuts are off for one of our windows.
    bool isHeld() const;

private:
    class Inhibitor;
    class WindowWatch;

    void listen();
    void bind(wl_registry* registry, std::uint32_t name, const char* interface);
    void globalsKnown();
    void refresh();
    void cover(QWindow& window);
    void forget(const QWindow& window);
    void renewLater(QWindow& window);
    void complain();

    Diagnostics& diagnostics_;
    std::unique_ptr<WindowWatch> windowWatch_;
    wl_registry* registry_ = nullptr;
    wl_callback* allGlobals_ = nullptr;
    wl_seat* seat_ = nullptr;
    zwp_keyboard_shortcuts_inhibit_manager_v1* manager_ = nullptr;
    std::map<const QWindow*, std::unique_ptr<Inhibitor>> inhibitors_;
    std::chrono::milliseconds pause_;
    bool wanted_ = false;
    bool globalsKnown_ = false;
    bool complained_ = false;
    Lifetime lifetime_;
};

} // namespace kestrovan
