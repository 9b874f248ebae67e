#include "rigs/ViewStage.h"

#include <QQmlComponent>
#include <QTest>

#include <iostream>

namespace kestrovan::rigs {
namespace {

void collectVisible(QQuickItem* item, const QString& name, std::vector<QQuickItem*>& found)
{
    if (!item || !item->isVisible())
        return;
    if (item->objectName() == name)
        found.push_back(item);
    for (auto* child : item->childItems())
        collectVisible(child, name, found);
}

} // namespace

ViewStage::ViewStage(QSize size)
{
    QObject::connect(&engine_, &QQmlEngine::warnings, [this](const QList<QQmlError>& warnings) {
        for (const auto& warning : warnings)
            complaints_ << warning.toString();
    });
    window_.resize(size);
    window_.setColor(Qt::black);
}

QQuickItem* ViewStage::showType(const QString& module, const QString& type, const QVariantMap& properties)
{
    QQmlComponent component(&engine_);
    component.setData(QStringLiteral("import %1\n%2 {}").arg(module, type).toUtf8(), QUrl("qrc:/stage.qml"));
    auto* made = component.isReady() ? component.createWithInitialProperties(properties) : nullptr;
    view_.reset(qobject_cast<QQuickItem*>(made));
    if (!view_) {
        std::cerr << component.errorString().toStdString() << '\n';
        return nullptr;
    }
    view_->setParentItem(window_.contentItem());
    view_->setSize(window_.size());
    window_.show();
    window_.requestActivate();
    const bool isUp = QTest::qWaitFor([this] { return window_.isExposed() && window_.isActive(); }, 20'000);
    return isUp ? view_.get() : nullptr;
}

QQuickItem* ViewStage::find(const QString& name) const
{
    const auto found = findAll(name);
    return found.empty() ? nullptr : found.front();
}

std::vector<QQuickItem*> ViewStage::findAll(const QString& name) const
{
    std::vector<QQuickItem*> found;
    collectVisible(view_.get(), name, found);
    return found;
}

QString ViewStage::text(const QString& name) const
{
    const auto* item = find(name);
    return item ? item->property("text").toString() : QString();
}

QColor ViewStage::color(const QString& name) const
{
    const auto* item = find(name);
    return item ? item->property("color").value<QColor>() : QColor();
}

void ViewStage::click(const QString& name)
{
    auto* item = find(name);
    if (!item)
        return;
    const auto middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    clickAt(middle.toPoint());
}

void ViewStage::clickAt(QPoint place)
{
    QTest::mouseClick(&window_, Qt::LeftButton, {}, place);
}

void ViewStage::type(const QString& characters)
{
    for (const auto character : characters)
        QTest::keyClick(&window_, character.toLatin1());
}

void ViewStage::press(Qt::Key key)
{
    QTest::keyClick(&window_, key);
}

QImage ViewStage::picture()
{
    return window_.grabWindow();
}

} // namespace kestrovan::rigs
