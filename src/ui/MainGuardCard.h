#pragma once

#include "parts/GuardView.h"
#include "parts/Pulse.h"

#include <QtQmlIntegration>

namespace kestrovan {

/// The card in the middle of the main window: arms, cancels and disarms, according to what the guard is doing. Empty
/// while the alarm sounds.
class MainGuardCard : public kestrovan::GuardView {
    Q_OBJECT
    QML_NAMED_ELEMENT(MainGuardCardLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(bool isDisarmed READ isDisarmed NOTIFY changed)
    Q_PROPERTY(bool isArming READ isArming NOTIFY changed)
    Q_PROPERTY(bool isArmed READ isArmed NOTIFY changed)
    Q_PROPERTY(QString inactiveTitle READ inactiveTitle NOTIFY changed)
    Q_PROPERTY(QString inactiveDescription READ inactiveDescription NOTIFY changed)
    Q_PROPERTY(QString armLabel READ armLabel NOTIFY changed)
    Q_PROPERTY(QString secondsLeft READ secondsLeft NOTIFY changed)
    Q_PROPERTY(double ringFraction READ ringFraction NOTIFY changed)
    Q_PROPERTY(QString armingTitle READ armingTitle NOTIFY changed)
    Q_PROPERTY(QString armingDescription READ armingDescription NOTIFY changed)
    Q_PROPERTY(QString cancelLabel READ cancelLabel NOTIFY changed)
    Q_PROPERTY(QString activeTitle READ activeTitle NOTIFY changed)
    Q_PROPERTY(QString activeDescription READ activeDescription NOTIFY changed)
    Q_PROPERTY(QString disarmLabel READ disarmLabel NOTIFY changed)
    Q_PROPERTY(double badgeOpacity READ badgeOpacity NOTIFY breathed)
    Q_PROPERTY(double badgeScale READ badgeScale NOTIFY breathed)

public:
    MainGuardCard(AppState& appState, const Platform& platform);

    bool isDisarmed() const { return state().isDisarmed(); }
    bool isArming() const { return state().isArming(); }
    bool isArmed() const { return state().isArmed(); }
    QString inactiveTitle() const { return text(L10nKey::protectionInactive); }
    QString inactiveDescription() const { return text(L10nKey::protectionInactiveDesc); }
    QString armLabel() const { return text(L10nKey::activateProtection); }
    QString secondsLeft() const { return QString::number(state().secondsLeft()); }
    double ringFraction() const; ///< of the countdown, that is still to run: 0 to 1
    QString armingTitle() const { return text(L10nKey::armingTitle); }
    QString armingDescription() const { return text(L10nKey::armingDesc); }
    QString cancelLabel() const { return text(L10nKey::cancel); }
    QString activeTitle() const { return text(L10nKey::protectionActive); }
    QString activeDescription() const { return text(L10nKey::protectionActiveDesc); }
    QString disarmLabel() const { return text(L10nKey::disarmProtection); }
    double badgeOpacity() const { return 0.1 + 0.15 * breath_.phase(); }
    double badgeScale() const { return 0.95 + 0.1 * breath_.phase(); }

    Q_INVOKABLE void arm() { appState().startArming(); }
    Q_INVOKABLE void cancel() { appState().cancelArming(); }
    Q_INVOKABLE void disarm() { appState().disarm(std::nullopt); }

    /// Whether anything may move: false while nobody can see it.
    void setAnimated(bool animated);

Q_SIGNALS:
    void breathed();

private:
    const GuardState& state() const { return appState().guardState; }
    void guardHasChanged() override;
    void updateBreath() { breath_.setRunning(isAnimated_ && isArmed()); }

    bool isAnimated_ = false;
    Pulse breath_;
};

} // namespace kestrovan
