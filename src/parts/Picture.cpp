#include "parts/Picture.h"

#include <QQuickWindow>
#include <QSGImageNode>

#include <utility>

namespace kestrovan {

Picture::Picture(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void Picture::setImage(const QImage& image)
{
    if (image.cacheKey() == image_.cacheKey())
        return;
    image_ = image;
    isNew_ = true;
    update();
    Q_EMIT imageChanged();
}

QSGNode* Picture::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/)
{
    auto* shown = static_cast<QSGImageNode*>(node);
    if (image_.isNull() || width() <= 0 || height() <= 0) {
        delete shown;
        return nullptr;
    }
    if (!shown) {
        shown = window()->createImageNode();
        shown->setOwnsTexture(true);
        shown->setFiltering(QSGTexture::Linear);
        isNew_ = true;
    }
    if (std::exchange(isNew_, false))
        shown->setTexture(window()->createTextureFromImage(image_));
    shown->setRect(boundingRect());
    return shown;
}

} // namespace kestrovan
