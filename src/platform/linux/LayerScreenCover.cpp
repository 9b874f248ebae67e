#include "platform/linux/LayerScreenCover.h"

#include "platform/linux/Release.h"
#include "platform/linux/Wayland.h"

#include <QScreen>
#include <QWindow>

#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1.h>

#include <algorithm>
#include <string_view>

namespace kestrovan {

namespace {

constexpr std::uint32_t newestVersion = 4;
constexpr std::uint32_t everyEdge = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                                    ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
constexpr int overPanels = -1; ///< exclusive zone: the room that others keep free does not count

// The shell stays on Qt's own queue, which is dispatched on the main thread; only the question is asked on another.
zwlr_layer_shell_v1* findShell(wl_display* display)
{
    zwlr_layer_shell_v1* found = nullptr;
    static const wl_registry_listener listener{
        [](void* data, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t version) {
            auto& shell = *static_cast<zwlr_layer_shell_v1**>(data);
            if (std::string_view(interface) != zwlr_layer_shell_v1_interface.name || shell)
                return;
            shell = static_cast<zwlr_layer_shell_v1*>(
                wl_registry_bind(registry, name, &zwlr_layer_shell_v1_interface, std::min(version, newestVersion)));
            wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(shell), nullptr);
        },
        [](void*, wl_registry*, std::uint32_t) {},
    };
    const std::unique_ptr<wl_event_queue, Release<wl_event_queue_destroy>> queue(wl_display_create_queue(display));
    const std::unique_ptr<void, Release<wl_proxy_wrapper_destroy>> asker(wl_proxy_create_wrapper(display));
    wl_proxy_set_queue(static_cast<wl_proxy*>(asker.get()), queue.get());
    const std::unique_ptr<wl_registry, Release<wl_registry_destroy>> registry(
        wl_display_get_registry(static_cast<wl_display*>(asker.get())));
    wl_registry_add_listener(registry.get(), &listener, &found);
    wl_display_roundtrip_queue(display, queue.get());
    return found;
}

} // namespace

/// The place of one window in the layer.
class LayerScreenCover::Layer {
public:
    Layer(zwlr_layer_shell_v1* shell, QWindow& window, QScreen& screen)
        : window_(window), screen_(screen), surface_(wayland::surfaceOf(window)),
          layer_(zwlr_layer_shell_v1_get_layer_surface(shell, surface_, wayland::outputOf(screen),
                                                       ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "kestrovan"))
    {
        static const zwlr_layer_surface_v1_listener listener{
            [](void* self, zwlr_layer_surface_v1*, std::uint32_t serial, std::uint32_t width, std::uint32_t height) {
                static_cast<Layer*>(self)->configure(serial, static_cast<int>(width), static_cast<int>(height));
            },
            [](void* self, zwlr_layer_surface_v1*) { static_cast<Layer*>(self)->isClosed_ = true; },
        };
        zwlr_layer_surface_v1_add_listener(layer_, &listener, this);
        zwlr_layer_surface_v1_set_anchor(layer_, everyEdge);
        zwlr_layer_surface_v1_set_exclusive_zone(layer_, overPanels);
        commit();
    }
    Layer(const Layer&) = delete;
    Layer& operator=(const Layer&) = delete;
    ~Layer() { zwlr_layer_surface_v1_destroy(layer_); }

    bool isOn(const QScreen& screen) const { return &screen_ == &screen && !isClosed_; }
    bool isClosed() const { return isClosed_; }
    // Asked for again, it comes back from whoever has it.
    void setKeyboard(bool isOurs)
    {
        if (!isOurs && !hasKeyboard_)
            return;
        hasKeyboard_ = isOurs;
        zwlr_layer_surface_v1_set_keyboard_interactivity(layer_,
                                                         isOurs ? ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE
                                                                : ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE);
        commit();
    }

private:
    // Nothing may be drawn before the first of these.
    void configure(std::uint32_t serial, int width, int height)
    {
        zwlr_layer_surface_v1_ack_configure(layer_, serial);
        window_.resize(width, height);
        if (!window_.isVisible())
            window_.show();
    }
    void commit()
    {
        wl_surface_commit(surface_);
        wl_display_flush(wayland::display());
    }

    QWindow& window_;
    const QScreen& screen_;
    wl_surface* const surface_;
    zwlr_layer_surface_v1* const layer_;
    bool isClosed_ = false;
    bool hasKeyboard_ = false;
};

std::unique_ptr<LayerScreenCover> LayerScreenCover::make()
{
    auto* display = wayland::display();
    auto* shell = display ? findShell(display) : nullptr;
    return shell ? std::unique_ptr<LayerScreenCover>(new LayerScreenCover(shell)) : nullptr;
}

// Qt leaves a window that bypasses the window manager without a role on the screen, which is then ours to give.
LayerScreenCover::LayerScreenCover(zwlr_layer_shell_v1* shell) : shell_(shell)
{
    qputenv("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
}

LayerScreenCover::~LayerScreenCover()
{
    layers_.clear();
    if (zwlr_layer_shell_v1_get_version(shell_) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION)
        zwlr_layer_shell_v1_destroy(shell_);
    else
        wl_proxy_destroy(reinterpret_cast<wl_proxy*>(shell_));
    wl_display_flush(wayland::display());
}

// Of changes of its output's size, the compositor tells the window itself.
void LayerScreenCover::cover(QWindow& window, QScreen& screen)
{
    if (const auto known = layers_.find(&window); known != layers_.end() && known->second->isOn(screen))
        return;
    uncover(window);
    window.setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    window.setScreen(&screen);
    window.setGeometry(screen.geometry());
    window.create();
    layers_.emplace(&window, std::make_unique<Layer>(shell_, window, screen));
}

void LayerScreenCover::uncover(QWindow& window)
{
    layers_.erase(&window);
    ScreenCover::uncover(window);
}

bool LayerScreenCover::isCovering(const QWindow& window) const
{
    const auto known = layers_.find(&window);
    return known != layers_.end() && !known->second->isClosed();
}

void LayerScreenCover::takeKeyboard(QWindow& window)
{
    for (const auto& [other, layer] : layers_)
        if (other != &window)
            layer->setKeyboard(false);
    if (const auto known = layers_.find(&window); known != layers_.end())
        known->second->setKeyboard(true);
}

} // namespace kestrovan
