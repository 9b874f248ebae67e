#pragma once

#include <QColor>
#include <QImage>
#include <QQuickPaintedItem>
#include <QtQmlIntegration>

namespace kestrovan {

/// A drawing of ours, by the name of its file in symbols/, in one colour. In the drawings black is ink and white cuts
/// it out. An unknown name draws nothing.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// Width and height in pixels of a screen that is not scaled.
    Q_PROPERTY(double size READ size WRITE setSize NOTIFY sizeChanged)

public:
    explicit Symbol(QQuickItem* parent = nullptr);

    QString name() const { return name_; }
    void setName(const QString& name);
    QColor color() const { return color_; }
    void setColor(const QColor& color);
    double size() const { return size_; }
    void setSize(double size);

    void paint(QPainter* painter) override;

    /// Square, `pixels` wide, transparent around the ink; null for an unknown name.
    static QImage draw(const QString& name, const QColor& color, int pixels);

Q_SIGNALS:
    void nameChanged();
    void colorChanged();
    void sizeChanged();

private:
    QString name_;
    QColor color_{Qt::white};
    double size_ = 0;
};

} // namespace kestrovan
