#include "ui/IntruderGallerySheet.h"

namespace kestrovan {

IntruderGallerySheet::IntruderGallerySheet(AppState& appState, const Platform& platform, Sheets& sheets)
    : SheetView(appState, platform.mainQueue, sheets, Sheets::Sheet::intruderGallery),
      thumbnails_(platform.mainQueue, platform.workers)
{
    records_.show(appState.intruderRecords);
}

void IntruderGallerySheet::guardHasChanged()
{
    records_.show(appState().intruderRecords);
    SheetView::guardHasChanged();
}

} // namespace kestrovan
