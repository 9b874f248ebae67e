#include "ui/SettingsSheet.h"

#include "l10n/Vendor.h"
#include "ui/Choices.h"

namespace kestrovan {

namespace {

constexpr std::array<std::int64_t, 3> armingDelaySeconds{3, 5, 10};

} // namespace

SettingsSheet::SettingsSheet(AppState& appState, const Platform& platform, Sheets& sheets, const ShellActions& actions)
    : SheetView(appState, platform.mainQueue, sheets, Sheets::Sheet::settings), actions_(actions),
      updates_(appState, platform.mainQueue), camera_(appState, platform.mainQueue, sheets),
      wallpaper_(appState, platform), pin_(appState, platform)
{}

QStringList SettingsSheet::languages() const
{
    QStringList names;
    for (const auto language : allLanguages)
        names << QString::fromUtf8(displayName(language).data());
    return names;
}

int SettingsSheet::languageIndex() const
{
    return indexOf(allLanguages, language());
}

void SettingsSheet::chooseLanguage(int index)
{
    if (const auto* chosen = at(allLanguages, index))
        appState().setLanguage(*chosen);
}

QStringList SettingsSheet::armingDelays() const
{
    QStringList labels;
    for (const auto seconds : armingDelaySeconds)
        labels << text(L10nKey::seconds(seconds));
    return labels;
}

int SettingsSheet::armingDelayIndex() const
{
    return indexOf(armingDelaySeconds, appState().armDelayDuration.get());
}

void SettingsSheet::chooseArmingDelay(int index)
{
    if (const auto* seconds = at(armingDelaySeconds, index))
        appState().armDelayDuration = *seconds;
}

QString SettingsSheet::website() const
{
    return vendor::websiteAddress;
}

} // namespace kestrovan
