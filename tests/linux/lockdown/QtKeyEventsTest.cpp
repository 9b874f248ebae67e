#include "platform/linux/QtKeyEvents.h"

#include "rigs/QtProgram.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QWindow>

#include <gtest/gtest.h>

using namespace kestrovan;

namespace {

constexpr int noScanCode = 0;

KeyEvent translated(int key, const char* text, Qt::KeyboardModifiers modifiers = {}, quint32 keysym = 0)
{
    return QtKeyEvents::translate(QKeyEvent(QEvent::KeyPress, key, modifiers, noScanCode, keysym, 0, QString(text)));
}

std::string charactersOf(int key, const char* text, Qt::KeyboardModifiers modifiers = {}, quint32 keysym = 0)
{
    return translated(key, text, modifiers, keysym).charactersIgnoringModifiers;
}

} // namespace

TEST(QtKeyEventsTranslation, ADigitIsADigitUnderAnyModifierInAnyScript)
{
    EXPECT_EQ(charactersOf(Qt::Key_1, "1", Qt::ControlModifier), "1");
    EXPECT_EQ(charactersOf(Qt::Key_3, "\x1b", Qt::ControlModifier), "3"); // what X makes of Ctrl+3
    EXPECT_EQ(charactersOf(Qt::Key_4, "4", Qt::AltModifier | Qt::MetaModifier), "4");
    EXPECT_EQ(charactersOf(0x0665, "\u0665"), "\u0665");
    EXPECT_EQ(charactersOf(0x0665, "", Qt::ControlModifier), "\u0665");
    EXPECT_EQ(charactersOf(Qt::Key_F5, ""), "");
}

TEST(QtKeyEventsTranslation, TheKeypadTypesDigitsWithoutNumLock)
{
    EXPECT_EQ(charactersOf(Qt::Key_Home, "", Qt::KeypadModifier, 0xff95), "7");
    EXPECT_EQ(charactersOf(Qt::Key_Clear, "", Qt::KeypadModifier, 0xff9d), "5");
    EXPECT_EQ(charactersOf(Qt::Key_Insert, "", Qt::KeypadModifier, 0xff9e), "0");
    EXPECT_EQ(translated(Qt::Key_Delete, "", Qt::KeypadModifier, 0xff9f).keyCode, KeyEvent::forwardDelete);
}

TEST(QtKeyEvents, TextOfAnInputMethodIsTypedAndKeptFromTheWindow)
{
    const rigs::QtProgram program("offscreen");
    struct TextWindow : QWindow {
        bool event(QEvent* event) override
        {
            received += event->type() == QEvent::InputMethod ? 1 : 0;
            return QWindow::event(event);
        }
        int received = 0;
    } window;
    QtKeyEvents keyEvents;
    std::string typed;
    const auto commit = [&window](const QString& preedit, const QString& text) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(text);
        QCoreApplication::sendEvent(&window, &event);
    };

    auto monitor = keyEvents.addLocalMonitor([&typed](const KeyEvent& event) {
        typed += event.charactersIgnoringModifiers;
        return true;
    });
    commit("composing", {});
    commit({}, "4\u0662");
    EXPECT_EQ(typed, "4\u0662");
    EXPECT_EQ(window.received, 0);

    monitor.reset();
    commit({}, "5");
    EXPECT_EQ(typed, "4\u0662");
    EXPECT_EQ(window.received, 1);
}
