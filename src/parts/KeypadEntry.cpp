#include "parts/KeypadEntry.h"

#include "core/AppState.h"
#include "platform/Text.h"

namespace kestrovan {

void pressKeypadKey(AppState& appState, const Text& text, const std::string& key)
{
    constexpr std::size_t longestEntry = 12;
    appState.pinError = false;
    const std::string& entry = appState.enteredPin;
    if (key == "C")
        appState.enteredPin = std::string();
    else if (key == "⌫")
        appState.enteredPin = text.withoutLastCharacter(entry);
    else if (text.countCharacters(entry) < longestEntry)
        appState.enteredPin = entry + key;
}

} // namespace kestrovan
