#include "update/UpdateManager.h"

#include "l10n/Vendor.h"
#include "platform/Clock.h"
#include "platform/Http.h"
#include "platform/MainQueue.h"
#include "platform/SettingsStore.h"
#include "platform/Text.h"
#include "platform/Workspace.h"
#include "update/AnswerJudge.h"
#include "update/VersionOrder.h"
#include "update/WebAddress.h"

namespace kestrovan {

namespace {

constexpr const char* autoCheckKey = "Kestrovan_AutoCheckUpdates";      // bool
constexpr const char* serverAddressKey = "Kestrovan_UpdateServerURL";   // string
constexpr const char* rawContentHostFragment = "raw.githubusercontent"; // where manifests may once have been kept
constexpr const char* blockedMessage = "URL server tidak valid atau diblokir oleh sistem keamanan.";

std::string defaultAddress()
{
    return std::string("https://") + vendor::updateHost + "/version.json";
}

bool needsRepair(const std::string& address)
{
    return address.find(rawContentHostFragment) != std::string::npos || address.starts_with("http://");
}

// "https://host" and "https://host/folder/" name the manifest in that place; a file or a query names itself.
std::string completed(const std::string& address)
{
    if (address.ends_with('/'))
        return address + "version.json";
    if (address.ends_with(".json") || address.find('?') != std::string::npos)
        return address;
    return address + "/version.json";
}

const char* messageOf(AddressFault fault)
{
    switch (fault) {
    case AddressFault::malformed:
        return "Format URL tidak valid.";
    case AddressFault::foreignScheme:
        return "Protokol tidak diizinkan. Hanya HTTP dan HTTPS yang didukung.";
    case AddressFault::noHost:
        return "Hostname server tidak valid.";
    }
    return "";
}

using ServerAddress = std::variant<WebAddress, std::string>; // or why it will not do

ServerAddress checkServerAddress(const std::string& address, const Text& text)
{
    const auto trimmed = text.trimmed(address);
    if (trimmed.empty())
        return "URL server tidak boleh kosong.";
    const auto reading = parseWebAddress(trimmed);
    if (const auto* fault = std::get_if<AddressFault>(&reading))
        return messageOf(*fault);
    const auto& parsed = std::get<WebAddress>(reading);
    if (isBlockedHost(parsed.host))
        return "Akses ke host tersebut diblokir demi keamanan.";
    return parsed;
}

} // namespace

UpdateManager::UpdateManager(const Platform& platform) : platform_(platform)
{
    readSettings();
}

void UpdateManager::readSettings()
{
    auto& settings = platform_.settings;
    isAutoCheckEnabled = settings.read<bool>(autoCheckKey).value_or(true);
    const auto stored = settings.read<std::string>(serverAddressKey);
    if (stored && !needsRepair(*stored))
        serverUpdateURLString = *stored;
    else
        setServerURL(defaultAddress());
}

bool UpdateManager::isTooSoon() const
{
    constexpr std::chrono::duration<double> interval(minCheckIntervalSeconds);
    return lastCheckTime_ && platform_.clock.steadyNow() - *lastCheckTime_ < interval;
}

void UpdateManager::checkForUpdates(bool silent)
{
    if (isTooSoon()) {
        if (!silent)
            showUpdateModal = true;
        return;
    }
    lastCheckTime_ = platform_.clock.steadyNow();
    updateStatus = UpdateCheckStatus::checking();
    if (!silent)
        showUpdateModal = true;

    auto finish = lifetime_.guard([this, silent](const UpdateCheckStatus& outcome) { finishCheck(outcome, silent); });
    const auto address = resolvedURL();
    if (!address) {
        platform_.mainQueue.post([finish] { finish(UpdateCheckStatus::error(blockedMessage)); });
        return;
    }
    const auto parsed = parseWebAddress(*address);
    const AnswerJudge judge{platform_.text, std::get<WebAddress>(parsed).host, currentVersion};
    platform_.http.get(makeRequest(*address),
                       [judge, finish, &mainQueue = platform_.mainQueue](const HttpResult& result) {
                           mainQueue.post([finish, outcome = judge.judge(result)] { finish(outcome); });
                       });
}

HttpRequest UpdateManager::makeRequest(std::string address) const
{
    const auto agent = "Kestrovan/" + currentVersion + " (macOS; Build:" + std::to_string(currentBuild) + ")";
    const auto review = [&text = platform_.text](const std::string& next) -> std::optional<std::string> {
        const auto checked = checkServerAddress(next, text);
        const auto* valid = std::get_if<WebAddress>(&checked);
        return valid ? std::optional(valid->url) : std::nullopt;
    };
    return {
        .address = std::move(address),
        .headers = {{"User-Agent", agent},
                    {"Accept", "application/json"},
                    {"Pragma", "no-cache"},
                    {"Cache-Control", "no-cache, no-store, must-revalidate"}},
        .timeLimit = std::chrono::milliseconds(static_cast<int>(requestTimeoutSeconds * 1000)),
        .keptBytes = maxPayloadBytes,
        .reviewRedirect = review,
        .mayConnect = [](const std::string& numericHost) { return !isBlockedHost(numericHost); },
    };
}

void UpdateManager::finishCheck(const UpdateCheckStatus& outcome, bool silent)
{
    updateStatus = outcome;
    if (!silent || outcome.availableUpdate())
        showUpdateModal = true;
}

void UpdateManager::setAutoCheck(bool enabled)
{
    isAutoCheckEnabled = enabled;
    platform_.settings.setValue(autoCheckKey, enabled);
}

void UpdateManager::setServerURL(const std::string& address)
{
    serverUpdateURLString = address;
    platform_.settings.setValue(serverAddressKey, address);
}

void UpdateManager::openDownloadURL(const std::string& address)
{
    const auto reading = parseWebAddress(address);
    if (const auto* link = std::get_if<WebAddress>(&reading))
        platform_.workspace.openAddress(link->url);
}

void UpdateManager::simulateUpdateFound()
{
    const std::string host = vendor::updateHost;
    updateStatus = UpdateCheckStatus::updateAvailable({
        .latestVersion = "1.1.0",
        .buildNumber = 2,
        .releaseDate = "2026-08-25",
        .downloadUrl = "http://" + host + "/Kestrovan.dmg",
        .releaseNotes = "• Server pembaruan: " + host +
                        "\n• Pemeriksaan alamat dan ukuran jawaban server demi keamanan"
                        "\n• Rate-limited Network Engine"
                        "\n• Optimalisasi performa macOS Sequoia",
        .mandatory = false,
        .sha256 = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855",
    });
    showUpdateModal = true;
}

bool UpdateManager::isVersionNewer(const std::string& version, const std::string& than)
{
    return isVersionAfter(version, than);
}

UpdateManager::Validation UpdateManager::validateServerURL(const std::string& address) const
{
    const auto checked = checkServerAddress(address, platform_.text);
    if (const auto* message = std::get_if<std::string>(&checked))
        return {.isValid = false, .errorMsg = *message};
    return {.isValid = true};
}

std::optional<std::string> UpdateManager::resolvedURL() const
{
    const auto address = completed(platform_.text.trimmed(serverUpdateURLString.get()));
    const auto checked = checkServerAddress(address, platform_.text);
    const auto* valid = std::get_if<WebAddress>(&checked);
    return valid ? std::optional(valid->url) : std::nullopt;
}

} // namespace kestrovan
