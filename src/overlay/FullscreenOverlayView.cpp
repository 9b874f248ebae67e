#include "overlay/FullscreenOverlayView.h"

#include "parts/KeypadEntry.h"
#include "parts/Theme.h"
#include "platform/MotionPreference.h"

#include <QDateTime>
#include <QLocale>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto clockStep = 1000ms;
constexpr auto strobeSweep = 350ms;
constexpr auto strobeFrame = 40ms;
constexpr auto glowSweep = 2000ms;
constexpr auto glowFrame = 50ms;

double between(double low, double high, double phase)
{
    return low + (high - low) * phase;
}

} // namespace

FullscreenOverlayView::FullscreenOverlayView(AppState& appState, const Platform& platform, DeterrentScreens& screens,
                                             Backdrops& backdrops)
    : GuardView(appState, platform.mainQueue), platform_(platform), screens_(screens), backdrops_(backdrops),
      currentTime_(platform.clock.now()), timer_(platform.mainQueue.repeat(clockStep, [this] { tick(); })),
      strobeRed_(platform.mainQueue, platform.clock, strobeSweep, strobeFrame, [this] { Q_EMIT strobeMoved(); }),
      pulseGlow_(platform.mainQueue, platform.clock, glowSweep, glowFrame, [this] { Q_EMIT glowMoved(); }),
      motionFollower_(platform.motion, platform.mainQueue, [this] { animate(); })
{
    animate();
}

void FullscreenOverlayView::setOnScreen(bool isOnScreen)
{
    isOnScreen_ = isOnScreen;
    animate();
}

void FullscreenOverlayView::tick()
{
    currentTime_ = platform_.clock.now();
    refreshBackdrop();
    Q_EMIT changed();
}

void FullscreenOverlayView::guardHasChanged()
{
    animate();
    refreshBackdrop();
    Q_EMIT changed();
}

void FullscreenOverlayView::animate()
{
    strobeRed_.setRunning(isOnScreen_ && isAlarm());
    pulseGlow_.setRunning(isOnScreen_ && !isAlarm() && !platform_.motion.isReduced);
}

void FullscreenOverlayView::resize(QSizeF area, double pixelsPerUnit)
{
    const auto pixels = (area * pixelsPerUnit).toSize();
    if (pixels == pixels_)
        return;
    pixels_ = pixels;
    scale_ = pixelsPerUnit;
    behind_ = Behind::nothing;
    wallpaper_ = backdrops_.wallpaper(pixels);
    wallpaperChanges_ = wallpaper_->observe([this] {
        behind_ = Behind::nothing;
        refreshBackdrop();
    });
    refreshBackdrop();
}

// The file is looked at as often as the view is drawn anew, which is at least each second; that costs the main thread
// nothing.
void FullscreenOverlayView::refreshBackdrop()
{
    if (!wallpaper_ || pixels_.isEmpty())
        return;
    wallpaper_->look(appState().customImagePath);
    const auto& picture = wallpaper_->image();
    const auto wanted = !picture.isNull() ? Behind::wallpaper : isAlarm() ? Behind::alarm : Behind::calm;
    if (wanted == behind_)
        return;
    behind_ = wanted;
    standard_ = wanted == Behind::wallpaper ? nullptr : backdrops_.standard(pixels_, scale_, isAlarm());
    backdrop_ = standard_ ? *standard_ : picture;
    Q_EMIT backdropChanged();
}

void FullscreenOverlayView::closePreview()
{
    screens_.hideOverlay();
}

void FullscreenOverlayView::submit()
{
    if (appState().disarm(appState().enteredPin.get()))
        screens_.hideOverlay();
}

void FullscreenOverlayView::handleKeypadPress(const QString& key)
{
    pressKeypadKey(appState(), platform_.text, key.toStdString());
}

void FullscreenOverlayView::editPin(const QString& text)
{
    appState().enteredPin = text.toStdString();
}

double FullscreenOverlayView::strobeOpacity() const
{
    return between(0.45, 0.85, strobeRed_.phase());
}

double FullscreenOverlayView::glowOpacity() const
{
    return between(0.15, 0.35, pulseGlow_.phase());
}

