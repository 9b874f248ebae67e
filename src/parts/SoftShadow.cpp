#include "parts/SoftShadow.h"

#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <array>
#include <vector>

namespace kestrovan {

namespace {

// The running mean over 2 * reach + 1 values, outside of which all is 0; three of them make a bell curve.
void boxBlur(std::vector<int>& line, int reach)
{
    const auto source = line;
    const auto count = static_cast<int>(line.size());
    const auto valueAt = [&](int index) { return index >= 0 && index < count ? source[std::size_t(index)] : 0; };
    int sum = 0;
    for (int index = -reach; index <= reach; ++index)
        sum += valueAt(index);
    for (int index = 0; index < count; ++index) {
        line[std::size_t(index)] = sum / (2 * reach + 1);
        sum += valueAt(index + reach + 1) - valueAt(index - reach);
    }
}

void blurRows(QImage& mask, int reach)
{
    constexpr int passes = 3;
    std::vector<int> line(std::size_t(mask.width()));
    for (int row = 0; row < mask.height(); ++row) {
        auto* pixels = mask.scanLine(row);
        std::transform(pixels, pixels + mask.width(), line.begin(), [](uchar value) { return value * 256; });
        for (int pass = 0; pass < passes; ++pass)
            boxBlur(line, reach);
        std::transform(line.begin(), line.end(), pixels, [](int value) { return uchar(value / 256); });
    }
}

QImage maskOf(QSize box, double cornerRadius, double blur)
{
    const auto margin = qCeil(blur);
    QImage mask(box + QSize(2 * margin, 2 * margin), QImage::Format_Grayscale8);
    mask.fill(0);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    const QRect shape(QPoint(margin, margin), box);
    const auto radius = std::min({cornerRadius, box.width() / 2.0, box.height() / 2.0});
    painter.drawRoundedRect(shape, radius, radius);
    return mask;
}

void cutOut(QPainter& painter, const QRectF& box, double cornerRadius)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    const auto radius = std::min({cornerRadius, box.width() / 2, box.height() / 2});
    painter.drawRoundedRect(box, radius, radius);
}

} // namespace

SoftShadow::SoftShadow(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    connect(this, &SoftShadow::lookChanged, this, [this] { update(); });
}

QImage SoftShadow::draw(QSize box, double cornerRadius, double blur, const QColor& color)
{
    auto mask = maskOf(box, cornerRadius, blur);
    const auto reach = std::max(1, qRound(blur / 3)); // three means of this reach fade to nothing at `blur`
    blurRows(mask, reach);
    mask = mask.transformed(QTransform().rotate(90));
    blurRows(mask, reach);
    mask = mask.transformed(QTransform().rotate(-90));
    QImage shadow(mask.size(), QImage::Format_ARGB32_Premultiplied);
    shadow.fill(color);
    mask.reinterpretAsFormat(QImage::Format_Alpha8);
    QPainter painter(&shadow);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, mask);
    return shadow;
}

// Of a large box only the rim is worth computing: a small shadow is drawn, and stretched between its corners.
void SoftShadow::paint(QPainter* painter)
{
    const auto scale = painter->device()->devicePixelRatio();
    const auto margin = qCeil(blur_ * scale);
    const QSize box((size() * scale).toSize() - QSize(2, 2) * margin);
    if (box.isEmpty())
        return;
    const auto rim = qCeil((std::max(cornerRadius_, blur_) + blur_) * scale);
    const auto tile = draw(box.boundedTo({2 * rim + 1, 2 * rim + 1}), cornerRadius_ * scale, blur_ * scale, color_);
    const auto cuts = [&](int length, int tileLength) {
        const auto corner = (tileLength - 1) / 2;
        return std::array{0, corner, length - (tileLength - corner - 1), length};
    };
    const auto whole = box + QSize(2, 2) * margin;
    const auto toX = cuts(whole.width(), tile.width());
    const auto toY = cuts(whole.height(), tile.height());
    const auto fromX = cuts(tile.width(), tile.width());
    const auto fromY = cuts(tile.height(), tile.height());
    const auto cell = [](const auto& x, const auto& y, std::size_t column, std::size_t row) {
        return QRectF(QPointF(x[column], y[row]), QPointF(x[column + 1], y[row + 1]));
    };
    painter->scale(1 / scale, 1 / scale);
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            painter->drawImage(cell(toX, toY, column, row), tile, cell(fromX, fromY, column, row));
    cutOut(*painter, QRectF(QPointF(margin, margin), box), cornerRadius_ * scale);
}

} // namespace kestrovan
