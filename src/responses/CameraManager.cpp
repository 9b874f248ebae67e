#include "responses/CameraManager.h"

#include "platform/Clock.h"
#include "platform/Diagnostics.h"
#include "platform/Files.h"
#include "platform/Platform.h"
#include "platform/Workers.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <cmath>
#include <ctime>
#include <iomanip>
#include <mutex>
#include <sstream>
#include <utility>

namespace kestrovan {

namespace {

constexpr const char* refusal = "Camera permission not granted or self deallocated.";

// A second at least; the upper end only keeps an absurd setting within what a timer can count.
std::chrono::milliseconds waitingTime(double delaySeconds)
{
    constexpr double shortest = 1;
    constexpr double longest = 24 * 60 * 60;
    const double seconds = delaySeconds > shortest ? std::min(delaySeconds, longest) : shortest;
    return std::chrono::round<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
}

std::string fileName(std::chrono::system_clock::time_point moment)
{
    const auto seconds = std::chrono::system_clock::to_time_t(moment);
    std::tm local{};
    localtime_r(&seconds, &local);
    std::ostringstream name;
    name << "Intruder_" << std::put_time(&local, "%Y-%m-%d_%H-%M-%S") << ".jpg";
    return name.str();
}

// The shortest decimal form that still shows a fraction: 2.0, 3.5.
std::string decimal(double value)
{
    std::array<char, 400> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), value, std::chars_format::fixed).ptr;
    const std::string text(digits.begin(), end);
    return std::isfinite(value) && text.find('.') == std::string::npos ? text + ".0" : text;
}

} // namespace

std::filesystem::path intruderDirectory(const Files& files)
{
    return files.picturesFolder().value_or(files.dataFolder().value_or("/dev/null")) / "Kestrovan_Intruders";
}

/// The camera and the captures under way: the part of the manager that other threads work on. What concerns the
/// manager itself is posted to the main thread, and is dropped there once the manager is gone.
class CameraManager::Session : public std::enable_shared_from_this<Session> {
public:
    Session(const Platform& platform, CameraManager& manager)
        : camera_(platform.camera), workers_(platform.workers), mainQueue_(platform.mainQueue), clock_(platform.clock),
          files_(platform.files), diagnostics_(platform.diagnostics), manager_(&manager)
    {}

    /// Main thread.
    void performCapture(Completion completion)
    {
        onMain([](CameraManager& manager) { manager.isCapturing = true; });
        workers_.run(Workers::Priority::userInitiated,
                     [self = shared_from_this(), completion = std::move(completion)] { self->open(completion); });
    }

    /// The manager goes. Main thread.
    void abandon()
    {
        manager_ = nullptr;
        workers_.run(Workers::Priority::background, [self = shared_from_this()] {
            const std::scoped_lock lock(self->cameraMutex_);
            if (std::exchange(self->captures_, 0) > 0)
                self->camera_.stop();
        });
    }

    std::atomic<double> captureDelaySeconds = 2.0;

private:
    bool isAbandoned() const { return manager_ == nullptr; }

    void open(const Completion& completion)
    {
        if (!turnOn())
            return onMain([completion](CameraManager& manager) {
                manager.isCapturing = false;
                completion(std::nullopt);
            });
        workers_.runAfter(waitingTime(captureDelaySeconds), Workers::Priority::userInitiated,
                          [self = shared_from_this(), completion] { self->shoot(completion); });
    }

    bool turnOn()
    {
        const std::scoped_lock lock(cameraMutex_);
        if (isAbandoned())
            return false;
        if (!isConfigured_)
            isConfigured_ = camera_.configure();
        if (!isConfigured_)
            return false;
        if (!camera_.isRunning())
            camera_.start();
        ++captures_;
        return true;
    }

    // A capture that was asked for while this one waited keeps the camera on, and turns it off itself.
    void turnOff()
    {
        const std::scoped_lock lock(cameraMutex_);
        if (captures_ > 0 && --captures_ == 0)
            camera_.stop();
    }

