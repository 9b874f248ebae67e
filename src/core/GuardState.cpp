#include "core/GuardState.h"

namespace kestrovan {

std::int64_t GuardState::secondsLeft() const
{
    const auto* countdown = std::get_if<Arming>(&state_);
    return countdown ? countdown->secondsLeft : 0;
}

std::string GuardState::localizedTitle(AppLanguage lang) const
{
    const bool english = lang == AppLanguage::english;
    if (isArming())
        return (english ? "Arming (" : "Mengaktifkan (") + std::to_string(secondsLeft()) + "s)...";
    if (isArmed())
        return english ? "Protection Active (Guarded)" : "Proteksi Aktif (Dijaga)";
    if (const auto* reason = alarmReason())
        return "ALARM: " + localizedDescription(*reason, lang);
    return english ? "Protection Inactive" : "Proteksi Tidak Aktif";
}

} // namespace kestrovan
