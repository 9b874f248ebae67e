#include "parts/RoundedImage.h"

#include <QPainter>

namespace kestrovan {

QImage roundedImage(const QImage& image, double cornerRadius)
{
    if (image.isNull())
        return image;
    QImage rounded(image.size(), QImage::Format_ARGB32_Premultiplied);
    rounded.fill(Qt::transparent);
    QPainter painter(&rounded);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(image);
    painter.drawRoundedRect(rounded.rect(), cornerRadius, cornerRadius);
    return rounded;
}

} // namespace kestrovan
