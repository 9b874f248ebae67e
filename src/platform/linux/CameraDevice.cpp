#include "platform/linux/CameraDevice.h"

#include "platform/linux/Release.h"

#include <fcntl.h>
#include <libudev.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <compare>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace kestrovan {

namespace {

using Udev = std::unique_ptr<udev, Release<udev_unref>>;
using Enumeration = std::unique_ptr<udev_enumerate, Release<udev_enumerate_unref>>;
using Device = std::unique_ptr<udev_device, Release<udev_device_unref>>;

struct Candidate {
    int origin = 0; ///< 0 built in, 1 other hardware, 2 software
    bool isInfrared = false;
    unsigned long number = 0;
    std::string node;

    auto operator<=>(const Candidate&) const = default;
};

std::string text(const char* value)
{
    return value ? value : "";
}

std::string lowerCase(std::string name)
{
    std::ranges::transform(name, name.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

// A word of the name: "integrated ir camera" has one, "first camera" has none.
bool isInfrared(const std::string& name)
{
    return contains(" " + name + " ", " ir ") || contains(name, "infrared");
}

// The firmware tells for each USB port whether what hangs on it can be unplugged; names tell on the machines whose
// firmware does not.
bool isBuiltIn(udev_device* device, const std::string& name)
{
    if (auto* usb = udev_device_get_parent_with_subsystem_devtype(device, "usb", "usb_device"))
        if (text(udev_device_get_sysattr_value(usb, "removable")) == "fixed")
            return true;
    return contains(name, "integrated") || contains(name, "built-in") || contains(name, "builtin");
}

int origin(udev_device* device, const std::string& name)
{
    if (contains(text(udev_device_get_syspath(device)), "/devices/virtual/"))
        return 2;
    return isBuiltIn(device, name) ? 0 : 1;
}

std::optional<Candidate> candidate(udev_device* device)
{
    const auto node = text(udev_device_get_devnode(device));
    if (!text(udev_device_get_sysname(device)).starts_with("video") || node.empty())
        return std::nullopt;
    const auto name = lowerCase(text(udev_device_get_sysattr_value(device, "name")) + " " +
                                text(udev_device_get_property_value(device, "ID_V4L_PRODUCT")));
    return Candidate{origin(device, name), isInfrared(name),
                     std::strtoul(text(udev_device_get_sysnum(device)).c_str(), nullptr, 10), node};
}

// Best first. Without udev's database (a container, an early start) the devices are still listed.
std::vector<Candidate> candidates()
{
    const Udev udev(udev_new());
    const Enumeration enumeration(udev ? udev_enumerate_new(udev.get()) : nullptr);
    std::vector<Candidate> found;
    if (!enumeration || udev_enumerate_add_match_subsystem(enumeration.get(), "video4linux") < 0 ||
        udev_enumerate_scan_devices(enumeration.get()) < 0)
        return found;
    for (auto* entry = udev_enumerate_get_list_entry(enumeration.get()); entry;
         entry = udev_list_entry_get_next(entry)) {
        const Device device(udev_device_new_from_syspath(udev.get(), udev_list_entry_get_name(entry)));
        if (auto listed = device ? candidate(device.get()) : std::nullopt)
            found.push_back(std::move(*listed));
    }
    std::ranges::sort(found);
    return found;
}

// What kind of device it is, 0 if it does not speak V4L2 or has been unplugged under our hands.
std::uint32_t abilities(int descriptor)
{
    v4l2_capability capability{};
    if (ioctl(descriptor, VIDIOC_QUERYCAP, &capability) != 0)
        return 0;
    return (capability.capabilities & V4L2_CAP_DEVICE_CAPS) != 0 ? capability.device_caps : capability.capabilities;
}

} // namespace

// Only the device itself knows: a camera has nodes that carry metadata beside its pictures, and codecs look like
// cameras to those who do not ask.
std::string objectionTo(const std::string& node)
{
    const int descriptor = open(node.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0 && (errno == ENOENT || errno == ENODEV || errno == ENXIO))
        return node + " is gone";
    if (descriptor < 0)
        return node + " cannot be opened: " + std::generic_category().message(errno);
    errno = 0;
    const auto kinds = abilities(descriptor);
    const bool isGone = errno == ENODEV;
    close(descriptor);
    if (isGone)
        return node + " is gone";
    return (kinds & (V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_VIDEO_CAPTURE_MPLANE)) != 0 ? "" : node + " is not a camera";
}

CameraDevice findDefaultCamera()
{
    std::string objections;
    for (const auto& listed : candidates()) {
        const auto reason = objectionTo(listed.node);
        if (reason.empty())
            return {listed.node, {}};
        objections += (objections.empty() ? "" : "; ") + reason;
    }
    return {{}, objections.empty() ? "no camera found" : objections};
}

} // namespace kestrovan
