#pragma once

#include "parts/Picture.h"
#include "ui/ThumbnailLoader.h"

namespace kestrovan {

/// The photo in a file, filling the item; nothing while it is not decoded, or cannot be.
class Thumbnail : public kestrovan::Picture {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(kestrovan::ThumbnailLoader* loader READ loader WRITE setLoader NOTIFY sourceChanged)
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY sourceChanged)
    Q_PROPERTY(bool isShown READ isShown NOTIFY imageChanged)
    Q_PROPERTY(double cornerRadius MEMBER cornerRadius_ NOTIFY sourceChanged)

public:
    explicit Thumbnail(QQuickItem* parent = nullptr) : Picture(parent) {}

    ThumbnailLoader* loader() const { return loader_; }
    void setLoader(ThumbnailLoader* loader);
    QString path() const { return path_; }
    void setPath(const QString& path);
    bool isShown() const { return !image().isNull(); }

Q_SIGNALS:
    void sourceChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void load();

    ThumbnailLoader* loader_ = nullptr;
    QString path_;
    double cornerRadius_ = 0;
    Subscription request_;
};

} // namespace kestrovan
