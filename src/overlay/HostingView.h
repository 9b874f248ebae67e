#pragma once

#include "overlay/FullscreenOverlayView.h"
#include "platform/Screens.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

class QQuickItem;

namespace kestrovan {

/// What the deterrent views are drawn with.
struct OverlayDrawing {
    OverlayDrawing(MainQueue& mainQueue, Workers& workers) : backdrops(mainQueue, workers) {}

    Backdrops backdrops;
    QQmlEngine engine;
    QQmlComponent component{&engine};
};

/// A deterrent view in a Qt Quick window, which whoever covers a screen shows there. Main thread.
class HostingView final : public QQuickWindow, public HostedView {
    Q_OBJECT

public:
    HostingView(std::unique_ptr<FullscreenOverlayView> view, std::shared_ptr<OverlayDrawing> drawing);
    HostingView(const HostingView&) = delete;
    HostingView& operator=(const HostingView&) = delete;
    ~HostingView() override;

    QWindow* nativeWindow() override { return this; }

protected:
    void exposeEvent(QExposeEvent* event) override;

private:
    const std::shared_ptr<OverlayDrawing> drawing_; ///< windows may outlive whoever made them
    const std::unique_ptr<FullscreenOverlayView> view_;
    std::unique_ptr<QQuickItem> item_;
};

/// Makes the views of the deterrent screens.
class HostingViews {
public:
    explicit HostingViews(const Platform& platform);

    /// Loads what they are drawn with, which the first of them would otherwise have to wait for.
    void load();

    std::unique_ptr<HostedView> make(AppState& appState, DeterrentScreens& screens);

    /// With which others may draw too, as long as this lives: a second engine would be a second set of all types.
    QQmlEngine& engine() { return drawing_->engine; }

private:
    const Platform platform_;
    const std::shared_ptr<OverlayDrawing> drawing_;
    bool isLoaded_ = false;
};

} // namespace kestrovan
