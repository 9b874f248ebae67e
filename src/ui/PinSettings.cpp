#include "ui/PinSettings.h"

#include <utility>

namespace kestrovan {

namespace {

constexpr std::size_t shortestInput = 4;

} // namespace

bool PinSettings::canSave() const
{
    return text_.countCharacters(newPinInput_) >= shortestInput;
}

void PinSettings::enterNewPin(const QString& input)
{
    newPinInput_ = input.toStdString();
    Q_EMIT changed();
}

void PinSettings::save()
{
    if (newPinInput_.empty())
        return;
    const auto input = std::exchange(newPinInput_, {});
    appState().updatePinCode(input);
    if (appState().pinCode.get() == text_.trimmed(input)) // else the guard would not have it
        pinChangeSuccess_ = true;
    Q_EMIT changed();
}

} // namespace kestrovan