double FullscreenOverlayView::glowScale() const
{
    return between(0.96, 1.06, pulseGlow_.phase());
}

QString FullscreenOverlayView::timeText() const
{
    const auto seconds = std::chrono::system_clock::to_time_t(currentTime_);
    return QDateTime::fromSecsSinceEpoch(seconds).toString(QStringLiteral("HH:mm:ss"));
}

QString FullscreenOverlayView::dateText() const
{
    const auto date = QDateTime::fromSecsSinceEpoch(std::chrono::system_clock::to_time_t(currentTime_)).date();
    if (language() == AppLanguage::english)
        return QLocale(QLocale::English, QLocale::UnitedStates).toString(date, QStringLiteral("dddd, MMMM d, yyyy"));
    return QLocale(QLocale::Indonesian, QLocale::Indonesia).toString(date, QStringLiteral("dddd, d MMMM yyyy"));
}

QString FullscreenOverlayView::powerSymbol() const
{
    return appState().powerMonitor.status->isACConnected ? QStringLiteral("powerplug.fill")
                                                         : QStringLiteral("battery.50percent");
}

QColor FullscreenOverlayView::powerColor() const
{
    return appState().powerMonitor.status->isACConnected ? palette::green : palette::orange;
}

QString FullscreenOverlayView::powerText() const
{
    return QString::number(appState().powerMonitor.status->currentPercentage) + QLatin1Char('%');
}

QString FullscreenOverlayView::statusText() const
{
    return QString::fromStdString(appState().guardState->localizedTitle(language())).toUpper();
}

QColor FullscreenOverlayView::statusDotColor() const
{
    if (isAlarm())
        return palette::red;
    return appState().guardState->isArmed() ? palette::green : palette::yellow;
}

QColor FullscreenOverlayView::statusFillColor() const
{
    return isAlarm() ? palette::at(palette::red, 0.4) : palette::at(palette::black, 0.6);
}

QColor FullscreenOverlayView::statusOutlineColor() const
{
    return isAlarm() ? palette::red : palette::at(palette::green, 0.5);
}

QString FullscreenOverlayView::alarmSymbol() const
{
    const auto* reason = appState().guardState->alarmReason();
    return reason ? QString::fromStdString(iconName(*reason)) : QString();
}

QString FullscreenOverlayView::alarmCause() const
{
    const auto* reason = appState().guardState->alarmReason();
    if (!reason)
        return {};
    const auto label = language() == AppLanguage::english ? QStringLiteral("Trigger") : QStringLiteral("Pemicu");
    return label + QStringLiteral(": ") + QString::fromStdString(localizedDescription(*reason, language()));
}

QString FullscreenOverlayView::headline() const
{
    const auto& own = appState().customWarningMessage.get();
    return own.empty() ? text(L10nKey::defaultWarningText) : QString::fromStdString(own);
}

QString FullscreenOverlayView::disarmText() const
{
    return text(isAlarm() ? L10nKey::stopAlarmNow : L10nKey::disarmProtection);
}

QColor FullscreenOverlayView::disarmTextColor() const
{
    return isAlarm() ? palette::red : palette::white;
}

QColor FullscreenOverlayView::disarmFillColor() const
{
    return isAlarm() ? palette::white : palette::at(palette::red, 0.85);
}

QColor FullscreenOverlayView::pinOutlineColor() const
{
    return appState().pinError ? palette::red : palette::at(palette::white, 0.3);
}

QColor FullscreenOverlayView::pinFocusedOutlineColor() const
{
    return appState().pinError ? palette::red : palette::cyan;
}

QString FullscreenOverlayView::statusLine() const
{
    if (isLockedOut())
        return text(L10nKey::pinLockoutMessage(appState().lockoutSecondsRemaining));
    return appState().pinError ? text(L10nKey::wrongPin) : QString();
}

QColor FullscreenOverlayView::statusLineColor() const
{
    return isLockedOut() ? palette::orange : palette::yellow;
}

int FullscreenOverlayView::statusLineWeight() const
{
    return isLockedOut() ? Theme::Heavy : Theme::Bold;
}

} // namespace kestrovan
