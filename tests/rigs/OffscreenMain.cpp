#include <QGuiApplication>
#include <QQuickWindow>

#include <gtest/gtest.h>

#include <cstdlib>

void qml_register_types_Kestrovan_Parts();

/// For tests of views: a program without a screen that draws with the processor.
int main(int argc, char** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("QT_IM_MODULE", "", 1);
    setenv("TZ", "UTC0", 1);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication::setDesktopSettingsAware(false);
    const QGuiApplication application(argc, argv);
    qml_register_types_Kestrovan_Parts();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
