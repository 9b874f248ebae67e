#include "ui/CameraSettings.h"

#include "ui/Choices.h"

namespace kestrovan {

namespace {

constexpr std::array delaySeconds{1, 2, 3};

} // namespace

QStringList CameraSettings::delays() const
{
    if (language() == AppLanguage::english)
        return {"1 Second", "2 Seconds (Default)", "3 Seconds"};
    return {"1 Detik", "2 Detik (Rekomendasi)", "3 Detik"};
}

int CameraSettings::delayIndex() const
{
    return indexOf(delaySeconds, static_cast<int>(appState().cameraDelayDuration));
}

void CameraSettings::chooseDelay(int index)
{
    if (const auto* seconds = at(delaySeconds, index))
        appState().setCameraDelay(*seconds);
}

QString CameraSettings::photosLabel() const
{
    return text(L10nKey::viewIntruderPhotos) + QString(" (%1)").arg(appState().intruderRecords->size());
}

} // namespace kestrovan
