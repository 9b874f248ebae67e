#include "OverlayViewTest.h"
#include "rigs/TemporaryFolder.h"

using namespace kestrovan;
using namespace std::chrono_literals;

namespace {

/// What the view costs and what it looks like, rather than what it says.
class OverlayDrawingTest : public test::OverlayViewTest {
protected:
    void countMoves()
    {
        QObject::connect(view.get(), &FullscreenOverlayView::strobeMoved, [this] { ++strobes; });
        QObject::connect(view.get(), &FullscreenOverlayView::glowMoved, [this] { ++glows; });
        QObject::connect(view.get(), &FullscreenOverlayView::backdropChanged, [this] { ++backdropChanges; });
    }
    void expectMoves(bool strobe, bool glow)
    {
        laptop.settle();
        strobes = glows = 0;
        laptop.advance(1s);
        EXPECT_EQ(strobes > 0, strobe);
        EXPECT_EQ(glows > 0, glow);
    }
    QColor cornerOfBackdrop() { return view->backdrop().pixelColor(2, 2); }
    void choose(const std::string& path)
    {
        guard().customImagePath = path;
        laptop.settle();
    }
    std::string makePicture(QColor color, QSize size)
    {
        auto path = (folder.path() / "picture.png").string();
        QImage image(size, QImage::Format_RGB32);
        image.fill(color);
        image.save(QString::fromStdString(path));
        return path;
    }

    TemporaryFolder folder;
    int strobes = 0;
    int glows = 0;
    int backdropChanges = 0;
};

} // namespace

TEST_F(OverlayDrawingTest, NothingMovesThatIsNotSeen)
{
    show();
    countMoves();
    expectMoves(false, true);
    armAndWait();
    expectMoves(false, true);
    view->setOnScreen(false);
    expectMoves(false, false);
    laptop.unplugCharger();
    expectMoves(false, false);
    view->setOnScreen(true);
    expectMoves(true, false);
    guard().disarm("7391");
    expectMoves(false, true);
}

TEST_F(OverlayDrawingTest, TheUsersPictureIsDarkenedCutToTheScreenAndDecodedOnceForEachChange)
{
    show();
    countMoves();
    choose(makePicture(Qt::white, {100, 300}));
    ASSERT_EQ(view->backdrop().size(), QSize(1920, 1080));
    EXPECT_NEAR(cornerOfBackdrop().red(), 255 * 0.52, 2);
    laptop.advance(5s);
    EXPECT_EQ(backdropChanges, 1);

    makePicture(Qt::blue, {300, 101});
    laptop.advance(2s);
    EXPECT_EQ(cornerOfBackdrop().red(), 0);
    EXPECT_NEAR(cornerOfBackdrop().blue(), 255 * 0.52, 2);
    EXPECT_EQ(backdropChanges, 2);

    std::filesystem::remove(folder.path() / "picture.png");
    laptop.advance(2s);
    EXPECT_EQ(cornerOfBackdrop().blue(), 31) << "the night of the standard backdrop";
    makePicture(Qt::white, {50, 50});
    laptop.advance(2s);
    EXPECT_NEAR(cornerOfBackdrop().red(), 255 * 0.52, 2);
    guard().customImagePath = std::nullopt;
    laptop.settle();
    EXPECT_EQ(cornerOfBackdrop().blue(), 31);
}

TEST_F(OverlayDrawingTest, OnSmallScreensEverythingShrinksUntilItFits)
{
    guard().updateWarningMessage(std::string(140, 'W'));
    show();
    for (const auto size : {QSize(1920, 1080), QSize(1366, 768), QSize(1024, 600), QSize(600, 1024), QSize(640, 400)}) {
        stage.window().contentItem()->childItems().front()->setSize(size);
        laptop.settle();
        const QRectF screen(QPointF(0, 0), size);
        for (const auto* name : {"time", "status", "closePreview", "headline", "warning", "pinLabel", "keyC", "hint"}) {
            const auto* item = stage.find(name);
            ASSERT_TRUE(item) << name;
            const auto place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
            EXPECT_TRUE(screen.contains(place)) << name << " at " << size.width();
        }
        const auto bottomOf = [&](const char* name) {
            const auto* item = stage.find(name);
            return item->mapToScene(QPointF(0, item->height())).y();
        };
        EXPECT_LT(bottomOf("date"), stage.find("glow")->mapToScene(QPointF(0, 0)).y());
        EXPECT_LT(bottomOf("warning"), stage.find("pinLabel")->mapToScene(QPointF(0, 0)).y());
    }
}
