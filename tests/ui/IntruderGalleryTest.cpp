#include "WindowTest.h"
#include "rigs/TemporaryFolder.h"

#include <QImage>

#include <sys/stat.h>

#include <fstream>

using namespace kestrovan;
using namespace std::chrono_literals;

namespace {

class IntruderGalleryTest : public test::WindowTest {
protected:
    std::string photo(const std::string& name, QColor color)
    {
        QImage image(640, 360, QImage::Format_RGB32);
        image.fill(color);
        const auto path = folder.path() / name;
        image.save(QString::fromStdString(path.string()), "JPEG");
        return path.string();
    }
    std::string log(const std::string& path, const std::string& reason)
    {
        guard().addIntruderRecord(path, reason);
        return path;
    }
    /// The cells in sight, in the order in which one reads them.
    std::vector<QQuickItem*> cells(const QString& part)
    {
        stage.picture(); // the grid lays its cells out on drawing
        auto found = stage.findAll(part);
        std::sort(found.begin(), found.end(), [](const auto* one, const auto* other) {
            const auto a = one->mapToScene({});
            const auto b = other->mapToScene({});
            return a.y() != b.y() ? a.y() < b.y() : a.x() < b.x();
        });
        return found;
    }
    std::vector<std::string> texts(const QString& part)
    {
        std::vector<std::string> found;
        for (const auto* label : cells(part))
            found.push_back(label->property("text").toString().toStdString());
        return found;
    }
    bool isPhotoShown(std::size_t index) { return cells("photo").at(index)->property("isShown").toBool(); }

    TemporaryFolder folder;
};

TEST_F(IntruderGalleryTest, ShowsTheNewestFirstTwoInARowAlsoIfItArrivesMeanwhileUntilItIsCleared)
{
    qputenv("TZ", "Asia/Jakarta"); // 7 hours ahead of the laptop's clock, which begins at 14:05:09 UTC
    tzset();
    const auto path = log(photo("first.jpg", Qt::red), "Lid Closed!");
    wait(61s);
    log(photo("second.jpg", Qt::green), "Charger Terputus!");
    wait(61s);
    click("galleryButton");
    log(photo("third.jpg", Qt::blue), "Layar Ditutup!");
    react();

    EXPECT_EQ(texts("photoTime").back(), "01/03 21:05:09");
    qunsetenv("TZ");
    tzset();
    EXPECT_EQ(texts("photoReason"), (std::vector<std::string>{"Layar Ditutup!", "Charger Terputus!", "Lid Closed!"}));
    const auto shown = cells("photo");
    ASSERT_EQ(shown.size(), 3U);
    EXPECT_EQ(shown[0]->mapToScene({}).y(), shown[1]->mapToScene({}).y());
    EXPECT_EQ(shown[0]->mapToScene({}).x(), shown[2]->mapToScene({}).x());
    const auto picture = stage.picture();
    const auto colorOf = [&picture](const QQuickItem* cell) {
        return picture.pixelColor(cell->mapToScene({cell->width() / 2, cell->height() / 2}).toPoint());
    };
    EXPECT_GT(colorOf(shown[0]).blue(), 200);
    EXPECT_GT(colorOf(shown[1]).green(), 100);
    EXPECT_GT(colorOf(shown[2]).red(), 200);

    click("clearButton");
    EXPECT_EQ(text("emptyLabel"), "Belum ada foto penyusup yang tercatat.");
    EXPECT_FALSE(stage.isVisible("clearButton"));
    EXPECT_TRUE(guard().intruderRecords->empty());
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(IntruderGalleryTest, FilesThatAreNoPicturesKeepTheirCells)
{
    const auto broken = folder.path() / "broken.jpg";
    std::ofstream(broken) << "no picture at all";
    const auto pipe = folder.path() / "pipe.jpg";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    log(photo("good.jpg", Qt::red), "good");
    log(broken.string(), "broken");
    log(pipe.string(), "pipe");
    log((folder.path() / "gone.jpg").string(), "gone");
    click("galleryButton");

    EXPECT_EQ(texts("photoReason"), (std::vector<std::string>{"gone", "pipe", "broken", "good"}));
    EXPECT_FALSE(isPhotoShown(0));
    EXPECT_FALSE(isPhotoShown(1));
    EXPECT_FALSE(isPhotoShown(2));
    EXPECT_TRUE(isPhotoShown(3));
}

TEST_F(IntruderGalleryTest, HoldsOnlyWhatIsInSightOfTwoThousand)
{
    const auto path = photo("photo.jpg", Qt::red);
    std::vector<IntruderRecord> records;
    for (int count = 1999; count >= 0; --count)
        records.push_back({makeRecordId(), {}, path, std::to_string(count)});
    guard().intruderRecords = records;
    click("galleryButton");
    EXPECT_LT(cells("photo").size(), 16U);
    auto* grid = stage.find("photoGrid");
    grid->setProperty("contentY", grid->property("contentHeight").toDouble() - grid->height());
    react();
    react();
    EXPECT_EQ(texts("photoReason").back(), "0");
    EXPECT_LT(cells("photo").size(), 16U);
}

} // namespace
