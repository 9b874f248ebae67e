#include "parts/PictureFile.h"

#include "rigs/Disk.h"
#include "rigs/Memory.h"
#include "rigs/TemporaryFolder.h"

#include <QImageWriter>

#include <gtest/gtest.h>
#include <sys/fsuid.h>
#include <unistd.h>

using namespace kestrovan;

namespace {

constexpr QSize screen{320, 180};
constexpr double little = 128; ///< mebibytes; sanitizers multiply what is used

/// Files that somebody may choose as a wallpaper, for good or ill.
class PictureFileTest : public testing::Test {
protected:
    std::string file(const std::string& name) const { return (folder_.path() / name).string(); }
    std::string write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(file(name), std::ios::binary) << bytes;
        return file(name);
    }
    // Its left half is red, the right one blue.
    std::string picture(const std::string& name, QSize size, bool isProgressive = false) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::blue);
        for (int y = 0; y < size.height(); ++y)
            std::fill_n(reinterpret_cast<QRgb*>(image.scanLine(y)), size.width() / 2, qRgb(255, 0, 0));
        QImageWriter writer(QString::fromStdString(file(name)));
        writer.setProgressiveScanWrite(isProgressive);
        EXPECT_TRUE(writer.write(image)) << name;
        return file(name);
    }
    static bool isShown(const std::string& path)
    {
        const auto image = pictureFile::cover(path, screen);
        const auto isHalfAndHalf = [](const QImage& shown) {
            return shown.pixelColor(20, 90).red() > 240 && shown.pixelColor(300, 90).blue() > 240;
        };
        return image.size() == screen && isHalfAndHalf(image);
    }
    // It takes little memory, whatever the file may be.
    static QImage cover(const std::string& path)
    {
        rigs::forgetPeak();
        const auto before = rigs::mebibytes("VmRSS:");
        auto shown = pictureFile::cover(path, screen);
        EXPECT_LT(rigs::mebibytes("VmHWM:") - before, little) << path;
        return shown;
    }
    static void expectNothing(const std::string& path) { EXPECT_TRUE(cover(path).isNull()) << path; }

private:
    TemporaryFolder folder_;
};

// A PNG of one kilobyte whose header promises that many pixels.
std::string promise(std::string png, quint32 width, quint32 height)
{
    constexpr std::size_t sizeAt = 16;
    constexpr std::size_t checksumAt = 29;
    const auto put = [&png](std::size_t at, quint32 number) {
        for (int byte = 3; byte >= 0; --byte)
            png.at(at++) = static_cast<char>(number >> (8 * byte));
    };
    put(sizeAt, width);
    put(sizeAt + 4, height);
    quint32 checksum = ~0U; // of the chunk's name and content, as in zlib
    for (std::size_t at = sizeAt - 4; at < checksumAt; ++at) {
        checksum ^= static_cast<unsigned char>(png.at(at));
        for (int bit = 0; bit < 8; ++bit)
            checksum = (checksum >> 1U) ^ ((checksum & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    put(checksumAt, ~checksum);
    return png;
}

} // namespace

TEST_F(PictureFileTest, PicturesOfTheUsualFormatsFillTheScreen)
{
    for (const auto* name : {"a.png", "a.jpg", "a.webp", "a.bmp"})
        EXPECT_TRUE(isShown(picture(name, {640, 200}))) << name;
    EXPECT_TRUE(isShown(picture("progressive.jpg", {640, 480}, true)));
    std::filesystem::rename(file("a.jpg"), file("misnamed.png"));
    EXPECT_TRUE(isShown(file("misnamed.png")));
    const auto dot = pictureFile::cover(picture("dot.png", {1, 1}), screen);
    EXPECT_EQ(dot.size(), screen);
    EXPECT_EQ(dot.pixelColor(160, 90), QColor(Qt::blue));
}

TEST_F(PictureFileTest, WhatIsCutShortIsNotShown)
{
    for (const auto* name : {"a.png", "a.jpg", "a.webp", "progressive.jpg"}) {
        const auto whole = rigs::contentOf(picture(name, {640, 480}, name[0] == 'p'));
        for (const double part : {0.02, 0.3, 0.6, 0.95}) {
            const auto length = static_cast<std::size_t>(part * static_cast<double>(whole.size()));
            expectNothing(write(name, whole.substr(0, length)));
        }
        EXPECT_TRUE(isShown(write(name, whole + "what some cameras add"))) << name;
    }
}

TEST_F(PictureFileTest, WhatWouldNotFitIntoMemoryIsNotTried)
{
    const auto small = rigs::contentOf(picture("a.png", {64, 64}));
    expectNothing(write("a.png", promise(small, 30'000, 30'000)));
    expectNothing(write("a.png", promise(small, 0x7FFFFFFF, 0x7FFFFFFF)));
    expectNothing(write("a.png", promise(small, 1, 0x7FFFFFFF)));
    ASSERT_TRUE(isShown(write("a.png", promise(small, 64, 64))));
    expectNothing(write("a.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='99999' height='99999'><rect/></svg>"));
}

TEST_F(PictureFileTest, ABombOfDarknessIsUnpackedLineByLine)
{
    QImage dark(7000, 7000, QImage::Format_RGB32);
    dark.fill(Qt::black);
    QImageWriter writer(QString::fromStdString(file("bomb.png")));
    writer.setQuality(50);
    ASSERT_TRUE(writer.write(dark));
    dark = {};
    ASSERT_LT(std::filesystem::file_size(file("bomb.png")), 1'000'000U);
    EXPECT_EQ(cover(file("bomb.png")).size(), screen);
}

TEST_F(PictureFileTest, WhatIsNoPictureIsNotShownAndNotWaitedFor)
{
    expectNothing(file("missing.png"));
    expectNothing(write("empty.png", ""));
    expectNothing(write("text.jpg", std::string(100'000, 'x')));
    expectNothing(file(""));
    ASSERT_EQ(mkfifo(file("pipe.png").c_str(), 0600), 0);
    expectNothing(file("pipe.png"));
    expectNothing("/dev/zero");
    ASSERT_EQ(symlink("loop.png", file("loop.png").c_str()), 0);
    expectNothing(file("loop.png"));

    const auto forbidden = picture("forbidden.png", {64, 64});
    chmod(forbidden.c_str(), 0);
    setfsuid(65534); // of this thread only
    expectNothing(forbidden);
    setfsuid(geteuid());
}
