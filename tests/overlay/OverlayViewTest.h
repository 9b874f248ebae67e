#pragma once

#include "GuardTest.h"
#include "overlay/FullscreenOverlayView.h"
#include "parts/Palette.h"
#include "rigs/ViewStage.h"

void qml_register_types_Kestrovan_Overlay();

namespace kestrovan::test {

/// The deterrent view of one screen, of a guard on a simulated laptop.
class OverlayViewTest : public GuardTest {
protected:
    OverlayViewTest()
    {
        qml_register_types_Kestrovan_Overlay();
        guard().setLanguage(AppLanguage::english);
        guard().togglePinRequirement(true);
    }

    void show()
    {
        view = std::make_unique<FullscreenOverlayView>(guard(), platform, screens, backdrops);
        ASSERT_TRUE(stage.showType("Kestrovan.Overlay", "FullscreenOverlayView",
                                   {{"view", QVariant::fromValue<QObject*>(view.get())}}));
        laptop.settle();
    }
    std::string shown(const char* name) const { return stage.text(name).toStdString(); }
    void click(const char* name)
    {
        stage.click(name);
        laptop.settle();
    }

    Platform platform = laptop.platform();
    Backdrops backdrops{laptop.time(), laptop.time()};
    std::unique_ptr<FullscreenOverlayView> view;
    rigs::ViewStage stage{{1920, 1080}};
};

} // namespace kestrovan::test
