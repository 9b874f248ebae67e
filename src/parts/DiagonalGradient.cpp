#include "parts/DiagonalGradient.h"

#include <QPainter>

namespace kestrovan {

namespace {

// The picture is kept, twice, and as large as a window it would take megabytes. Few colours follow each other so slowly
// that nobody sees the difference.
constexpr qreal coarseness = 4;

} // namespace

DiagonalGradient::DiagonalGradient(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    connect(this, &DiagonalGradient::lookChanged, this, [this] { update(); });
}

void DiagonalGradient::paint(QPainter* painter)
{
    const auto area = boundingRect();
    QLinearGradient gradient(area.topLeft(), area.bottomRight());
    gradient.setColorAt(0, from_);
    gradient.setColorAt(1, to_);
    painter->fillRect(area, gradient);
}

void DiagonalGradient::geometryChange(const QRectF& now, const QRectF& before)
{
    setTextureSize((now.size() / coarseness).toSize().expandedTo({1, 1}));
    QQuickPaintedItem::geometryChange(now, before);
}

} // namespace kestrovan
