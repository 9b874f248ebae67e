#include "platform/simulated/SimulatedScreens.h"

#include <utility>

namespace kestrovan {

class SimulatedOverlayWindow final : public OverlayWindow {
public:
    SimulatedOverlayWindow(SimulatedScreens& desk, std::list<SimulatedScreens::Window>::iterator window,
                           std::unique_ptr<HostedView> contentView)
        : desk_(desk), window_(window), contentView_(std::move(contentView))
    {}
    SimulatedOverlayWindow(const SimulatedOverlayWindow&) = delete;
    SimulatedOverlayWindow& operator=(const SimulatedOverlayWindow&) = delete;
    ~SimulatedOverlayWindow() override
    {
        loseKey();
        desk_.windows_.erase(window_);
    }

    void makeKeyAndOrderFront() override
    {
        window_->isShown = true;
        desk_.history.push_back("front " + name());
        desk_.keyScreen_ = name();
    }
    void makeKey() override
    {
        desk_.history.push_back("key " + name());
        if (window_->isShown && window_->traits.canBecomeKey)
            desk_.keyScreen_ = name();
    }
    void orderOut() override
    {
        window_->isShown = false;
        desk_.history.push_back("out " + name());
        loseKey();
    }

private:
    const std::string& name() const { return window_->traits.screen.name; }
    void loseKey()
    {
        if (desk_.keyScreen_ == name())
            desk_.keyScreen_.clear();
    }

    SimulatedScreens& desk_;
    const std::list<SimulatedScreens::Window>::iterator window_;
    std::unique_ptr<HostedView> contentView_;
};

std::unique_ptr<OverlayWindow> SimulatedScreens::makeWindow(const OverlayWindowTraits& traits,
                                                            std::unique_ptr<HostedView> contentView)
{
    const auto window = windows_.insert(windows_.end(), Window{.traits = traits, .contentView = contentView.get()});
    return std::make_unique<SimulatedOverlayWindow>(*this, window, std::move(contentView));
}

std::vector<std::string> SimulatedScreens::covered() const
{
    std::vector<std::string> names;
    for (const auto& window : windows_)
        if (window.isShown)
            names.push_back(window.traits.screen.name);
    return names;
}

} // namespace kestrovan