    void shoot(const Completion& completion)
    {
        if (isAbandoned())
            return;
        onMain([completion](CameraManager& manager) { manager.pendingCompletion_ = completion; });
        camera_.capturePhoto([self = shared_from_this()](const Camera::PhotoResult& result) { self->arrived(result); });
    }

    void arrived(const Camera::PhotoResult& result)
    {
        if (isAbandoned())
            return;
        workers_.run(Workers::Priority::background, [self = shared_from_this()] { self->turnOff(); });
        onMain([](CameraManager& manager) { manager.isCapturing = false; });
        onMain([file = store(result)](CameraManager& manager) {
            if (const auto completion = std::exchange(manager.pendingCompletion_, nullptr))
                completion(file);
        });
    }

    std::optional<std::filesystem::path> store(const Camera::PhotoResult& result)
    {
        const auto* photo = std::get_if<Camera::Photo>(&result);
        if (photo && !photo->jpeg.empty())
            return save(photo->jpeg);
        const auto* error = std::get_if<Camera::Error>(&result);
        diagnostics_.line("Error capturing photo: " + (error ? error->description : std::string("nil")));
        return std::nullopt;
    }

    std::optional<std::filesystem::path> save(const std::string& jpeg)
    {
        const auto folder = kestrovan::intruderDirectory(files_);
        files_.createFolders(folder);
        const auto file = folder / fileName(clock_.now());
        if (const auto error = files_.writeAtomically(file, jpeg)) {
            diagnostics_.line("Failed to save intruder photo: " + *error);
            return std::nullopt;
        }
        diagnostics_.line("✅ Intruder photo saved to: " + file.string() + " after " + decimal(captureDelaySeconds) +
                          "s delay");
        return file;
    }

    void onMain(std::function<void(CameraManager&)> change)
    {
        mainQueue_.post([self = shared_from_this(), change = std::move(change)] {
            if (auto* manager = self->manager_.load())
                change(*manager);
        });
    }

    Camera& camera_;
    Workers& workers_;
    MainQueue& mainQueue_;
    Clock& clock_;
    Files& files_;
    Diagnostics& diagnostics_;
    std::atomic<CameraManager*> manager_; ///< none once it is gone; followed and cleared on the main thread only
    std::mutex cameraMutex_;              ///< held by workers while they switch the camera, never by the main thread
    bool isConfigured_ = false;
    int captures_ = 0; ///< for which the camera is on
};

CameraManager::CameraManager(const Platform& platform)
    : camera_(platform.camera), files_(platform.files), mainQueue_(platform.mainQueue),
      diagnostics_(platform.diagnostics), session_(std::make_shared<Session>(platform, *this))
{}

CameraManager::~CameraManager()
{
    session_->abandon();
}

double CameraManager::captureDelaySeconds() const
{
    return session_->captureDelaySeconds;
}

CameraAuthorization CameraManager::authorization() const
{
    return camera_.authorization();
}

std::filesystem::path CameraManager::intruderDirectory() const
{
    return kestrovan::intruderDirectory(files_);
}

void CameraManager::requestPermission(std::function<void(bool granted)> completion)
{
    const auto status = authorization();
    if (status != CameraAuthorization::notDetermined) {
        completion(status == CameraAuthorization::authorized);
        return;
    }
    camera_.requestAccess([&queue = mainQueue_, completion = std::move(completion)](bool granted) {
        queue.post([completion, granted] { completion(granted); });
    });
}

void CameraManager::captureIntruderPhoto(const std::string& /*reason*/, double delay, Completion completion)
{
    session_->captureDelaySeconds = delay;
    // The manager may be gone when a question to the user is answered at last: the answer then is no photo.
    requestPermission([this, alive = lifetime_.watch(), &diagnostics = diagnostics_,
                       completion = std::move(completion)](bool granted) {
        if (granted && !alive.expired()) {
            session_->performCapture(completion);
            return;
        }
        diagnostics.line(refusal);
        completion(std::nullopt);
    });
}

} // namespace kestrovan
