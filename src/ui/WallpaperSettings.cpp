#include "ui/WallpaperSettings.h"

#include "parts/RoundedImage.h"

namespace kestrovan {

namespace {

// The preview's 110 by 70, sharp on screens of double density.
constexpr QSize previewPixels(220, 140);
constexpr double previewCornerPixels = 16;

} // namespace

WallpaperSettings::WallpaperSettings(AppState& appState, const Platform& platform)
    : GuardView(appState, platform.mainQueue), mainQueue_(platform.mainQueue),
      picture_(CoverPicture::make(platform.mainQueue, platform.workers, previewPixels,
                                  [](QImage& image) { image = roundedImage(image, previewCornerPixels); })),
      pictureSubscription_(picture_->observe([this] { Q_EMIT changed(); }))
{
    picture_->look(appState.customImagePath);
}

void WallpaperSettings::guardHasChanged()
{
    picture_->look(appState().customImagePath);
    GuardView::guardHasChanged();
}

// The dialog runs a loop of its own, in which the button that was pressed must be done with its press.
void WallpaperSettings::choose()
{
    mainQueue_.post(lifetime_.guard([this] { appState().selectCustomImageFromPicker(); }));
}

QString WallpaperSettings::setWarning(const QString& warning)
{
    appState().updateWarningMessage(warning.toStdString());
    return this->warning();
}

} // namespace kestrovan
