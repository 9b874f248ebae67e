#include "rigs/GlaringProgram.h"

#include <algorithm>
#include <array>
#include <span>

namespace kestrovan::rigs {
namespace {

constexpr std::uint32_t colorBits = 0xFFFFFF;

} // namespace

GlaringProgram::GlaringProgram()
    : connection_(xcb_connect(nullptr, nullptr)),
      root_(xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root)
{}

xcb_window_t GlaringProgram::open(Kind kind, const ScreenFrame& frame)
{
    auto* server = connection_.get();
    const auto window = xcb_generate_id(server);
    const std::array<std::uint32_t, 2> values{glare, kind == Kind::popUp ? 1U : 0U};
    xcb_create_window(server, XCB_COPY_FROM_PARENT, window, root_, static_cast<std::int16_t>(frame.x),
                      static_cast<std::int16_t>(frame.y), static_cast<std::uint16_t>(frame.width),
                      static_cast<std::uint16_t>(frame.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
    describe(window, kind, frame);
    xcb_map_window(server, window);
    xcb_flush(server);
    return window;
}

// Inter-Client Communication Conventions, and Extended Window Manager Hints.
void GlaringProgram::describe(xcb_window_t window, Kind kind, const ScreenFrame& frame)
{
    auto* server = connection_.get();
    constexpr std::uint32_t placedByUser = 1;
    const std::array<std::uint32_t, 18> hints{placedByUser};
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32,
                        hints.size(), hints.data());
    if (kind == Kind::dock) {
        setProperty(window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, xcb::atom(server, "_NET_WM_WINDOW_TYPE_DOCK"));
        const std::array<std::uint32_t, 4> strut{0, 0, static_cast<std::uint32_t>(frame.height), 0};
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, window, xcb::atom(server, "_NET_WM_STRUT"),
                            XCB_ATOM_CARDINAL, 32, strut.size(), strut.data());
    }
    if (kind == Kind::fullScreen)
        setProperty(window, "_NET_WM_STATE", XCB_ATOM_ATOM, xcb::atom(server, "_NET_WM_STATE_FULLSCREEN"));
}

void GlaringProgram::setProperty(xcb_window_t window, const char* name, xcb_atom_t type, std::uint32_t value)
{
    auto* server = connection_.get();
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, window, xcb::atom(server, name), type, 32, 1, &value);
}

void GlaringProgram::raise(xcb_window_t window)
{
    constexpr std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection_.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(connection_.get());
}

void GlaringProgram::close(xcb_window_t window)
{
    xcb_destroy_window(connection_.get(), window);
    xcb_flush(connection_.get());
}

void GlaringProgram::unmap(xcb_window_t window)
{
    xcb_unmap_window(connection_.get(), window);
    xcb_flush(connection_.get());
}

void GlaringProgram::takeFocus(xcb_window_t window)
{
    xcb_set_input_focus(connection_.get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    xcb_flush(connection_.get());
}

template <class Visitor>
bool GlaringProgram::visitPixels(const ScreenFrame& place, Visitor visitor)
{
    const auto cookie =
        xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, root_, static_cast<std::int16_t>(place.x),
                      static_cast<std::int16_t>(place.y), static_cast<std::uint16_t>(place.width),
                      static_cast<std::uint16_t>(place.height), ~0U);
    const xcb::Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(connection_.get(), cookie, nullptr));
    if (!image)
        return false;
    const std::span pixels(reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get())),
                           static_cast<std::size_t>(place.width) * static_cast<std::size_t>(place.height));
    return visitor(pixels);
}

std::optional<std::uint32_t> GlaringProgram::colorOf(const ScreenFrame& place)
{
    std::optional<std::uint32_t> color;
    visitPixels(place, [&](std::span<const std::uint32_t> pixels) {
        const auto first = pixels.front() & colorBits;
        if (std::ranges::all_of(pixels, [&](std::uint32_t pixel) { return (pixel & colorBits) == first; }))
            color = first;
        return true;
    });
    return color;
}

bool GlaringProgram::seesGlare(const ScreenFrame& place)
{
    return visitPixels(place, [](std::span<const std::uint32_t> pixels) {
        return std::ranges::any_of(pixels, [](std::uint32_t pixel) { return (pixel & colorBits) == glare; });
    });
}

xcb_window_t GlaringProgram::focus()
{
    const xcb::Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_.get(), xcb_get_input_focus(connection_.get()), nullptr));
    return reply ? reply->focus : XCB_NONE;
}

} // namespace kestrovan::rigs
