#include "overlay/Backdrops.h"

#include "parts/Palette.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestrovan {

namespace {

constexpr double wallpaperShade = 0.48;
constexpr double glowDiameter = 600;
constexpr double glowBlur = 120;

void darken(QImage& wallpaper)
{
    QPainter(&wallpaper).fillRect(wallpaper.rect(), palette::at(palette::black, wallpaperShade));
}

// What a blur leaves of a disc's edge, `distance` from its centre.
double blurredDisc(double distance)
{
    return std::erfc((distance - glowDiameter / 2) / (glowBlur * std::numbers::sqrt2)) / 2;
}

QRadialGradient glow(const QColor& color, double opacity)
{
    constexpr double reach = glowDiameter / 2 + 2.6 * glowBlur;
    constexpr int stops = 48;
    QRadialGradient gradient(0, 0, reach);
    for (int stop = 0; stop <= stops; ++stop) {
        const auto fraction = static_cast<double>(stop) / stops;
        const auto light = std::max(0.0, blurredDisc(fraction * reach) - blurredDisc(reach)); // nothing at the rim
        gradient.setColorAt(fraction, palette::at(color, opacity * light));
    }
    return gradient;
}

QImage night(QSize pixels, double scale, bool isAlarm)
{
    QImage image(pixels, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(QPointF(0, 0), QPointF(pixels.width(), pixels.height()));
    sky.setColorAt(0, QColor::fromRgbF(0.05F, 0.07F, 0.12F));
    sky.setColorAt(1, QColor::fromRgbF(0.02F, 0.03F, 0.05F));
    painter.fillRect(image.rect(), sky);
    const auto light = isAlarm ? glow(palette::red, 0.2) : glow(palette::cyan, 0.15);
    const auto reach = light.radius();
    painter.translate(pixels.width() / 2.0, pixels.height() / 2.0);
    painter.scale(scale, scale);
    painter.fillRect(QRectF(-reach, -reach, 2 * reach, 2 * reach), light);
    return image;
}

} // namespace

std::shared_ptr<CoverPicture> Backdrops::wallpaper(QSize pixels)
{
    auto& known = wallpapers_[{pixels.width(), pixels.height()}];
    auto picture = known.lock();
    if (!picture) {
        picture = CoverPicture::make(mainQueue_, workers_, pixels, darken);
        known = picture;
    }
    return picture;
}

std::shared_ptr<const QImage> Backdrops::standard(QSize pixels, double scale, bool isAlarm)
{
    auto& known = standards_[{pixels.width(), pixels.height(), scale, isAlarm}];
    auto image = known.lock();
    if (!image) {
        image = std::make_shared<const QImage>(night(pixels, scale, isAlarm));
        known = image;
    }
    return image;
}

} // namespace kestrovan
