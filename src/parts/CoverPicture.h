#pragma once

#include "parts/PictureFile.h"
#include "platform/Observable.h"

#include <QImage>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace kestrovan {

class MainQueue;
class Workers;

/// The picture in a file, cut to a size and kept as the file is at the last look. A worker looks and decodes, once for
/// each change of the file; meanwhile the main thread has the picture of before. Main thread.
class CoverPicture : public std::enable_shared_from_this<CoverPicture> {
public:
    using Finish = std::function<void(QImage&)>;

    /// `finish` is the last step of each decoding, on the worker.
    static std::shared_ptr<CoverPicture> make(MainQueue& mainQueue, Workers& workers, QSize size, Finish finish = {});

    /// Has the worker look at the file soon; none, and the picture is gone at once.
    void look(const std::optional<std::string>& path);
    /// Null while there is none.
    const QImage& image() const { return image_; }
    [[nodiscard]] Subscription observe(std::function<void()> observer)
    {
        return changes_.subscribe(std::move(observer));
    }

private:
    struct Look {
        std::optional<pictureFile::Stamp> stamp;
        QImage image;
        bool isNew = false;
    };

    CoverPicture(MainQueue& mainQueue, Workers& workers, QSize size, Finish finish);
    static Look lookAt(const std::string& path, QSize size, const std::optional<pictureFile::Stamp>& known,
                       const Finish& finish);
    void take(const std::string& path, Look look);
    void setImage(QImage image);

    MainQueue& mainQueue_;
    Workers& workers_;
    const QSize size_;
    const Finish finish_;
    std::optional<std::string> path_;
    std::optional<pictureFile::Stamp> stamp_;
    QImage image_;
    bool isLooking_ = false;
    Signal<> changes_;
};

} // namespace kestrovan
