#pragma once

#include "platform/linux/Xcb.h"

#include <array>

namespace kestrovan {

/// The keys that the X server itself acts on, past every grab: switching to another virtual terminal, killing the
/// server, breaking grabs, changing the video mode. blocked, they are ordinary keys.
///
/// What was taken out of the keymaps is remembered in a property of the root window, which lives exactly as long as
/// those keymaps do: a program that died leaves it to its next run, whose constructor puts everything back. Main
/// thread; has a connection to the X server of its own. Without a server or without XKB nothing happens.
class X11ServerKeys {
public:
    X11ServerKeys();
    X11ServerKeys(const X11ServerKeys&) = delete;
    X11ServerKeys& operator=(const X11ServerKeys&) = delete;
    ~X11ServerKeys();

    /// False where the server does not let its keymaps be changed. Called again, it also covers the keyboards that
    /// were plugged in and the keymaps that were loaded in the meantime.
    bool block();
    void restore();

private:
    using Action = std::array<std::uint8_t, 8>; ///< as the XKB protocol has it: the first byte is its type
    /// The `index`th action of a key of one keyboard.
    struct Place {
        std::uint8_t device;
        std::uint8_t keycode;
        std::uint16_t index;

        bool operator==(const Place&) const = default;
    };
    struct Saved {
        Place place;
        Action action;
    };
    static_assert(sizeof(Saved) == 12, "the property's format");
    /// The actions of all keys of one keyboard.
    struct KeyActions {
        std::uint8_t firstKey = 0;
        std::vector<std::uint8_t> counts;
        std::vector<Action> actions;
    };

    static bool isServerAction(const Action& action);
    bool isUsable() const;
    std::vector<std::uint8_t> keyboards() const;
    KeyActions read(std::uint8_t device) const;
    bool write(std::uint8_t device, const KeyActions& map) const;
    bool takeOut(std::uint8_t device, KeyActions& map);
    void putBack(std::uint8_t device, KeyActions& map) const;
    void remember(const Saved& saved);
    void storeProperty() const;
    void loadProperty();

    xcb::Connection connection_;
    std::uint32_t root_ = 0;
    std::uint32_t property_ = 0;
    bool hasXkb_ = false;
    std::vector<Saved> saved_;
};

} // namespace kestrovan
