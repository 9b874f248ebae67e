#include "parts/CoverPicture.h"

#include "platform/MainQueue.h"
#include "platform/Workers.h"

#include <utility>

namespace kestrovan {

std::shared_ptr<CoverPicture> CoverPicture::make(MainQueue& mainQueue, Workers& workers, QSize size, Finish finish)
{
    return std::shared_ptr<CoverPicture>(new CoverPicture(mainQueue, workers, size, std::move(finish)));
}

CoverPicture::CoverPicture(MainQueue& mainQueue, Workers& workers, QSize size, Finish finish)
    : mainQueue_(mainQueue), workers_(workers), size_(size), finish_(std::move(finish))
{}

void CoverPicture::look(const std::optional<std::string>& path)
{
    if (path != path_) {
        path_ = path;
        stamp_.reset();
        setImage({});
    }
    if (!path || std::exchange(isLooking_, true))
        return;
    workers_.run(Workers::Priority::userInitiated, [weak = weak_from_this(), &mainQueue = mainQueue_, path = *path,
                                                    size = size_, known = stamp_, finish = finish_] {
        mainQueue.post([weak, path, look = lookAt(path, size, known, finish)] {
            if (const auto self = weak.lock())
                self->take(path, look);
        });
    });
}

CoverPicture::Look CoverPicture::lookAt(const std::string& path, QSize size,
                                        const std::optional<pictureFile::Stamp>& known, const Finish& finish)
{
    Look look;
    look.stamp = pictureFile::stampOf(path);
    look.isNew = look.stamp != known;
    if (!look.isNew || !look.stamp)
        return look;
    look.image = pictureFile::cover(path, size);
    if (finish && !look.image.isNull())
        finish(look.image);
    return look;
}

void CoverPicture::take(const std::string& path, Look look)
{
    isLooking_ = false;
    if (path != path_) {
        this->look(path_); // another one was chosen meanwhile
        return;
    }
    stamp_ = look.stamp;
    if (look.isNew)
        setImage(std::move(look.image));
}

void CoverPicture::setImage(QImage image)
{
    if (image.isNull() && image_.isNull())
        return;
    image_ = std::move(image);
    changes_.tell();
}

} // namespace kestrovan
