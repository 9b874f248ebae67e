#pragma once

#include "platform/Camera.h"
#include "platform/KeyEvents.h"
#include "platform/PicturePicker.h"
#include "platform/PresentationOptions.h"
#include "platform/Workspace.h"
#include "platform/simulated/SimulatedSpeaker.h"

#include <string>
#include <vector>

namespace kestrovan {

/// The keyboard and what the desktop does for the program.
class SimulatedDesktop final : public KeyEvents, public PresentationOptions, public Workspace, public PicturePicker {
public:
    explicit SimulatedDesktop(SimulatedSpeaker& speaker) : speaker_(speaker) {}

    Subscription addLocalMonitor(Filter filter) override;
    void setOptions(std::uint32_t options) override { presentationOptions = options; }
    void beep() override { speaker_.beep(); }
    void openAddress(const std::string& address) override { openedAddresses.push_back(address); }
    void revealFolder(const std::filesystem::path& folder) override { revealedFolders.push_back(folder); }
    void activate() override { ++activations; }
    std::optional<std::filesystem::path> choose(const Texts& texts) override
    {
        pickerTexts = texts;
        return choice;
    }

    /// A key event of the program; true if it was swallowed before any window saw it.
    bool press(const KeyEvent& event);
    std::size_t monitors() const { return *monitors_; }

    std::uint32_t presentationOptions = 0;
    std::vector<std::string> openedAddresses;
    std::vector<std::filesystem::path> revealedFolders;
    int activations = 0;
    std::optional<std::filesystem::path> choice; ///< what the user picks next; none: cancels
    Texts pickerTexts;                           ///< of the last picker

private:
    SimulatedSpeaker& speaker_;
    Signal<const KeyEvent&, bool&> keyEvents_;
    std::shared_ptr<std::size_t> monitors_ = std::make_shared<std::size_t>(0);
};

/// A camera in front of which something may stand.
class SimulatedCamera final : public Camera {
public:
    CameraAuthorization authorization() const override { return status; }
    void requestAccess(std::function<void(bool granted)> answered) override;
    bool configure() override { return isPresent; }
    bool isRunning() const override { return isLightOn; }
    void start() override { isLightOn = true; }
    void capturePhoto(std::function<void(PhotoResult)> done) override;
    void stop() override { isLightOn = false; }

    /// The user answers the open question.
    void answer(bool granted);
    int questions() const { return questions_; }
    int shotsRequested() const { return shots_; }

    CameraAuthorization status = CameraAuthorization::authorized;
    bool isPresent = true;
    bool isLightOn = false;
    bool isSlow = false; ///< photos come when they are delivered by hand
    PhotoResult nextPhoto = Photo{"a picture"};
    void deliver();

private:
    std::function<void(bool)> question_;
    std::vector<std::function<void(PhotoResult)>> awaited_;
    int questions_ = 0;
    int shots_ = 0;
};

} // namespace kestrovan
