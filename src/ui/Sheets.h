#pragma once

#include "platform/Published.h"
#include "update/UpdateManager.h"

#include <vector>

namespace kestrovan {

/// The sheets that hang off the main window: which are shown, and which lies over which. Main thread.
class Sheets : public Observable {
public:
    enum class Sheet { settings, about, intruderGallery, update };

    /// `updateManager` outlives the sheets; the update sheet is shown while it asks for it.
    explicit Sheets(UpdateManager& updateManager) : updateManager_(updateManager) {}

    bool isShown(Sheet sheet) const;
    void show(Sheet sheet) { setShown(sheet, true); }
    void dismiss(Sheet sheet) { setShown(sheet, false); }

    /// 0 for the sheet that was opened first, and so on; -1 for one that is not shown.
    int layer(Sheet sheet);
    /// True if nothing lies over the sheet.
    bool isInFront(Sheet sheet);
    bool areAny() { return !stack().empty(); }

private:
    void setShown(Sheet sheet, bool shown);
    const std::vector<Sheet>& stack();

    UpdateManager& updateManager_;
    Published<bool> showSettings_{*this, false};
    Published<bool> showAbout_{*this, false};
    Published<bool> showIntruderGallery_{*this, false};
    std::vector<Sheet> stack_; // as of the last look
};

} // namespace kestrovan
