#include "overlay/HostingView.h"

#include <QExposeEvent>
#include <QQuickItem>

#include <utility>

void qml_register_types_Kestrovan_Overlay();
void qml_register_types_Kestrovan_Parts();

namespace kestrovan {

HostingView::HostingView(std::unique_ptr<FullscreenOverlayView> view, std::shared_ptr<OverlayDrawing> drawing)
    : drawing_(std::move(drawing)), view_(std::move(view))
{
    setColor(Qt::black);
    setTitle(QStringLiteral("Kestrovan"));
    auto* made =
        drawing_->component.createWithInitialProperties({{"view", QVariant::fromValue<QObject*>(view_.get())}});
    item_.reset(qobject_cast<QQuickItem*>(made));
    if (!item_)
        return;
    item_->setParentItem(contentItem());
    const auto fill = [this] { item_->setSize(size()); };
    connect(this, &QWindow::widthChanged, this, fill);
    connect(this, &QWindow::heightChanged, this, fill);
}

HostingView::~HostingView() = default;

void HostingView::exposeEvent(QExposeEvent* event)
{
    view_->setOnScreen(isExposed());
    QQuickWindow::exposeEvent(event);
}

HostingViews::HostingViews(const Platform& platform)
    : platform_(platform), drawing_(std::make_shared<OverlayDrawing>(platform.mainQueue, platform.workers))
{}

void HostingViews::load()
{
    if (std::exchange(isLoaded_, true))
        return;
    qml_register_types_Kestrovan_Parts();
    qml_register_types_Kestrovan_Overlay();
    auto& component = drawing_->component;
    component.loadUrl(QUrl("qrc:/qt-project.org/imports/Kestrovan/Overlay/FullscreenOverlayView.qml"));
    if (!component.isReady())
        platform_.diagnostics.line("Failed to load the deterrent screen: " + component.errorString().toStdString());
}

std::unique_ptr<HostedView> HostingViews::make(AppState& appState, DeterrentScreens& screens)
{
    load();
    auto view = std::make_unique<FullscreenOverlayView>(appState, platform_, screens, drawing_->backdrops);
    return std::make_unique<HostingView>(std::move(view), drawing_);
}

} // namespace kestrovan
