#pragma once

#include "platform/linux/ScreenCover.h"

#include <map>
#include <memory>

struct zwlr_layer_shell_v1;

namespace kestrovan {

/// Windows in the topmost layer of a Wayland compositor that has layers (protocol wlr-layer-shell-unstable-v1): above
/// panels, notifications and full-screen windows, each the whole of its output, and one of them with the keyboard to
/// itself. Needs a QGuiApplication on a wayland platform that outlives it.
class LayerScreenCover final : public ScreenCover {
public:
    /// None where the compositor does not offer layers. Waits for the compositor's answer.
    static std::unique_ptr<LayerScreenCover> make();

    LayerScreenCover(const LayerScreenCover&) = delete;
    LayerScreenCover& operator=(const LayerScreenCover&) = delete;
    ~LayerScreenCover() override;

    void cover(QWindow& window, QScreen& screen) override;
    void uncover(QWindow& window) override;
    bool isCovering(const QWindow& window) const override;
    void takeKeyboard(QWindow& window) override;

private:
    class Layer;

    explicit LayerScreenCover(zwlr_layer_shell_v1* shell);

    zwlr_layer_shell_v1* const shell_;
    std::map<const QWindow*, std::unique_ptr<Layer>> layers_;
};

} // namespace kestrovan
