#include "platform/linux/QtKeyEvents.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QWindow>

#include <algorithm>
#include <array>
#include <list>
#include <optional>
#include <set>
#include <utility>

namespace kestrovan {

namespace {

// X keysyms of the keypad without NumLock, from XK_KP_Home on: what Qt calls nativeVirtualKey on X11 and Wayland.
constexpr quint32 keypadHome = 0xff95;
constexpr std::array keypadDigits{"7", "4", "8", "6", "2", "9", "3", "1", "5", "0"};

const char* keypadDigit(const QKeyEvent& event)
{
    const auto symbol = event.nativeVirtualKey();
    if (symbol < keypadHome || symbol >= keypadHome + keypadDigits.size())
        return nullptr;
    return keypadDigits[symbol - keypadHome];
}

bool isModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_Mode_switch:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
        return true;
    default:
        return false;
    }
}

std::uint16_t keyCode(int key)
{
    switch (key) {
    case Qt::Key_Return:
        return KeyEvent::returnKey;
    case Qt::Key_Enter:
        return KeyEvent::keypadEnter;
    case Qt::Key_Backspace:
        return KeyEvent::deleteKey;
    case Qt::Key_Delete:
        return KeyEvent::forwardDelete;
    case Qt::Key_Escape:
        return KeyEvent::escape;
    case Qt::Key_Clear:
        return KeyEvent::keypadClear;
    default:
        return KeyEvent::otherKey;
    }
}

// Ctrl turns the text of Latin keys into control characters; the key itself is then the better answer.
std::string characters(const QKeyEvent& event)
{
    const auto text = event.text();
    if (!text.isEmpty() && text.front().category() != QChar::Other_Control)
        return text.toStdString();
    if (event.key() < 0x20 || event.key() >= Qt::Key_Escape)
        return {};
    const auto character = QString::fromUcs4(std::array{static_cast<char32_t>(event.key())}.data(), 1);
    return (event.modifiers().testFlag(Qt::ShiftModifier) ? character : character.toLower()).toStdString();
}

// A modifier change asks a monitor whether it lets anything through, without making it act.
const KeyEvent probe{KeyEvent::Type::flagsChanged, KeyEvent::otherKey, {}};

} // namespace

KeyEvent QtKeyEvents::translate(const QKeyEvent& event)
{
    if (isModifier(event.key()))
        return probe;
    if (const auto* digit = keypadDigit(event))
        return {KeyEvent::Type::keyDown, KeyEvent::otherKey, digit};
    return {KeyEvent::Type::keyDown, keyCode(event.key()), characters(event)};
}

class QtKeyEvents::ApplicationFilter : public QObject {
public:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    Subscription add(Filter filter);

private:
    struct Verdict {
        quint32 scanCode;
        quint64 time;
        bool swallowed;
    };

    bool ask(const KeyEvent& event) const;
    bool decide(QObject* receiver, QEvent& event);
    bool decideOnPress(const QKeyEvent& press);
    bool decideOnRelease(const QKeyEvent& release);
    bool decideOnText(const QInputMethodEvent& event) const;

    using Monitors = std::list<std::shared_ptr<Filter>>;
    std::shared_ptr<Monitors> monitors_ = std::make_shared<Monitors>();
    std::optional<Verdict> announced_;
    std::set<quint32> swallowedKeys_;
};

Subscription QtKeyEvents::ApplicationFilter::add(Filter filter)
{
    // The filter that was installed last sees events first.
    QCoreApplication::instance()->removeEventFilter(this);
    QCoreApplication::instance()->installEventFilter(this);
    const auto entry = std::make_shared<Filter>(std::move(filter));
    monitors_->push_back(entry);
    return Subscription([monitors = std::weak_ptr(monitors_), entry] {
        if (const auto list = monitors.lock())
            list->remove(entry);
        *entry = nullptr;
    });
}

bool QtKeyEvents::ApplicationFilter::ask(const KeyEvent& event) const
{
    const auto snapshot = *monitors_;
    return std::any_of(snapshot.begin(), snapshot.end(), [&event](const auto& entry) {
        const auto monitor = *entry;
        return monitor && monitor(event);
    });
}

bool QtKeyEvents::ApplicationFilter::eventFilter(QObject* receiver, QEvent* event)
{
    if (!decide(receiver, *event))
        return false;
    event->accept(); // else a swallowed ShortcutOverride would set the shortcut off
    return true;
}

bool QtKeyEvents::ApplicationFilter::decide(QObject* receiver, QEvent& event)
{
    if (monitors_->empty() && swallowedKeys_.empty())
        return false;
    const bool isFirstArrival = event.spontaneous() && receiver->isWindowType();
    switch (event.type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        return isFirstArrival ? decideOnPress(static_cast<QKeyEvent&>(event)) : ask(probe);
    case QEvent::KeyRelease:
        return decideOnRelease(static_cast<QKeyEvent&>(event));
    case QEvent::InputMethod:
        return decideOnText(static_cast<QInputMethodEvent&>(event));
    case QEvent::Shortcut:
        return ask(probe);
    default:
        return false;
    }
}

// A key press is usually announced by a ShortcutOverride. The monitors are asked on the first of the two.
bool QtKeyEvents::ApplicationFilter::decideOnPress(const QKeyEvent& press)
{
    const auto announced = std::exchange(announced_, std::nullopt);
    const bool isKnown = press.type() == QEvent::KeyPress && announced &&
                         announced->scanCode == press.nativeScanCode() && announced->time == press.timestamp();
    const bool swallowed = isKnown ? announced->swallowed : ask(translate(press));
    if (press.type() == QEvent::ShortcutOverride)
        announced_ = Verdict{press.nativeScanCode(), press.timestamp(), swallowed};
    if (swallowed)
        swallowedKeys_.insert(press.nativeScanCode());
    return swallowed;
}

// Releases follow their presses, whatever happened to the monitors in between.
bool QtKeyEvents::ApplicationFilter::decideOnRelease(const QKeyEvent& release)
{
    if (swallowedKeys_.erase(release.nativeScanCode()) > 0)
        return true;
    return ask(probe);
}

bool QtKeyEvents::ApplicationFilter::decideOnText(const QInputMethodEvent& event) const
{
    if (event.commitString().isEmpty())
        return ask(probe);
    bool swallowed = false;
    for (const auto character : event.commitString().toUcs4()) {
        const auto text = QString::fromUcs4(std::array{static_cast<char32_t>(character)}.data(), 1).toStdString();
        swallowed = ask({KeyEvent::Type::keyDown, KeyEvent::otherKey, text}) || swallowed;
    }
    return swallowed;
}

QtKeyEvents::QtKeyEvents() : applicationFilter_(std::make_unique<ApplicationFilter>()) {}

QtKeyEvents::~QtKeyEvents() = default;

Subscription QtKeyEvents::addLocalMonitor(Filter filter)
{
    return applicationFilter_->add(std::move(filter));
}

} // namespace kestrovan
