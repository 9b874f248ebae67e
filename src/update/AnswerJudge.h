#pragma once

#include "platform/Http.h"
#include "update/UpdateCheckStatus.h"

namespace kestrovan {

class Text;

/// Decides what a server's answer means. Holds no more than it needs to work on any thread, for as long as the
/// platform's Text lives; its messages are Indonesian in both languages of the interface.
struct AnswerJudge {
    const Text& text;
    std::string host; ///< of the address that was asked
    std::string currentVersion;

    UpdateCheckStatus judge(const HttpResult& result) const;

private:
    UpdateCheckStatus judge(const HttpResponse& response) const;
    UpdateCheckStatus judge(AppUpdateInfo manifest) const;
};

} // namespace kestrovan
