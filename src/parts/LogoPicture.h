#pragma once

#include <QImage>
#include <QQuickPaintedItem>
#include <QtQmlIntegration>

namespace kestrovan {

/// The picture inside an AppLogoView: the application icon with round corners, else a shield on a gradient.
class LogoPicture : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

public:
    explicit LogoPicture(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    /// The icon that is built in, else the one that is installed for the program; null if there is none.
    static QImage logoImage(int pixels);
    static QImage drawnShield(int pixels);
};

} // namespace kestrovan
