#pragma once

#include "platform/KeyEvents.h"

#include <memory>

class QKeyEvent;

namespace kestrovan {

/// The keys of this program's windows, seen before any window, shortcut or input method's target. Each key is reported
/// once, on whatever window it arrives. Text that an input method commits is reported as if its characters had been
/// typed. The QCoreApplication must exist before and outlive this; monitors may outlive neither.
class QtKeyEvents final : public KeyEvents {
public:
    QtKeyEvents();
    QtKeyEvents(const QtKeyEvents&) = delete;
    QtKeyEvents& operator=(const QtKeyEvents&) = delete;
    ~QtKeyEvents() override;

    [[nodiscard]] Subscription addLocalMonitor(Filter filter) override;

    /// How a key press reads to a monitor. Keypad digits are digits whether or not NumLock is on, so that a PIN can be
    /// typed blind; a character held under Ctrl, Alt or Super is still that character.
    static KeyEvent translate(const QKeyEvent& event);

private:
    class ApplicationFilter;
    std::unique_ptr<ApplicationFilter> applicationFilter_;
};

} // namespace kestrovan
