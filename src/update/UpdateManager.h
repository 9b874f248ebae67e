#pragma once

#include "platform/Lifetime.h"
#include "platform/Platform.h"
#include "platform/Published.h"
#include "update/UpdateCheckStatus.h"

#include <chrono>
#include <cstddef>
#include <optional>

namespace kestrovan {

struct HttpRequest;

/// Asks a web server whether a newer version exists, and says what came of it. Downloads nothing itself. Main thread;
/// its messages are Indonesian in both languages of the interface.
class UpdateManager : public Observable {
public:
    static constexpr std::size_t maxPayloadBytes = 65536;
    static constexpr double requestTimeoutSeconds = 6.0;
    static constexpr double minCheckIntervalSeconds = 5.0;

    struct Validation {
        bool isValid = false;
        std::optional<std::string> errorMsg{}; ///< always there when invalid, never when valid
    };

    /// Reads the settings. A stored address over plain http or on a code host's raw pages, which earlier versions
    /// used, is replaced by the vendor's.
    explicit UpdateManager(const Platform& platform);

    const std::string currentVersion = "1.1.83";
    const std::int64_t currentBuild = 83;
    Published<UpdateCheckStatus> updateStatus{*this, UpdateCheckStatus::idle()};
    Published<bool> showUpdateModal{*this, false}; ///< asks for the update sheet, which resets it when it is dismissed
    Published<bool> isAutoCheckEnabled{*this, true};
    Published<std::string> serverUpdateURLString{*this, {}}; ///< as the user typed it

    /// Starts a check, unless one began less than minCheckIntervalSeconds ago. A silent check raises the sheet only if
    /// it finds an update.
    void checkForUpdates(bool silent);

    void setAutoCheck(bool enabled);
    void setServerURL(const std::string& address); ///< kept as it is, and validated when a check uses it

    /// Opens an http or https link in the user's browser, and nothing else.
    void openDownloadURL(const std::string& address);

    /// Shows the update sheet with an invented update, without any server.
    void simulateUpdateFound();

    static bool isVersionNewer(const std::string& version, const std::string& than);

    Validation validateServerURL(const std::string& address) const;

    /// The address of the manifest, in the form to be fetched; none if the server address does not make a valid one.
    std::optional<std::string> resolvedURL() const;

private:
    void readSettings();
    bool isTooSoon() const;
    HttpRequest makeRequest(std::string address) const;
    void finishCheck(const UpdateCheckStatus& outcome, bool silent);

    const Platform platform_;
    std::optional<std::chrono::steady_clock::time_point> lastCheckTime_; ///< when the last check began
    Lifetime lifetime_;
};

} // namespace kestrovan
