#pragma once

#include "parts/CoverPicture.h"
#include "parts/GuardView.h"

#include <QImage>
#include <QtQmlIntegration>

namespace kestrovan {

/// The settings of the deterrent screens: their picture, their text, and when they are shown.
class WallpaperSettings : public kestrovan::GuardView {
    Q_OBJECT
    QML_NAMED_ELEMENT(WallpaperSettingsLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString description READ description NOTIFY changed)
    Q_PROPERTY(QImage preview READ preview NOTIFY changed)
    Q_PROPERTY(bool hasPreview READ hasPreview NOTIFY changed)
    Q_PROPERTY(QString chooseLabel READ chooseLabel NOTIFY changed)
    Q_PROPERTY(bool canRemove READ canRemove NOTIFY changed)
    Q_PROPERTY(QString removeLabel READ removeLabel NOTIFY changed)
    Q_PROPERTY(QString warningLabel READ warningLabel NOTIFY changed)
    Q_PROPERTY(QString warningPlaceholder READ warningPlaceholder NOTIFY changed)
    Q_PROPERTY(QString warning READ warning NOTIFY changed)
    Q_PROPERTY(QString armedLabel READ armedLabel NOTIFY changed)
    Q_PROPERTY(bool isShownWhenArmed READ isShownWhenArmed NOTIFY changed)
    Q_PROPERTY(QString triggeredLabel READ triggeredLabel NOTIFY changed)
    Q_PROPERTY(bool isShownWhenTriggered READ isShownWhenTriggered NOTIFY changed)

public:
    WallpaperSettings(AppState& appState, const Platform& platform);

    QString title() const { return text(L10nKey::wallpaperSectionTitle); }
    QString description() const { return text(L10nKey::wallpaperSectionDesc); }
    QImage preview() const { return picture_->image(); }
    bool hasPreview() const { return !picture_->image().isNull(); }
    QString chooseLabel() const { return text(L10nKey::chooseFromMac); }
    bool canRemove() const { return appState().customImagePath->has_value(); }
    QString removeLabel() const { return text(L10nKey::removeCustomImage); }
    QString warningLabel() const { return text(L10nKey::fullscreenWarningLabel); }
    QString warningPlaceholder() const { return text(L10nKey::defaultWarningText); }
    QString warning() const { return QString::fromStdString(appState().customWarningMessage); }
    QString armedLabel() const { return text(L10nKey::showFullscreenArmed); }
    bool isShownWhenArmed() const { return appState().showFullscreenWhenArmed; }
    QString triggeredLabel() const { return text(L10nKey::showFullscreenAlarm); }
    bool isShownWhenTriggered() const { return appState().showFullscreenWhenTriggered; }

    Q_INVOKABLE void choose(); ///< soon, by a dialog of its own
    Q_INVOKABLE void remove() { appState().removeCustomImage(); }
    Q_INVOKABLE QString setWarning(const QString& warning); ///< returns what is kept of it
    Q_INVOKABLE void showWhenArmed(bool on) { appState().toggleFullscreenArmed(on); }
    Q_INVOKABLE void showWhenTriggered(bool on) { appState().toggleFullscreenTriggered(on); }

private:
    void guardHasChanged() override;

    MainQueue& mainQueue_;
    std::shared_ptr<CoverPicture> picture_;
    Subscription pictureSubscription_;
    Lifetime lifetime_;
};

} // namespace kestrovan
