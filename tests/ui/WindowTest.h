#pragma once

#include "GuardTest.h"
#include "rigs/ViewStage.h"
#include "ui/ContentView.h"

#include <QCoreApplication>

#include <set>

void qml_register_types_Kestrovan_Ui();

namespace kestrovan::test {

/// The main window of a guard on a simulated laptop, with somebody in front of it who clicks and types.
class WindowTest : public GuardTest {
protected:
    void SetUp() override
    {
        qml_register_types_Kestrovan_Ui();
        openWindow();
    }
    void TearDown() override { EXPECT_EQ(stage.complaints().join('\n').toStdString(), ""); }
    void openWindow()
    {
        const ShellActions actions{.openWindow = {},
                                   .openWebsite = [this] { ++websiteOpenings; },
                                   .quit = [this] { ++quits; },
                                   .previewDeterrent = [this] { screens.showOverlay(guard()); }};
        view = std::make_unique<ContentView>(guard(), laptop.platform(), actions);
        const QVariantMap properties{{"view", QVariant::fromValue<QObject*>(view.get())}};
        ASSERT_TRUE(stage.showType("Kestrovan.Ui", "ContentView", properties));
        react();
    }

    /// Lets guard and window answer what was just done, without time passing.
    void react()
    {
        laptop.settle();
        QCoreApplication::processEvents();
        laptop.settle();
    }
    void click(const QString& name)
    {
        stage.picture(); // it is on drawing that things find their places
        ASSERT_TRUE(stage.isVisible(name)) << name.toStdString();
        stage.click(name);
        react();
    }
    void type(const QString& characters)
    {
        stage.type(characters);
        react();
    }
    void press(Qt::Key key)
    {
        stage.press(key);
        react();
    }
    void wait(std::chrono::milliseconds duration)
    {
        laptop.advance(duration);
        react();
    }
    std::string text(const QString& name) const { return stage.text(name).toStdString(); }
    template <class T>
    T property(const QString& item, const char* name) const
    {
        const auto* found = stage.find(item);
        return found ? found->property(name).value<T>() : T();
    }
    /// The nearest item around the keyboard that has a name.
    std::string focused() const
    {
        const auto* item = stage.window().activeFocusItem();
        while (item && (item->objectName().isEmpty() || item->objectName() == "input"))
            item = item->parentItem();
        return item ? item->objectName().toStdString() : std::string();
    }

    std::unique_ptr<ContentView> view;
    rigs::ViewStage stage{{530, 690}};
    int websiteOpenings = 0;
    int quits = 0;
};

} // namespace kestrovan::test
