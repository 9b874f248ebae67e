#include "parts/Symbol.h"

#include "parts/SvgDrawing.h"

#include <QPainter>
#include <QtMath>

namespace kestrovan {

namespace {

const QString folder = QStringLiteral(":/qt-project.org/imports/Kestrovan/Parts/symbols/");

// What is ink: as opaque as the drawing is and as dark.
int inkOf(QRgb premultiplied)
{
    return qAlpha(premultiplied) - qRed(premultiplied);
}

} // namespace

Symbol::Symbol(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void Symbol::setName(const QString& name)
{
    if (name == name_)
        return;
    name_ = name;
    update();
    Q_EMIT nameChanged();
}

void Symbol::setColor(const QColor& color)
{
    if (color == color_)
        return;
    color_ = color;
    update();
    Q_EMIT colorChanged();
}

void Symbol::setSize(double size)
{
    if (qFuzzyCompare(size, size_))
        return;
    size_ = size;
    setImplicitSize(size, size);
    Q_EMIT sizeChanged();
}

void Symbol::paint(QPainter* painter)
{
    const auto scale = painter->device()->devicePixelRatio();
    const auto image = draw(name_, color_, qCeil(width() * scale));
    if (!image.isNull())
        painter->drawImage(boundingRect(), image);
}

QImage Symbol::draw(const QString& name, const QColor& color, int pixels)
{
    auto image = name.isEmpty() ? QImage() : drawSvg(folder + name + ".svg", pixels);
    const auto premultiplied = [&color](int ink) {
        const auto alpha = ink * color.alpha() / 255;
        return qPremultiply(qRgba(color.red(), color.green(), color.blue(), alpha));
    };
    for (int row = 0; row < image.height(); ++row) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(row));
        for (int column = 0; column < image.width(); ++column)
            line[column] = premultiplied(inkOf(line[column]));
    }
    return image;
}

} // namespace kestrovan
