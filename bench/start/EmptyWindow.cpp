// The least that a Qt Quick program can be: what the toolkit itself costs a start.
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickView>

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QQuickView window;
    window.setResizeMode(QQuickView::SizeRootObjectToView);
    window.resize(530, 690);
    window.setSource(QUrl("data:text/plain,import QtQuick\nItem {}"));
    window.show();
    return QGuiApplication::exec();
}
