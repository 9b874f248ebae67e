#include "parts/LogoPicture.h"

#include "l10n/Vendor.h"
#include "parts/Palette.h"
#include "parts/SvgDrawing.h"
#include "parts/Symbol.h"

#include <QIcon>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

namespace kestrovan {

namespace {

constexpr double cornerFraction = 0.22;
constexpr double shieldFraction = 0.5;
const QString builtIn = QStringLiteral(":/qt-project.org/imports/Kestrovan/Parts/AppIcon.svg");

} // namespace

LogoPicture::LogoPicture(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

QImage LogoPicture::logoImage(int pixels)
{
    auto image = drawSvg(builtIn, pixels);
    if (image.isNull())
        image = QIcon::fromTheme(QString::fromLatin1(vendor::applicationId)).pixmap(pixels, pixels).toImage();
    return image.isNull() ? image : image.scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage LogoPicture::drawnShield(int pixels)
{
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    QLinearGradient gradient(0, 0, pixels, pixels);
    gradient.setColorAt(0, palette::cyan);
    gradient.setColorAt(1, palette::blue);
    QPainter painter(&image);
    painter.fillRect(image.rect(), gradient);
    const auto shield = Symbol::draw("shield.fill", palette::white, qRound(pixels * shieldFraction));
    painter.drawImage((pixels - shield.width()) / 2, (pixels - shield.height()) / 2, shield);
    return image;
}

void LogoPicture::paint(QPainter* painter)
{
    const auto pixels = qCeil(width() * painter->device()->devicePixelRatio());
    const auto icon = logoImage(pixels);
    QPainterPath outline;
    outline.addRoundedRect(boundingRect(), width() * cornerFraction, height() * cornerFraction);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    QBrush brush(icon.isNull() ? drawnShield(pixels) : icon);
    brush.setTransform(QTransform::fromScale(width() / pixels, height() / pixels));
    painter->setBrush(brush);
    painter->drawPath(outline);
}

} // namespace kestrovan
