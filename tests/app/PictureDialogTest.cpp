#include "app/PictureDialog.h"

#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/QtScreens.h"

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <array>

using namespace kestrovan;

namespace {

struct Used {
    int clicks = 0;
    int keys = 0;
};

class CountingWindow : public QWindow, public HostedView {
public:
    explicit CountingWindow(Used& used) : used_(used) { resize(100, 100); }
    QWindow* nativeWindow() override { return this; }

protected:
    void mousePressEvent(QMouseEvent* /*event*/) override { ++used_.clicks; }
    void keyPressEvent(QKeyEvent* /*event*/) override { ++used_.keys; }

private:
    Used& used_;
};

void use(QWindow& window)
{
    QTest::mouseClick(&window, Qt::LeftButton);
    QTest::keyClick(&window, Qt::Key_7);
}

QDialog* openDialog()
{
    for (auto* widget : QApplication::topLevelWidgets())
        if (widget->objectName() == "pictureDialog" && widget->isVisible())
            return qobject_cast<QDialog*>(widget);
    return nullptr;
}

} // namespace

TEST(PictureDialogTest, WhileItIsOpenTheDeterrentCanBeUsedAndTheMainWindowCannot)
{
    std::array<char, 5> name{"test"};
    std::array<char*, 2> arguments{name.data(), nullptr};
    int count = 1;
    const QApplication application(count, arguments.data());
    Used main;
    Used deterrent;
    CountingWindow mainWindow(main);
    mainWindow.setObjectName(LinuxWorkspace::mainWindowName);
    mainWindow.show();
    QtScreens screens(std::make_unique<ScreenCover>());

    QTimer opened;
    QObject::connect(&opened, &QTimer::timeout, [&] {
        auto* dialog = openDialog();
        if (!dialog)
            return;
        opened.stop();
        auto view = std::make_unique<CountingWindow>(deterrent);
        auto& keypad = *view;
        const auto window = screens.makeWindow({.screen = screens.screens().front()}, std::move(view));
        window->makeKeyAndOrderFront();
        use(keypad);
        use(mainWindow);
        dialog->reject();
    });
    opened.start(1);
    EXPECT_EQ(PictureDialog().choose({"Choose", "Take"}), std::nullopt);
    EXPECT_FALSE(opened.isActive()) << "there was no dialog";
    EXPECT_EQ(deterrent.clicks + deterrent.keys, 2);
    EXPECT_EQ(main.clicks + main.keys, 0);
    use(mainWindow);
    EXPECT_EQ(main.clicks + main.keys, 2);
}
