#pragma once

#include "rigs/BusDouble.h"

#include <string>
#include <vector>

namespace kestrovan::rigs {

/// A desktop's tray: the watcher and host of the StatusNotifierItem protocol on a private bus, and a person who reads
/// the menu of the last item that has come (com.canonical.dbusmenu) and clicks in it.
class TrayHost {
public:
    struct Line {
        std::string label; ///< empty for a separator
        bool isEnabled = true;
        std::int32_t id = 0;

        bool operator==(const Line& other) const { return label == other.label && isEnabled == other.isEnabled; }
    };

    explicit TrayHost(const PrivateBus& bus);
    TrayHost(const TrayHost&) = delete;
    TrayHost& operator=(const TrayHost&) = delete;
    ~TrayHost();

    /// An item has come.
    bool waitForItem() const;

    /// What the menu shows now, from top to bottom; empty if nobody answers.
    std::vector<Line> menu() const;
    bool shows(const std::string& label) const;
    /// Waits until the menu shows it.
    bool waitFor(const std::string& label) const;

    /// Clicks a line; false if it is not there. A greyed one is clicked all the same.
    bool press(const std::string& label) const;
    /// Clicks the item itself.
    void pressIcon() const;
    /// The item has changed its icon, so many times.
    int iconChanges() const { return iconChanges_; }

private:
    int answer(sd_bus_message* call);
    std::string item() const;

    sd_bus* client_; ///< on which the person asks
    mutable std::mutex mutex_;
    std::string item_;
    std::atomic<int> iconChanges_ = 0;
    BusDouble watcher_;
};

} // namespace kestrovan::rigs
