#pragma once

#include <QColor>
#include <QImage>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QVariantMap>

#include <memory>
#include <string>
#include <vector>

namespace kestrovan::rigs {

/// A window in memory that a view is put on, looked at, clicked and typed into. Items are found by objectName.
class ViewStage {
public:
    explicit ViewStage(QSize size);

    /// A view of a type of a compiled module; none if it has errors, which are printed.
    QQuickItem* showType(const QString& module, const QString& type, const QVariantMap& properties = {});

    /// The first item of that name that is to be seen; none if there is no such.
    QQuickItem* find(const QString& name) const;
    std::vector<QQuickItem*> findAll(const QString& name) const;
    bool isVisible(const QString& name) const { return find(name) != nullptr; }
    QString text(const QString& name) const; ///< empty if there is no such item
    QColor color(const QString& name) const;
    void click(const QString& name);
    void clickAt(QPoint place);
    void type(const QString& characters);
    void press(Qt::Key key);

    QImage picture();
    /// What QML had to say of its own faults.
    const QStringList& complaints() const { return complaints_; }
    QQuickWindow& window() { return window_; }
    const QQuickWindow& window() const { return window_; }

private:
    QQmlEngine engine_;
    QStringList complaints_;
    QQuickWindow window_;
    std::unique_ptr<QQuickItem> view_;
};

} // namespace kestrovan::rigs
