#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQmlIntegration>

namespace kestrovan {

/// A ring, the part of which that is still to run is bright; it begins at the top and runs clockwise.
class CountdownRing : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double fraction MEMBER fraction_ NOTIFY lookChanged) ///< 0 to 1
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY lookChanged)

public:
    explicit CountdownRing(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void lookChanged();

private:
    double fraction_ = 0;
    QColor color_;
};

} // namespace kestrovan
