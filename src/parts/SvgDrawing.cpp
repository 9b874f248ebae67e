#include "parts/SvgDrawing.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace kestrovan {

QImage drawSvg(const QString& file, int pixels)
{
    if (!QFile::exists(file))
        return {};
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(file).render(&painter);
    return image;
}

} // namespace kestrovan
