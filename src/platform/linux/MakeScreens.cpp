#include "platform/linux/MakeScreens.h"

#include "platform/linux/LayerScreenCover.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/WaylandScreenCover.h"
#include "platform/linux/X11ScreenCover.h"

#include <QGuiApplication>

namespace kestrovan {

namespace {

std::unique_ptr<ScreenCover> makeWaylandCover()
{
    if (auto layers = LayerScreenCover::make())
        return layers;
    return std::make_unique<WaylandScreenCover>();
}

} // namespace

std::unique_ptr<Screens> makeScreens()
{
    const auto platform = QGuiApplication::platformName();
    if (platform == "xcb")
        return std::make_unique<QtScreens>(std::make_unique<X11ScreenCover>());
    if (platform.startsWith("wayland"))
        return std::make_unique<QtScreens>(makeWaylandCover());
    return std::make_unique<QtScreens>(std::make_unique<ScreenCover>());
}

} // namespace kestrovan
