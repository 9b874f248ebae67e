#include "platform/linux/MakePresentationOptions.h"

#include "platform/linux/NoPresentationOptions.h"
#include "platform/linux/SessionKeeper.h"
#include "platform/linux/WaylandPresentationOptions.h"
#include "platform/linux/WindowKeeper.h"
#include "platform/linux/X11PresentationOptions.h"

#include <QGuiApplication>

#include <utility>

namespace kestrovan {

namespace {

/// What holds keyboard and pointer differs with the display server; session and windows are held the same everywhere.
class WholePresentationOptions final : public PresentationOptions {
public:
    WholePresentationOptions(std::unique_ptr<PresentationOptions> desktop, BusConnection& systemBus,
                             BusConnection& sessionBus, Diagnostics& diagnostics)
        : desktop_(std::move(desktop)), session_(systemBus, sessionBus, diagnostics)
    {}

    void setOptions(std::uint32_t options) override
    {
        desktop_->setOptions(options);
        session_.hold((options & disableSessionTermination) != 0);
        windows_.hold((options & disableHidingApplication) != 0);
    }

private:
    std::unique_ptr<PresentationOptions> desktop_;
    SessionKeeper session_;
    WindowKeeper windows_;
};

std::unique_ptr<PresentationOptions> makeForDesktop(Diagnostics& diagnostics)
{
    const auto platform = QGuiApplication::platformName();
    if (platform == "xcb")
        return std::make_unique<X11PresentationOptions>(diagnostics);
    if (platform.startsWith("wayland"))
        return std::make_unique<WaylandPresentationOptions>(diagnostics);
    return std::make_unique<NoPresentationOptions>(diagnostics);
}

} // namespace

std::unique_ptr<PresentationOptions> makePresentationOptions(BusConnection& systemBus, BusConnection& sessionBus,
                                                             Diagnostics& diagnostics)
{
    return std::make_unique<WholePresentationOptions>(makeForDesktop(diagnostics), systemBus, sessionBus, diagnostics);
}

} // namespace kestrovan
