#pragma once

#include "parts/CoverPicture.h"

#include <QImage>
#include <QSize>

#include <map>
#include <memory>
#include <tuple>

namespace kestrovan {

/// What lies behind everything on the deterrent screens: the user's picture, darkened, or a night sky of our own.
/// Screens of one size share theirs. Main thread; `mainQueue` and `workers` outlive it.
class Backdrops {
public:
    Backdrops(MainQueue& mainQueue, Workers& workers) : mainQueue_(mainQueue), workers_(workers) {}

    /// Of a screen of this size in pixels.
    std::shared_ptr<CoverPicture> wallpaper(QSize pixels);

    /// `scale` is how many pixels make up one of an unscaled screen.
    std::shared_ptr<const QImage> standard(QSize pixels, double scale, bool isAlarm);

private:
    MainQueue& mainQueue_;
    Workers& workers_;
    std::map<std::tuple<int, int>, std::weak_ptr<CoverPicture>> wallpapers_;
    std::map<std::tuple<int, int, double, bool>, std::weak_ptr<const QImage>> standards_;
};

} // namespace kestrovan
