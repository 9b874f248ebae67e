#pragma once

#include "platform/Observable.h"

#include <cstdint>
#include <string>

namespace kestrovan {

/// One key event of this program, before any of its windows sees it.
struct KeyEvent {
    enum class Type { keyDown, flagsChanged, other };
    /// Codes of the keys that have a meaning of their own to the PIN entry; adapters map theirs to these.
    enum Code : std::uint16_t {
        returnKey = 36,
        deleteKey = 51,
        escape = 53,
        keypadClear = 71,
        keypadEnter = 76,
        forwardDelete = 117,
        otherKey = 0xFFFF,
    };

    Type type = Type::other;
    std::uint16_t keyCode = otherKey;
    std::string charactersIgnoringModifiers; ///< UTF-8
};

/// The keyboard, as far as it is addressed to this program. Main thread.
class KeyEvents {
public:
    /// True swallows the event.
    using Filter = std::function<bool(const KeyEvent&)>;

    virtual ~KeyEvents() = default;

    [[nodiscard]] virtual Subscription addLocalMonitor(Filter filter) = 0;
};

} // namespace kestrovan
