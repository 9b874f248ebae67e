#include "ui/UpdateModalSheet.h"

#include <cmath>

namespace kestrovan {

namespace {

using namespace std::chrono_literals;

constexpr auto spinnerStep = 80ms;
constexpr double spokeAngle = 30;

} // namespace

QString UpdateModalSheet::currentVersion() const
{
    return text(L10nKey::currentVersionLabel(appState().updateManager.currentVersion));
}

QString UpdateModalSheet::newVersion() const
{
    const auto* update = status().availableUpdate();
    return update ? text(L10nKey::newVersionAvailable(update->latestVersion)) : QString();
}

QString UpdateModalSheet::notes() const
{
    const auto* update = status().availableUpdate();
    return update ? QString::fromStdString(update->releaseNotes) : QString();
}

QString UpdateModalSheet::errorTitle() const
{
    return language() == AppLanguage::english ? "Update Check Failed" : "Gagal Memeriksa Pembaruan";
}

QString UpdateModalSheet::errorMessage() const
{
    const auto* message = status().errorMessage();
    return message ? QString::fromStdString(*message) : QString();
}

void UpdateModalSheet::download()
{
    if (const auto* update = status().availableUpdate())
        appState().updateManager.openDownloadURL(update->downloadUrl);
}

void UpdateModalSheet::guardHasChanged()
{
    updateSpinner();
    SheetView::guardHasChanged();
}

void UpdateModalSheet::setAnimated(bool animated)
{
    isAnimated_ = animated;
    updateSpinner();
}

void UpdateModalSheet::updateSpinner()
{
    const bool runs = isAnimated_ && isShown() && isChecking();
    if (runs == (spinner_ != nullptr))
        return;
    spinner_.reset();
    if (runs)
        spinner_ = mainQueue_.repeat(spinnerStep, [this] {
            spinnerTurn_ = std::fmod(spinnerTurn_ + spokeAngle, 360);
            Q_EMIT spun();
        });
}

} // namespace kestrovan
