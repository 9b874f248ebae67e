#pragma once

#include <functional>
#include <string>
#include <variant>

namespace kestrovan {

enum class CameraAuthorization { notDetermined = 0, restricted = 1, denied = 2, authorized = 3 };

/// The machine's default camera, for one still at a time.
class Camera {
public:
    struct Photo {
        std::string jpeg; ///< a whole JPEG file; empty if the camera delivered nothing
    };
    struct Error {
        std::string description; ///< for people to read: what was wrong with the camera
    };
    using PhotoResult = std::variant<Photo, Error>;

    virtual ~Camera() = default;

    /// Main thread.
    virtual CameraAuthorization authorization() const = 0;

    /// Asks the user, once; `answered` may come on any thread, or never. While a question is open no second one is
    /// put: the answer to a further request is no, at once. Main thread; returns at once.
    virtual void requestAccess(std::function<void(bool granted)> answered) = 0;

    /// Finds and opens the default camera; false if there is none or it cannot be opened. Worker thread; may block.
    virtual bool configure() = 0;
    virtual bool isRunning() const = 0;
    virtual void start() = 0; ///< the light goes on. Worker thread; may block.

    /// Takes one still of this moment; `done` is called once, on a thread of the camera's, unless the camera is
    /// destroyed first. Whatever kept start() from working is the error here. Worker thread; returns at once.
    virtual void capturePhoto(std::function<void(PhotoResult)> done) = 0;
    /// The light goes off. A still that is being waited for ends in an error. Worker thread; may block.
    virtual void stop() = 0;
};

} // namespace kestrovan
