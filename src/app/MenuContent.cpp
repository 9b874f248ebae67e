#include "app/MenuContent.h"

#include "l10n/L10n.h"
#include "l10n/Vendor.h"

namespace kestrovan {

namespace {

std::string powerLine(const BatteryStatus& status, bool english)
{
    const char* source = english ? "Battery" : "Baterai";
    if (status.isACConnected)
        source = english ? "Charger Connected" : "Charger Terhubung";
    return std::string(source) + " (" + std::to_string(status.currentPercentage) + "%)";
}

MenuEntry text(MenuEntry::Kind kind, std::string content)
{
    return {.kind = kind, .text = std::move(content)};
}

MenuEntry button(std::string label, Task press, bool isShown = true)
{
    return {.kind = MenuEntry::Kind::button, .text = std::move(label), .isShown = isShown, .press = std::move(press)};
}

} // namespace

std::vector<MenuEntry> menuContent(AppState& appState, const ShellActions& actions)
{
    const auto lang = appState.currentLanguage.get();
    const bool english = lang == AppLanguage::english;
    const auto& state = appState.guardState.get();
    const auto disarm = [&appState] { appState.disarm(std::nullopt); };
    auto quit = button(L10n::text(L10nKey::menuQuit, lang), actions.quit);
    quit.isEnabled = !state.isAlarmTriggered();

    return {
        text(MenuEntry::Kind::headline, state.localizedTitle(lang)),
        text(MenuEntry::Kind::caption, powerLine(appState.powerMonitor.status, english)),
        {},
        button(
            english ? "Arm Protection" : "Aktifkan Proteksi", [&appState] { appState.startArming(); },
            state.isDisarmed()),
        button(english ? "Disarm Protection" : "Matikan Proteksi", disarm, state.isArmed()),
        button(english ? "STOP ALARM" : "HENTIKAN ALARM", disarm, state.isAlarmTriggered()),
        {},
        button(english ? "Check for Updates..." : "Periksa Pembaruan...",
               [&appState] { appState.updateManager.checkForUpdates(false); }),
        {},
        text(MenuEntry::Kind::footnote, L10n::text(L10nKey::developerLabel, lang)),
        button(vendor::websiteHost, actions.openWebsite),
        {},
        button(L10n::text(L10nKey::menuOpenWindow, lang), actions.openWindow),
        quit,
    };
}

std::string menuBarSymbol(const GuardState& state)
{
    if (state.isAlarmTriggered())
        return "exclamationmark.triangle.fill";
    return state.isArmed() ? "bolt.shield.fill" : "bolt.shield";
}

} // namespace kestrovan
