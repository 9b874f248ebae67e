#include "parts/LogoPicture.h"
#include "parts/Pulse.h"
#include "parts/Symbol.h"
#include "platform/simulated/VirtualTime.h"

#include <QDir>
#include <QImage>

#include <gtest/gtest.h>

using namespace kestrovan;
using namespace std::chrono_literals;

namespace {

int inkedPixels(const QImage& image)
{
    int count = 0;
    for (int row = 0; row < image.height(); ++row)
        for (int column = 0; column < image.width(); ++column)
            count += qAlpha(image.pixel(column, row)) > 127 ? 1 : 0;
    return count;
}

} // namespace

TEST(SymbolTest, EveryDrawingHasInkAndUnknownNamesHaveNone)
{
    const auto drawings = QDir(":/qt-project.org/imports/Kestrovan/Parts/symbols").entryList({"*.svg"});
    ASSERT_GE(drawings.size(), 30);
    for (const auto& file : drawings) {
        const auto image = Symbol::draw(file.chopped(4), Qt::white, 48);
        EXPECT_GT(inkedPixels(image), 48 * 48 / 12) << file.toStdString();
        EXPECT_LT(inkedPixels(image), 48 * 48 * 9 / 10) << file.toStdString();
    }
    EXPECT_TRUE(Symbol::draw("no.such.symbol", Qt::white, 48).isNull());
}

TEST(LogoTest, TheIconIsFoundAndTheDrawnShieldIsWhiteOnBlue)
{
    EXPECT_EQ(LogoPicture::logoImage(80).size(), QSize(80, 80));
    const auto shield = LogoPicture::drawnShield(80);
    EXPECT_EQ(shield.pixelColor(40, 40), QColor(Qt::white));
    EXPECT_GT(shield.pixelColor(2, 2).green(), shield.pixelColor(77, 77).green());
}

TEST(PulseTest, SwingsBetweenItsEndsEasingAndRestsWhenStopped)
{
    VirtualTime time;
    int moves = 0;
    Pulse pulse(time, time, 1000ms, 50ms, [&] { ++moves; });
    time.advance(1s);
    EXPECT_EQ(moves, 0);

    pulse.setRunning(true);
    for (const double phase : {0.5, 1.0, 0.5, 0.0}) {
        time.advance(500ms);
        EXPECT_NEAR(pulse.phase(), phase, 0.001);
    }
    time.advance(250ms);
    EXPECT_NEAR(pulse.phase(), 0.129, 0.002) << "slowly at first";
    time.advance(300ms);
    pulse.setRunning(false);
    EXPECT_EQ(pulse.phase(), 0);
    const auto movesBefore = moves;
    time.advance(1s);
    EXPECT_EQ(moves, movesBefore);
}
