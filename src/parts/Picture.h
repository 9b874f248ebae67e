#pragma once

#include <QImage>
#include <QQuickItem>
#include <QtQmlIntegration>

namespace kestrovan {

/// An image from C++, stretched over the item. One of exactly the item's size in pixels is merely copied.
class Picture : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QImage image READ image WRITE setImage NOTIFY imageChanged)

public:
    explicit Picture(QQuickItem* parent = nullptr);

    QImage image() const { return image_; }
    void setImage(const QImage& image);

Q_SIGNALS:
    void imageChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

private:
    QImage image_;
    bool isNew_ = false;
};

} // namespace kestrovan
