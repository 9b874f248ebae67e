#include "Onlooker.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kestrovan::bench {

namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t black = 0;
constexpr auto glance = 1ms; // the server is to have time for others

} // namespace

Onlooker::Onlooker(std::vector<Screen> screens) : screens_(std::move(screens)) {}

Onlooker::~Onlooker() = default;

void Onlooker::watch()
{
    isDone_ = false;
    thread_ = std::jthread([this](const std::stop_token& stop) { look(stop); });
}

void Onlooker::look(const std::stop_token& stop)
{
    const auto waitForNone = [&](std::uint32_t color) {
        while (!stop.stop_requested() && isAnyCorner(color))
            std::this_thread::sleep_for(glance);
    };
    waitForNone(rigs::GlaringProgram::glare);
    covered_ = Clock::now();
    waitForNone(black);
    drawn_ = Clock::now();
    isDone_ = true;
}

// Windows are rectangles: one that has all corners of a screen has all of it.
bool Onlooker::isAnyCorner(std::uint32_t color)
{
    return std::ranges::any_of(screens_, [&](const Screen& screen) {
        const auto [x, y, width, height] = screen.frame;
        const std::array corners{ScreenFrame{x, y, 1, 1}, ScreenFrame{x + width - 1, y, 1, 1},
                                 ScreenFrame{x, y + height - 1, 1, 1},
                                 ScreenFrame{x + width - 1, y + height - 1, 1, 1}};
        return std::ranges::any_of(corners, [&](const auto& corner) { return eyes_.colorOf(corner) == color; });
    });
}

bool Onlooker::isAllCovered()
{
    return std::ranges::none_of(screens_, [&](const Screen& screen) { return eyes_.seesGlare(screen.frame); });
}

} // namespace kestrovan::bench
