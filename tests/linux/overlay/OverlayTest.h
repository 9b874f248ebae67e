#pragma once

#include "platform/linux/MakeScreens.h"
#include "rigs/QtProgram.h"

#include <QKeyEvent>
#include <QPainter>
#include <QRasterWindow>

#include <gmock/gmock.h>

namespace kestrovan::test {

/// A view of one colour, so that a single pixel of somebody else is seen, which notes what is typed into it.
class PlainSheet : public QRasterWindow, public HostedView {
public:
    static constexpr QRgb ours = 0x204060;

    explicit PlainSheet(std::shared_ptr<std::string> typed, QRgb color = ours) : typed_(std::move(typed)), color_(color)
    {}

    QWindow* nativeWindow() override { return this; }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter(this).fillRect(QRect(QPoint(0, 0), size()), QColor::fromRgb(color_));
    }
    void keyPressEvent(QKeyEvent* event) override { *typed_ += event->text().toStdString(); }

private:
    std::shared_ptr<std::string> typed_;
    const QRgb color_;
};

/// Plain sheets on all screens of a desktop that is there already.
class OverlayTest : public testing::Test {
protected:
    using Windows = std::vector<std::unique_ptr<OverlayWindow>>;
    Windows show(Screens& desk)
    {
        Windows windows;
        for (const auto& screen : desk.screens()) {
            windows.push_back(desk.makeWindow({.screen = screen}, std::make_unique<PlainSheet>(typed)));
            windows.back()->makeKeyAndOrderFront();
        }
        return windows;
    }
    Windows show() { return show(*screens); }

    template <class Condition>
    static bool until(Condition condition)
    {
        return rigs::QtProgram::until(condition);
    }
    /// `typing` is a program that types something.
    bool hearsKeys(const std::vector<std::string>& typing)
    {
        typed->clear();
        return until([&] {
            rigs::run(typing);
            QCoreApplication::processEvents();
            return !typed->empty();
        });
    }

    std::shared_ptr<std::string> typed = std::make_shared<std::string>();
    std::unique_ptr<Screens> screens = makeScreens();
};

} // namespace kestrovan::test
