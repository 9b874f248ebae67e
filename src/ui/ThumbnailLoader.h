#pragma once

#include "platform/Lifetime.h"
#include "platform/Observable.h"
#include "platform/Workers.h"

#include <QImage>
#include <QObject>
#include <QtQmlIntegration>

#include <functional>
#include <list>
#include <memory>
#include <string>

namespace kestrovan {

/// Decodes photos at the size at which they are shown, away from the main thread, a few at a time. Who asked last is
/// served first: in a grid that scrolls, that is what is in sight. Keeps nothing. Main thread.
class ThumbnailLoader : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by C++ for the gallery")

public:
    using Done = std::function<void(const QImage& image)>;

    ThumbnailLoader(MainQueue& mainQueue, Workers& workers) : mainQueue_(mainQueue), workers_(workers) {}

    /// Calls `done` with the middle of the photo, with round corners; null if the file is no picture. `size` and
    /// `cornerRadius` are in pixels. Ending the subscription takes the request back.
    [[nodiscard]] Subscription load(const std::string& path, QSize size, double cornerRadius, Done done);

private:
    struct Request {
        std::string path;
        QSize size;
        double cornerRadius;
        Done done;
    };

    void startMore();
    void finish(const std::shared_ptr<Request>& request, const QImage& image);

    MainQueue& mainQueue_;
    Workers& workers_;
    std::list<std::shared_ptr<Request>> waiting_;
    int running_ = 0;
    Lifetime lifetime_;
};

} // namespace kestrovan
