#include "core/AlarmReason.h"

#include "l10n/L10n.h"

namespace kestrovan {

namespace {

struct Row {
    const char* iconName;
    L10nKey::Name description;
};

Row row(AlarmReason reason)
{
    switch (reason) {
    case AlarmReason::chargerDisconnected:
        return {"powerplug.slash.fill", L10nKey::reasonChargerDisconnected};
    case AlarmReason::lidClosed:
        return {"laptopcomputer.slash", L10nKey::reasonLidClosed};
    case AlarmReason::sleepAttempted:
        return {"moon.zzz.fill", L10nKey::reasonSleepAttempted};
    case AlarmReason::test:
        break;
    }
    return {"speaker.wave.3.fill", L10nKey::reasonTest};
}

} // namespace

std::string iconName(AlarmReason reason)
{
    return row(reason).iconName;
}

std::string localizedDescription(AlarmReason reason, AppLanguage lang)
{
    return L10n::text(row(reason).description, lang);
}

} // namespace kestrovan
