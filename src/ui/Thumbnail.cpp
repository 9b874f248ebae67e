#include "ui/Thumbnail.h"

#include <QQuickWindow>

namespace kestrovan {

void Thumbnail::setLoader(ThumbnailLoader* loader)
{
    loader_ = loader;
    Q_EMIT sourceChanged();
    load();
}

void Thumbnail::setPath(const QString& path)
{
    if (path == path_)
        return;
    path_ = path;
    setImage({});
    Q_EMIT sourceChanged();
    load();
}

void Thumbnail::componentComplete()
{
    Picture::componentComplete();
    load();
}

void Thumbnail::geometryChange(const QRectF& now, const QRectF& before)
{
    Picture::geometryChange(now, before);
    if (now.size() != before.size())
        load();
}

void Thumbnail::itemChange(ItemChange change, const ItemChangeData& data)
{
    Picture::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange)
        load();
}

void Thumbnail::load()
{
    request_.reset();
    if (!loader_ || !isComponentComplete() || !window() || path_.isEmpty() || size().isEmpty())
        return;
    const auto scale = window()->effectiveDevicePixelRatio();
    request_ = loader_->load(path_.toStdString(), (size() * scale).toSize(), cornerRadius_ * scale,
                             [this](const QImage& image) { setImage(image); });
}

} // namespace kestrovan
