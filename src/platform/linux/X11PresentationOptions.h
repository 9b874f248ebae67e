#pragma once

#include "platform/PresentationOptions.h"
#include "platform/linux/X11InputGrab.h"
#include "platform/linux/X11ServerKeys.h"

#include <QTimer>

namespace kestrovan {

/// The kiosk on X11: keyboard and pointer belong to this program, and the X server's own keys are out of the keymap.
/// What a previous run that died left changed is put back on construction. What covers the screen is not its affair.
/// Needs a QGuiApplication on the xcb platform that outlives it. Main thread.
class X11PresentationOptions final : public PresentationOptions {
public:
    explicit X11PresentationOptions(Diagnostics& diagnostics);

    void setOptions(std::uint32_t options) override;

    bool isHeld() const { return inputGrab_.isHeld(); }   ///< keyboard and pointer
    bool hasKeys() const { return inputGrab_.hasKeys(); } ///< no key reaches another program

private:
    void blockServerKeys();

    Diagnostics& diagnostics_;
    X11InputGrab inputGrab_;
    X11ServerKeys serverKeys_;
    QTimer serverKeysTimer_;
    bool complained_ = false;
};

} // namespace kestrovan
