#include "update/AnswerJudge.h"

#include "platform/Text.h"
#include "update/UpdateManager.h"
#include "update/VersionOrder.h"
#include "update/WebAddress.h"

#include <algorithm>

namespace kestrovan {

namespace {

constexpr std::size_t maxReleaseNotesCharacters = 4096;

std::string withoutDoubleQuotes(std::string text)
{
    std::ranges::replace(text, '"', '\'');
    return text;
}

} // namespace

UpdateCheckStatus AnswerJudge::judge(const HttpResult& result) const
{
    if (const auto* failure = std::get_if<HttpError>(&result))
        return UpdateCheckStatus::error(withoutDoubleQuotes(failure->description));
    return judge(std::get<HttpResponse>(result));
}

UpdateCheckStatus AnswerJudge::judge(const HttpResponse& response) const
{
    using Status = UpdateCheckStatus;
    if (!response.isHttp)
        return Status::error("Respon server bukan HTTP valid.");
    if (response.status < 200 || response.status > 299)
        return Status::error("Server mengembalikan kode status HTTP " + std::to_string(response.status) + ".");
    if (!response.hasBody)
        return Status::error("Tidak ada data yang diterima dari server " + host + ".");
    if (response.bodyBytes > UpdateManager::maxPayloadBytes)
        return Status::error("Ukuran respon server melebihi batas keamanan (" + std::to_string(response.bodyBytes) +
                             " bytes).");
    auto manifest = AppUpdateInfo::fromJson(response.body);
    if (!manifest)
        return Status::error("Gagal memproses struktur JSON pembaruan dari server.");
    return judge(*std::move(manifest));
}

UpdateCheckStatus AnswerJudge::judge(AppUpdateInfo manifest) const
{
    if (!std::holds_alternative<WebAddress>(parseWebAddress(manifest.downloadUrl)))
        return UpdateCheckStatus::error("URL download pada manifest pembaruan tidak aman.");
    manifest.releaseNotes = text.prefix(manifest.releaseNotes, maxReleaseNotesCharacters);
    manifest.latestVersion = text.trimmed(manifest.latestVersion);
    if (isVersionAfter(manifest.latestVersion, currentVersion))
        return UpdateCheckStatus::updateAvailable(std::move(manifest));
    return UpdateCheckStatus::upToDate();
}

} // namespace kestrovan
