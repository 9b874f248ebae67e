#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQmlIntegration>

namespace kestrovan {

/// Two colours that shade into each other from the top left corner to the bottom right.
class DiagonalGradient : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor from MEMBER from_ NOTIFY lookChanged)
    Q_PROPERTY(QColor to MEMBER to_ NOTIFY lookChanged)

public:
    explicit DiagonalGradient(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

protected:
    void geometryChange(const QRectF& now, const QRectF& before) override;

Q_SIGNALS:
    void lookChanged();

private:
    QColor from_;
    QColor to_;
};

} // namespace kestrovan
