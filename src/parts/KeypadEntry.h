#pragma once

#include <string>

namespace kestrovan {

class AppState;
class Text;

/// What a key of the PIN keypad does to the PIN entry: "C" empties it, "⌫" takes the last character back, and any
/// other key is a digit, appended as long as the entry has fewer than 12 characters. Each clears the wrong-PIN message.
void pressKeypadKey(AppState& appState, const Text& text, const std::string& key);

} // namespace kestrovan
