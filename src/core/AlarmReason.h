#pragma once

#include "l10n/AppLanguage.h"

#include <string>

namespace kestrovan {

/// Why the alarm fired.
enum class AlarmReason {
    chargerDisconnected,
    lidClosed,
    sleepAttempted,
    test, ///< a siren test; no sensor produces it
};

/// The name of the symbol that stands for the reason.
std::string iconName(AlarmReason reason);

std::string localizedDescription(AlarmReason reason, AppLanguage lang);

} // namespace kestrovan
