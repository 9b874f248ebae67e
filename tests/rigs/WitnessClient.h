#pragma once

#include "platform/linux/Xcb.h"

#include <cstdint>
#include <vector>

namespace kestrovan::rigs {

/// Another program on the X server of DISPLAY: a window that takes the keyboard focus, destroys what it finds, and
/// can hold keyboard and pointer as an open menu does. Its events are read by keysPressed() and clicks().
class WitnessClient {
public:
    WitnessClient();

    void takeFocus();
    /// False if somebody else holds them. A menu lets go when it is told to Escape, unless it is not one to heed that.
    bool openMenu(bool heedsEscape = true);
    void closeMenu();
    bool isMenuOpen() const { return isMenuOpen_; }
    /// How many keys have reached this client so far.
    int keysPressed();
    int clicks(); ///< likewise; its window is the square from 50, 50 to 150, 150
    bool hasWindowManager();
    /// Tiny windows outside the screen.
    std::vector<std::uint32_t> windowsOffScreen();
    void askToClose(std::uint32_t window); ///< as the button in its frame does
    void destroy(std::uint32_t window);
    void unmap(std::uint32_t window);

private:
    void createWindow();
    xcb_connection_t* server() const { return connection_.get(); }
    void readEvents();

    xcb::Connection connection_;
    std::uint32_t root_ = 0;
    std::uint32_t window_ = 0;
    int keysPressed_ = 0;
    int clicks_ = 0;
    bool isMenuOpen_ = false;
    bool heedsEscape_ = true;
};

} // namespace kestrovan::rigs
