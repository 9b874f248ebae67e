#include "platform/linux/IcuText.h"
#include "update/AnswerJudge.h"
#include "update/VersionOrder.h"
#include "update/WebAddress.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace kestrovan;

namespace {

constexpr const char* currentVersion = "1.1.83";

bool isSound(const AppUpdateInfo& offered)
{
    return std::holds_alternative<WebAddress>(parseWebAddress(offered.downloadUrl)) &&
           isVersionAfter(offered.latestVersion, currentVersion) &&
           !isVersionAfter(currentVersion, offered.latestVersion);
}

} // namespace

// Whatever a server sends is either no manifest, or one that survives being written; what it then offers is newer and
// can be had on the web.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const IcuText text;
    const std::string body(reinterpret_cast<const char*>(data), size);
    const auto manifest = AppUpdateInfo::fromJson(body);
    if (manifest && AppUpdateInfo::fromJson(manifest->toJson()) != manifest)
        std::abort();

    const AnswerJudge judge{.text = text, .host = "host.example", .currentVersion = currentVersion};
    const auto verdict = judge.judge(HttpResult(HttpResponse{.status = 200, .body = body, .bodyBytes = size}));
    if (!manifest && !verdict.errorMessage())
        std::abort();
    if (const auto* offered = verdict.availableUpdate(); offered && !isSound(*offered))
        std::abort();
    return 0;
}
