#include "ui/CountdownRing.h"

#include "parts/Palette.h"

#include <QPainter>
#include <QtMath>

namespace kestrovan {

namespace {

constexpr double stroke = 6;
constexpr double restOpacity = 0.3;
constexpr int top = 90 * 16; // QPainter's angles are sixteenths of a degree, counter-clockwise from the right
constexpr int fullCircle = 360 * 16;

} // namespace

CountdownRing::CountdownRing(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &CountdownRing::lookChanged, this, [this] { update(); });
}

void CountdownRing::paint(QPainter* painter)
{
    const auto circle = boundingRect().adjusted(stroke / 2, stroke / 2, -stroke / 2, -stroke / 2);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(palette::at(color_, restOpacity), stroke));
    painter->drawEllipse(circle);
    painter->setPen(QPen(color_, stroke, Qt::SolidLine, Qt::FlatCap));
    painter->drawArc(circle, top, -qRound(fraction_ * fullCircle));
}

} // namespace kestrovan
