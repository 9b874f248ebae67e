#pragma once

#include "parts/Palette.h"

#include <QFont>
#include <QObject>
#include <QtQmlIntegration>

namespace kestrovan {

/// Colours and fonts for QML, as the singleton Theme.
class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor white READ white CONSTANT)
    Q_PROPERTY(QColor black READ black CONSTANT)
    Q_PROPERTY(QColor gray READ gray CONSTANT)
    Q_PROPERTY(QColor red READ red CONSTANT)
    Q_PROPERTY(QColor orange READ orange CONSTANT)
    Q_PROPERTY(QColor yellow READ yellow CONSTANT)
    Q_PROPERTY(QColor green READ green CONSTANT)
    Q_PROPERTY(QColor mint READ mint CONSTANT)
    Q_PROPERTY(QColor cyan READ cyan CONSTANT)
    Q_PROPERTY(QColor blue READ blue CONSTANT)

public:
    // QML sees only enumerators that begin with a capital.
    enum Weight { Regular = 400, Medium = 500, Semibold = 600, Bold = 700, Heavy = 800 };
    Q_ENUM(Weight)
    enum Design { Standard, Rounded, Monospaced };
    Q_ENUM(Design)

    static QColor white() { return palette::white; }
    static QColor black() { return palette::black; }
    static QColor gray() { return palette::gray; }
    static QColor red() { return palette::red; }
    static QColor orange() { return palette::orange; }
    static QColor yellow() { return palette::yellow; }
    static QColor green() { return palette::green; }
    static QColor mint() { return palette::mint; }
    static QColor cyan() { return palette::cyan; }
    static QColor blue() { return palette::blue; }

    Q_INVOKABLE static QColor at(const QColor& color, double opacity) { return palette::at(color, opacity); }

    /// A font of the desktop's, `size` in pixels of a screen that is not scaled.
    Q_INVOKABLE static QFont font(int size, int weight, int design, bool isUnderlined = false);
};

} // namespace kestrovan
