#pragma once

#include <QColor>
#include <QImage>
#include <QQuickPaintedItem>
#include <QtQmlIntegration>

namespace kestrovan {

/// The shadow of a rounded rectangle, or of a circle if its corners are round enough. It reaches `blur` beyond what
/// throws it, so it is laid out that much larger on every side. What throws it may be translucent: there is no shadow
/// under it.
class SoftShadow : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double cornerRadius MEMBER cornerRadius_ NOTIFY lookChanged)
    Q_PROPERTY(double blur MEMBER blur_ NOTIFY lookChanged)
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY lookChanged)

public:
    explicit SoftShadow(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    /// The shadow of a rectangle of this size, in pixels; `blur` wider on every side.
    static QImage draw(QSize box, double cornerRadius, double blur, const QColor& color);

Q_SIGNALS:
    void lookChanged();

private:
    double cornerRadius_ = 0;
    double blur_ = 0;
    QColor color_{Qt::black};
};

} // namespace kestrovan
