#include "ui/FooterSection.h"

#include "parts/Palette.h"

namespace kestrovan {

QString FooterSection::galleryLabel() const
{
    const auto count = appState().intruderRecords->size();
    return count == 0 ? QString("Foto") : QString("Foto (%1)").arg(count);
}

QColor FooterSection::galleryColor() const
{
    return appState().intruderRecords->empty() ? palette::gray : palette::yellow;
}

} // namespace kestrovan
