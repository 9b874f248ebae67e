#pragma once

#include "parts/GuardView.h"

#include <QtQmlIntegration>

namespace kestrovan {

/// Whether the alarm asks for a PIN, and for which.
class PinSettings : public kestrovan::GuardView {
    Q_OBJECT
    QML_NAMED_ELEMENT(PinSettingsLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString requireLabel READ requireLabel NOTIFY changed)
    Q_PROPERTY(bool isRequired READ isRequired NOTIFY changed)
    Q_PROPERTY(QString changeLabel READ changeLabel NOTIFY changed)
    Q_PROPERTY(QString placeholder READ placeholder NOTIFY changed)
    Q_PROPERTY(QString newPinInput READ newPinInput NOTIFY changed)
    Q_PROPERTY(QString saveLabel READ saveLabel NOTIFY changed)
    Q_PROPERTY(bool canSave READ canSave NOTIFY changed)
    Q_PROPERTY(bool pinChangeSuccess READ pinChangeSuccess NOTIFY changed)
    Q_PROPERTY(QString savedMessage READ savedMessage NOTIFY changed)

public:
    PinSettings(AppState& appState, const Platform& platform)
        : GuardView(appState, platform.mainQueue), text_(platform.text)
    {}

    QString title() const { return text(L10nKey::pinSectionTitle); }
    QString requireLabel() const { return text(L10nKey::usePinToggle); }
    bool isRequired() const { return appState().isPinEnabled; }
    QString changeLabel() const { return text(L10nKey::changePinLabel); }
    QString placeholder() const { return text(L10nKey::newPinPlaceholder); }
    QString newPinInput() const { return QString::fromStdString(newPinInput_); }
    QString saveLabel() const { return text(L10nKey::savePinButton); }
    bool canSave() const;
    bool pinChangeSuccess() const { return pinChangeSuccess_; } ///< once true, it stays so
    QString savedMessage() const { return text(L10nKey::pinSavedSuccess); }

    Q_INVOKABLE void setRequired(bool on) { appState().togglePinRequirement(on); }
    Q_INVOKABLE void enterNewPin(const QString& input);
    Q_INVOKABLE void save(); ///< empties the input, whether or not it makes a PIN

private:
    const Text& text_;
    std::string newPinInput_;
    bool pinChangeSuccess_ = false;
};

} // namespace kestrovan
