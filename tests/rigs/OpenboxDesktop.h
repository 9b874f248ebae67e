#pragma once

#include "rigs/PrivateDisplay.h"
#include "rigs/QtProgram.h"
#include "rigs/TemporaryFolder.h"

#include <array>
#include <fstream>

namespace kestrovan::rigs {

/// An X server with a window manager whose key bindings leave files behind, and a Qt program on it.
class OpenboxDesktop {
public:
    static constexpr std::size_t bindingCount = 7;

    static void press(const std::string& chord) { run({"xdotool", "key", chord}); }
    static void pressBinding(std::size_t index) { press(bindings.at(index).chord); }
    bool hasFired(std::size_t index) const { return std::filesystem::exists(file(index)); }
    /// Whether the window manager acts on the key now.
    bool fires(std::size_t index) const
    {
        pressBinding(index);
        return QtProgram::until([&] { return hasFired(index); });
    }
    void forgetBindings() const
    {
        for (std::size_t index = 0; index < bindingCount; ++index)
            std::filesystem::remove(file(index));
    }

private:
    struct Binding {
        const char* name;  ///< as openbox writes it
        const char* chord; ///< as xdotool does
    };
    static constexpr std::array<Binding, bindingCount> bindings{{{"A-Tab", "alt+Tab"},
                                                                 {"A-F4", "alt+F4"},
                                                                 {"Super_L", "Super_L"},
                                                                 {"W-d", "super+d"},
                                                                 {"C-A-Delete", "ctrl+alt+Delete"},
                                                                 {"XF86AudioMute", "XF86AudioMute"},
                                                                 {"A-space", "alt+space"}}};

    std::filesystem::path file(std::size_t index) const { return folder_.path() / bindings.at(index).name; }
    std::string writeBindings() const
    {
        auto configuration = (folder_.path() / "rc.xml").string();
        std::ofstream rules(configuration);
        rules << "<openbox_config xmlns='http://openbox.org/3.4/rc'><keyboard>";
        for (std::size_t index = 0; index < bindingCount; ++index)
            rules << "<keybind key='" << bindings.at(index).name << "'><action name='Execute'><command>touch "
                  << file(index).string() << "</command></action></keybind>";
        rules << "</keyboard></openbox_config>";
        return configuration;
    }

    TemporaryFolder folder_;
    PrivateDisplay display_;
    Program windowManager_{{"openbox", "--sm-disable", "--config-file", writeBindings()}};
    QtProgram program_{"xcb"};
};

} // namespace kestrovan::rigs
