#include "Onlooker.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <thread>

namespace kestrovan::bench {

namespace {

using namespace std::chrono_literals;

constexpr auto lookEvery = 500us; // often enough to time by, seldom enough to leave the machine to what is watched
constexpr auto rest = 150ms;
constexpr auto mostRest = 5s;

} // namespace

Onlooker::Onlooker()
    : connection_(xcb_connect(nullptr, nullptr)),
      root_(xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root)
{}

void Onlooker::paintDesktop(std::uint32_t color)
{
    xcb_change_window_attributes(connection_.get(), root_, XCB_CW_BACK_PIXEL, &color);
    xcb_clear_area(connection_.get(), 0, root_, 0, 0, 0, 0);
    xcb_flush(connection_.get());
}

Onlooker::Picture Onlooker::look(const Area& area) const
{
    const auto cookie =
        xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, root_, static_cast<std::int16_t>(area.x),
                      static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                      static_cast<std::uint16_t>(area.height), 0x00FFFFFF);
    const xcb::Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection_.get(), cookie, nullptr));
    if (!reply)
        return {};
    Picture picture(static_cast<std::size_t>(area.width) * static_cast<std::size_t>(area.height));
    std::memcpy(picture.data(), xcb_get_image_data(reply.get()),
                std::min(picture.size() * sizeof(std::uint32_t),
                         static_cast<std::size_t>(xcb_get_image_data_length(reply.get()))));
    return picture;
}

std::optional<Onlooker::Clock::time_point> Onlooker::waitFor(const Area& area,
                                                             const std::function<bool(const Picture&)>& isThere,
                                                             std::chrono::milliseconds patience) const
{
    const auto end = Clock::now() + patience;
    while (!isThere(look(area))) {
        if (Clock::now() > end)
            return std::nullopt;
        std::this_thread::sleep_for(lookEvery);
    }
    return Clock::now();
}

void Onlooker::waitForRest(const Area& area) const
{
    const auto end = Clock::now() + mostRest;
    auto last = look(area);
    for (auto since = Clock::now(); Clock::now() - since < rest && Clock::now() < end;) {
        std::this_thread::sleep_for(10ms);
        if (auto now = look(area); now != last) {
            last = std::move(now);
            since = Clock::now();
        }
    }
}

void Onlooker::moveTo(const Spot& spot)
{
    xcb_test_fake_input(connection_.get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, root_,
                        static_cast<std::int16_t>(spot.x), static_cast<std::int16_t>(spot.y), 0);
}

void Onlooker::button(std::uint8_t number)
{
    for (const auto type : std::array<std::uint8_t, 2>{XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE})
        xcb_test_fake_input(connection_.get(), type, number, XCB_CURRENT_TIME, root_, 0, 0, 0);
    xcb_flush(connection_.get());
}

void Onlooker::press(const Spot& spot)
{
    moveTo(spot);
    button(XCB_BUTTON_INDEX_1);
}

void Onlooker::turnWheel(const Spot& spot, int notches)
{
    moveTo(spot);
    for (int notch = 0; notch < std::abs(notches); ++notch)
        button(notches > 0 ? XCB_BUTTON_INDEX_5 : XCB_BUTTON_INDEX_4);
}

Onlooker::Spot Onlooker::origin(std::uint32_t window) const
{
    const auto cookie = xcb_translate_coordinates(connection_.get(), window, root_, 0, 0);
    const xcb::Reply<xcb_translate_coordinates_reply_t> reply(
        xcb_translate_coordinates_reply(connection_.get(), cookie, nullptr));
    return reply ? Spot{reply->dst_x, reply->dst_y} : Spot{0, 0};
}

} // namespace kestrovan::bench
