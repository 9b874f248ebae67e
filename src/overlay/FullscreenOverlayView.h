#pragma once

#include "overlay/Backdrops.h"
#include "parts/GuardView.h"
#include "parts/Pulse.h"
#include "platform/Platform.h"

#include <QColor>
#include <QtQmlIntegration>

namespace kestrovan {

/// What a thief sees on one screen while the guard is armed or the alarm sounds, and the owner in a preview. It decides
/// every text, symbol and colour; FullscreenOverlayView.qml draws them. Main thread.
class FullscreenOverlayView : public kestrovan::GuardView {
    Q_OBJECT
    QML_NAMED_ELEMENT(FullscreenOverlayLogic)
    QML_UNCREATABLE("Made for each screen by C++")
    Q_PROPERTY(QImage backdrop READ backdrop NOTIFY backdropChanged)
    Q_PROPERTY(double strobeOpacity READ strobeOpacity NOTIFY strobeMoved)
    Q_PROPERTY(double glowOpacity READ glowOpacity NOTIFY glowMoved)
    Q_PROPERTY(double glowScale READ glowScale NOTIFY glowMoved)

    Q_PROPERTY(bool isAlarm READ isAlarm NOTIFY changed)
    Q_PROPERTY(bool isPreview READ isPreview NOTIFY changed)
    Q_PROPERTY(bool isPinNeeded READ isPinNeeded NOTIFY changed)
    Q_PROPERTY(bool isLockedOut READ isLockedOut NOTIFY changed)

    Q_PROPERTY(QString timeText READ timeText NOTIFY changed)
    Q_PROPERTY(QString dateText READ dateText NOTIFY changed)
    Q_PROPERTY(QString powerSymbol READ powerSymbol NOTIFY changed)
    Q_PROPERTY(QColor powerColor READ powerColor NOTIFY changed)
    Q_PROPERTY(QString powerText READ powerText NOTIFY changed)
    Q_PROPERTY(QString statusText READ statusText NOTIFY changed)
    Q_PROPERTY(QColor statusDotColor READ statusDotColor NOTIFY changed)
    Q_PROPERTY(QColor statusFillColor READ statusFillColor NOTIFY changed)
    Q_PROPERTY(QColor statusOutlineColor READ statusOutlineColor NOTIFY changed)
    Q_PROPERTY(QString closePreviewText READ closePreviewText NOTIFY changed)

    Q_PROPERTY(QString alarmSymbol READ alarmSymbol NOTIFY changed)
    Q_PROPERTY(QString alarmTitle READ alarmTitle NOTIFY changed)
    Q_PROPERTY(QString alarmCause READ alarmCause NOTIFY changed)
    Q_PROPERTY(QString lockdownBanner READ lockdownBanner NOTIFY changed)
    Q_PROPERTY(QString headline READ headline NOTIFY changed)
    Q_PROPERTY(QString warning READ warning NOTIFY changed)

    Q_PROPERTY(QString disarmText READ disarmText NOTIFY changed)
    Q_PROPERTY(QColor disarmTextColor READ disarmTextColor NOTIFY changed)
    Q_PROPERTY(QColor disarmFillColor READ disarmFillColor NOTIFY changed)
    Q_PROPERTY(QString pinLabel READ pinLabel NOTIFY changed)
    Q_PROPERTY(QString enteredPin READ enteredPin NOTIFY changed)
    Q_PROPERTY(QColor pinOutlineColor READ pinOutlineColor NOTIFY changed)
    Q_PROPERTY(QColor pinFocusedOutlineColor READ pinFocusedOutlineColor NOTIFY changed)
    Q_PROPERTY(QString unlockText READ unlockText NOTIFY changed)
    Q_PROPERTY(QString hint READ hint NOTIFY changed)
    Q_PROPERTY(QString statusLine READ statusLine NOTIFY changed)
    Q_PROPERTY(QColor statusLineColor READ statusLineColor NOTIFY changed)
    Q_PROPERTY(int statusLineWeight READ statusLineWeight NOTIFY changed)

public:
    FullscreenOverlayView(AppState& appState, const Platform& platform, DeterrentScreens& screens,
                          Backdrops& backdrops);

    /// What is covered on the screen needs no animation. Views are on the screen until they are told otherwise.
    void setOnScreen(bool isOnScreen);

    Q_INVOKABLE void resize(QSizeF area, double pixelsPerUnit);
    Q_INVOKABLE void closePreview();
    Q_INVOKABLE void submit();
    Q_INVOKABLE void handleKeypadPress(const QString& key);
    Q_INVOKABLE void editPin(const QString& text);

    QImage backdrop() const { return backdrop_; }
    double strobeOpacity() const;
    double glowOpacity() const;
    double glowScale() const;

    bool isAlarm() const { return appState().guardState->isAlarmTriggered(); }
    bool isPreview() const { return appState().guardState->isDisarmed(); }
    bool isPinNeeded() const { return appState().isPinEnabled; }
    bool isLockedOut() const { return appState().lockoutSecondsRemaining > 0; }

    QString timeText() const;
    QString dateText() const;
    QString powerSymbol() const;
    QColor powerColor() const;
    QString powerText() const;
    QString statusText() const;
    QColor statusDotColor() const;
    QColor statusFillColor() const;
    QColor statusOutlineColor() const;
    QString closePreviewText() const { return text(L10nKey::closePreview); }

    QString alarmSymbol() const;
    QString alarmTitle() const { return text(L10nKey::alarmTriggeredTitle); }
    QString alarmCause() const;
    QString lockdownBanner() const { return text(L10nKey::lockdownActiveBanner); }
    QString headline() const;
    QString warning() const { return text(L10nKey::dontTouchWarning); }

    QString disarmText() const;
    QColor disarmTextColor() const;
    QColor disarmFillColor() const;
    QString pinLabel() const { return text(L10nKey::enterPinToStop); }
    QString enteredPin() const { return QString::fromStdString(appState().enteredPin); }
    QColor pinOutlineColor() const;
    QColor pinFocusedOutlineColor() const;
    QString unlockText() const { return text(L10nKey::openUnlock); }
    QString hint() const { return text(L10nKey::numericOnlyHint); }
    QString statusLine() const;
    QColor statusLineColor() const;
    int statusLineWeight() const;

Q_SIGNALS:
    void backdropChanged();
    void strobeMoved();
    void glowMoved();

private:
    void guardHasChanged() override;
    void tick();
    void animate();
    void refreshBackdrop();

    const Platform platform_;
    DeterrentScreens& screens_;
    Backdrops& backdrops_;
    std::chrono::system_clock::time_point currentTime_;
    std::unique_ptr<Timer> timer_;
    Pulse strobeRed_;
    Pulse pulseGlow_;
    ChangeFollower motionFollower_;
    bool isOnScreen_ = true;

    QSize pixels_;
    double scale_ = 1;
    QImage backdrop_;
    std::shared_ptr<const QImage> standard_; ///< kept while it is shown, for others to share
    enum class Behind { nothing, calm, alarm, wallpaper } behind_ = Behind::nothing;
    std::shared_ptr<CoverPicture> wallpaper_;
    Subscription wallpaperChanges_;
};

} // namespace kestrovan
