#include "app/MainWindow.h"

#include "platform/linux/LinuxWorkspace.h"

#include <QEvent>
#include <QVariant>

void qml_register_types_Kestrovan_Parts();
void qml_register_types_Kestrovan_Ui();

namespace kestrovan {

namespace {

constexpr QSize contentSize(530, 690);

} // namespace

MainWindow::MainWindow(QQmlEngine& engine, QObject& contentView, Task closeRequested)
    : QQuickView(&engine, nullptr), closeRequested_(std::move(closeRequested))
{
    setObjectName(LinuxWorkspace::mainWindowName);
    setTitle("Kestrovan");
    setColor("#0a0d14"); // what is seen until the first frame
    setMinimumSize(contentSize);
    setMaximumSize(contentSize);
    resize(contentSize);
    qml_register_types_Kestrovan_Parts();
    qml_register_types_Kestrovan_Ui();
    setInitialProperties({{"view", QVariant::fromValue(&contentView)}});
    setSource(QUrl("qrc:/qt-project.org/imports/Kestrovan/Ui/ContentView.qml"));
}

bool MainWindow::event(QEvent* event)
{
    if (event->type() != QEvent::Close)
        return QQuickView::event(event);
    event->ignore();
    closeRequested_();
    return true;
}

} // namespace kestrovan
