#pragma once

#include "rigs/PrivateBus.h"

#include <compare>
#include <iosfwd>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace kestrovan::rigs {

/// Somebody who hears the programs of a session instead of seeing them: reads what they tell of themselves on the
/// accessibility bus (AT-SPI), acts on it, and listens. Starts that bus. One thread.
class ScreenReader {
public:
    /// One thing of a program: a button, a field, a text.
    struct Thing {
        std::string role; ///< as AT-SPI names it: "push button", "check box", "text", …
        std::string name; ///< the description of what has none

        auto operator<=>(const Thing&) const = default;
        friend std::ostream& operator<<(std::ostream& stream, const Thing& thing);
    };

    explicit ScreenReader(const PrivateBus& sessionBus);
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;
    ~ScreenReader();

    /// What is there now and not greyed, also where one would have to scroll to it.
    std::set<Thing> things();
    bool waitFor(const Thing& thing);
    bool waitForNo(const Thing& thing);
    /// Does with it what a click would; false if it is not there or nothing is to be done with it.
    bool use(const Thing& thing);
    /// Whether a notification or an alert of that text has appeared since the last call that asked, or does soon.
    bool hears(const std::string& text);

private:
    /// An object of a program on the bus.
    struct Place {
        std::string program;
        std::string path;
    };
    struct Found {
        Place place;
        Thing thing;
    };

    void openBus(const PrivateBus& sessionBus);
    void listen();
    std::vector<Place> children(const Place& place) const;
    std::string property(const Place& place, const char* name) const;
    std::optional<Found> describe(const Place& place) const;
    void collect(const Place& place, std::vector<Found>& found) const;
    std::vector<Found> everything() const;
    std::optional<Found> find(const Thing& thing) const;
    static int receive(sd_bus_message* signal, void* self, sd_bus_error* error);

    // With settings of its own: those of the user decide nothing here, and stay as they are.
    ServerProcess launcher_{{"env", "XDG_RUNTIME_DIR=/run/user", "GSETTINGS_BACKEND=memory",
                             "/usr/libexec/at-spi-bus-launcher", "--launch-immediately"}};
    sd_bus* bus_ = nullptr;
    std::vector<std::string> heard_;
};

} // namespace kestrovan::rigs
