#pragma once

#include "parts/GuardView.h"
#include "parts/Pulse.h"

#include <QtQmlIntegration>

namespace kestrovan {

/// The panel over the whole main window while the alarm sounds, and the way to stop it there.
class AlarmTriggeredOverlay : public kestrovan::GuardView {
    Q_OBJECT
    QML_NAMED_ELEMENT(AlarmTriggeredOverlayLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(bool isShown READ isShown NOTIFY changed)
    Q_PROPERTY(double redOpacity READ redOpacity NOTIFY flashed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString reason READ reason NOTIFY changed)
    Q_PROPERTY(QString banner READ banner NOTIFY changed)
    Q_PROPERTY(bool isPhotoBadgeShown READ isPhotoBadgeShown NOTIFY changed)
    Q_PROPERTY(QString photoBadge READ photoBadge NOTIFY changed)
    Q_PROPERTY(bool isPinAsked READ isPinAsked NOTIFY changed)
    Q_PROPERTY(bool isLocked READ isLocked NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QString enteredPin READ enteredPin NOTIFY changed)
    Q_PROPERTY(QString pinPrompt READ pinPrompt NOTIFY changed)
    Q_PROPERTY(QString pinPlaceholder READ pinPlaceholder CONSTANT)
    Q_PROPERTY(QString unlockLabel READ unlockLabel NOTIFY changed)
    Q_PROPERTY(QString stopLabel READ stopLabel NOTIFY changed)

public:
    AlarmTriggeredOverlay(AppState& appState, const Platform& platform);

    bool isShown() const { return appState().guardState->isAlarmTriggered(); }
    double redOpacity() const { return 0.7 + 0.25 * strobe_.phase(); }
    QString title() const { return text(L10nKey::alarmTriggeredTitle); }
    QString reason() const; ///< empty unless the alarm sounds
    QString banner() const { return text(L10nKey::lockdownActiveBanner); }
    bool isPhotoBadgeShown() const { return appState().isCameraCaptureEnabled; }
    QString photoBadge() const { return text(L10nKey::photoCapturedBadge); }
    bool isPinAsked() const { return appState().isPinEnabled; }
    bool isLocked() const { return appState().lockoutSecondsRemaining > 0; }
    QString message() const; ///< what is wrong with the PIN entry; empty if nothing is
    QString enteredPin() const { return QString::fromStdString(appState().enteredPin); }
    QString pinPrompt() const { return text(L10nKey::enterPinToStop); }
    QString pinPlaceholder() const { return "PIN..."; }
    QString unlockLabel() const { return text(L10nKey::openUnlock); }
    QString stopLabel() const { return text(L10nKey::stopAlarmNow); }

    Q_INVOKABLE void enterPin(const QString& entry) { appState().enteredPin = entry.toStdString(); }
    Q_INVOKABLE void pressKey(const QString& key); ///< of the keypad; nothing during a lockout
    Q_INVOKABLE void unlock() { appState().disarm(appState().enteredPin.get()); }
    Q_INVOKABLE void stop() { appState().disarm(std::nullopt); }

    /// Whether anything may move: false while nobody can see it.
    void setAnimated(bool animated);

Q_SIGNALS:
    void flashed();

private:
    void guardHasChanged() override;
    void updateStrobe() { strobe_.setRunning(isAnimated_ && isShown()); }

    const Text& text_;
    bool isAnimated_ = false;
    Pulse strobe_;
};

} // namespace kestrovan
