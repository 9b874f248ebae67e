#include "ui/ThumbnailLoader.h"

#include "parts/PictureFile.h"
#include "parts/RoundedImage.h"

#include <utility>

namespace kestrovan {

namespace {

constexpr int mostAtOnce = 2;

} // namespace

Subscription ThumbnailLoader::load(const std::string& path, QSize size, double cornerRadius, Done done)
{
    const auto request = std::make_shared<Request>(Request{path, size, cornerRadius, std::move(done)});
    waiting_.push_front(request);
    startMore();
    return Subscription(lifetime_.guard([this, request] {
        request->done = nullptr;
        waiting_.remove(request);
    }));
}

void ThumbnailLoader::startMore()
{
    while (running_ < mostAtOnce && !waiting_.empty()) {
        const auto request = waiting_.front();
        waiting_.pop_front();
        ++running_;
        auto finished = lifetime_.guard([this, request](const QImage& image) { finish(request, image); });
        workers_.run(Workers::Priority::userInitiated,
                     [&mainQueue = mainQueue_, finished = std::move(finished), path = request->path,
                      size = request->size, cornerRadius = request->cornerRadius] {
                         const auto image = roundedImage(pictureFile::cover(path, size), cornerRadius);
                         mainQueue.post([finished, image] { finished(image); });
                     });
    }
}

void ThumbnailLoader::finish(const std::shared_ptr<Request>& request, const QImage& image)
{
    --running_;
    if (const auto done = std::exchange(request->done, nullptr))
        done(image);
    startMore();
}

} // namespace kestrovan
