#include "rigs/VirtualCamera.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <stdexcept>
#include <thread>
#include <utility>

// The mock follows open() but not dup(), by which video programs share a device with their buffer pools: the copy is
// made by opening the node again. The program's own symbol comes before the C library's.
extern "C" int dup(int descriptor) noexcept
{
    static const auto original = reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, "dup")); // NOLINT
    std::array<char, 256> target{};
    const auto link = "/proc/self/fd/" + std::to_string(descriptor);
    const auto size = readlink(link.c_str(), target.data(), target.size() - 1);
    const char* node = size > 0 ? std::strstr(target.data(), "/dev/video") : nullptr;
    return node ? open(node, O_RDWR | O_CLOEXEC) : original(descriptor);
}

namespace kestrovan::rigs {
namespace {

constexpr std::size_t slot = std::size_t{1} << 20U;
constexpr unsigned slotCount = 8;
constexpr auto interval = std::chrono::milliseconds(33);
constexpr const char* mark = "\xFF\xD8\xFF\xFE picture ";

std::string parentRecord(int number, VirtualCamera::Port port)
{
    if (port == VirtualCamera::Port::software)
        return {};
    const std::string removable = port == VirtualCamera::Port::builtIn ? "fixed" : "removable";
    return "P: /devices/pci0/usb1/1-" + std::to_string(number) +
           "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nA: removable=" + removable + "\n\n";
}

std::string record(int number, const VirtualCamera::Model& model)
{
    const auto digits = std::to_string(number);
    const auto parent = model.port == VirtualCamera::Port::software ? std::string("/devices/virtual")
                                                                    : "/devices/pci0/usb1/1-" + digits;
    return "P: " + parent + "/video4linux/video" + digits + "\nN: video" + digits + "=00\nE: DEVNAME=/dev/video" +
           digits + "\nE: SUBSYSTEM=video4linux\nE: MAJOR=81\nE: MINOR=" + digits + "\nA: dev=81:" + digits +
           "\nA: name=" + model.name + "\n\n";
}

} // namespace

/// One system call on the device.
struct VirtualCamera::Call {
    template <class T>
    T argument() const
    {
        T value{};
        std::memcpy(&value, data->data, std::min<std::size_t>(sizeof value, static_cast<std::size_t>(data->data_len)));
        return value;
    }
    template <class T>
    void reply(const T& value)
    {
        std::array<guint8, sizeof(T)> bytes{};
        std::memcpy(bytes.data(), &value, sizeof value);
        umockdev_ioctl_data_update(data, 0, bytes.data(), static_cast<gint>(bytes.size()));
    }
    void fail(int code) { error = code; }

    unsigned request = 0;
    UMockdevIoctlData* data = nullptr;
    int error = 0;
};

VirtualCamera::VirtualCamera(UMockdevTestbed* machine, int number, Model model)
    : model_(std::move(model)), conduct_(model_.conduct)
{
    for (const auto& text : {parentRecord(number, model_.port), record(number, model_)})
        if (!text.empty() && !umockdev_testbed_add_from_string(machine, text.c_str(), nullptr))
            throw std::runtime_error("the mock machine refuses the camera");
    char* root = umockdev_testbed_get_root_dir(machine);
    const auto path = "/dev/video" + std::to_string(number);
    node_ = root + path;
    g_free(root);
    handler_ = umockdev_ioctl_base_new();
    g_signal_connect(handler_, "handle-ioctl", G_CALLBACK(&VirtualCamera::handle), this);
    memory_ = open(node_.c_str(), O_RDWR | O_CLOEXEC);
    if (memory_ < 0 || ftruncate(memory_, slotCount * slot) != 0 ||
        !umockdev_testbed_attach_ioctl(machine, path.c_str(), handler_, nullptr))
        throw std::runtime_error("the mock machine has no node for the camera");
}

VirtualCamera::~VirtualCamera()
{
    g_signal_handlers_disconnect_by_data(handler_, this);
    g_object_unref(handler_);
    const std::scoped_lock afterTheLast(calls_);
    close(memory_);
}

bool VirtualCamera::isOpen() const
{
    int descriptors = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code none;
        descriptors += std::filesystem::read_symlink(entry.path(), none).string() == node_ ? 1 : 0;
    }
    return descriptors > 1; // one is the rig's
}

std::string VirtualCamera::jpeg(unsigned number)
{
    return mark + std::to_string(number) + std::string(20000, '.') + "\xFF\xD9";
}

unsigned VirtualCamera::numberOf(const std::string& jpeg)
{
    const std::string_view start(mark);
    return jpeg.starts_with(start) ? static_cast<unsigned>(std::atoi(jpeg.c_str() + start.size())) : 0;
}

std::string VirtualCamera::picture(unsigned number) const
{
    if (model_.makesJpeg)
        return jpeg(number);
    const auto pixels = [](std::size_t count, char luma) {
        std::string bytes;
        for (std::size_t i = 0; i < count; ++i)
            bytes.append({luma, '\x80'});
        return bytes;
    };
    const auto row = pixels(width / 2, '\x10') + pixels(width / 2, '\xEB');
    std::string frame;
    for (unsigned y = 0; y < height; ++y)
        frame += row;
    return frame;
}

gboolean VirtualCamera::handle(UMockdevIoctlBase* /*base*/, UMockdevIoctlClient* client, gpointer self)
{
    Call call;
    call.request = static_cast<unsigned>(umockdev_ioctl_client_get_request(client));
    if (_IOC_TYPE(call.request) != 'V')
        return FALSE;
    call.data = umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, _IOC_SIZE(call.request), nullptr);
    {
        auto* camera = static_cast<VirtualCamera*>(self);
        const std::scoped_lock oneByOne(camera->calls_);
        camera->answer(call);
    }
    if (call.data)
        umockdev_ioctl_data_unref(call.data);
    umockdev_ioctl_client_complete(client, call.error ? -1 : 0, call.error);
    return TRUE;
}

void VirtualCamera::answer(Call& call)
{
    if (conduct_ == CameraConduct::isUnplugged)
        call.fail(ENODEV);
    else if (!answerQuestion(call) && !answerStreaming(call))
        call.fail(ENOTTY);
}

bool VirtualCamera::answerQuestion(Call& call) const
{
    switch (call.request) {
    case static_cast<unsigned>(VIDIOC_QUERYCAP): {
        v4l2_capability capability{};
        std::strcpy(reinterpret_cast<char*>(capability.driver), "uvcvideo"); // NOLINT
        capability.device_caps = conduct_ == CameraConduct::isNotACamera
                                     ? V4L2_CAP_META_CAPTURE | V4L2_CAP_STREAMING
                                     : V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_STREAMING | V4L2_CAP_EXT_PIX_FORMAT;
        capability.capabilities = capability.device_caps | V4L2_CAP_DEVICE_CAPS;
        call.reply(capability);
        return true;
    }
    case static_cast<unsigned>(VIDIOC_ENUM_FMT): {
        auto format = call.argument<v4l2_fmtdesc>();
        if (format.index > 0 || format.type != V4L2_BUF_TYPE_VIDEO_CAPTURE)
            call.fail(EINVAL);
        format.pixelformat = model_.makesJpeg ? V4L2_PIX_FMT_MJPEG : V4L2_PIX_FMT_YUYV;
        format.flags = model_.makesJpeg ? V4L2_FMT_FLAG_COMPRESSED : 0;
        call.reply(format);
        return true;
    }
    case static_cast<unsigned>(VIDIOC_ENUM_FRAMESIZES): {
        auto size = call.argument<v4l2_frmsizeenum>();
        if (size.index > 0)
            call.fail(EINVAL);
        size.type = V4L2_FRMSIZE_TYPE_DISCRETE;
        size.discrete = {width, height};
        call.reply(size);
        return true;
    }
    case static_cast<unsigned>(VIDIOC_ENUM_FRAMEINTERVALS): {
        auto rate = call.argument<v4l2_frmivalenum>();
        if (rate.index > 0)
            call.fail(EINVAL);
        rate.type = V4L2_FRMIVAL_TYPE_DISCRETE;
        rate.discrete = {1, 30};
        call.reply(rate);
        return true;
    }
    case static_cast<unsigned>(VIDIOC_G_PARM):
    case static_cast<unsigned>(VIDIOC_S_PARM): {
        auto parameters = call.argument<v4l2_streamparm>();
        parameters.parm.capture.capability = V4L2_CAP_TIMEPERFRAME;
        parameters.parm.capture.timeperframe = {1, 30};
        call.reply(parameters);
        return true;
    }
    case static_cast<unsigned>(VIDIOC_G_FMT):
    case static_cast<unsigned>(VIDIOC_TRY_FMT):
    case static_cast<unsigned>(VIDIOC_S_FMT):
        setFormat(call);
        return true;
    default:
        return false;
    }
}

void VirtualCamera::setFormat(Call& call) const
{
    auto format = call.argument<v4l2_format>();
    if (format.type != V4L2_BUF_TYPE_VIDEO_CAPTURE)
        return call.fail(EINVAL);
    if (conduct_ == CameraConduct::busy && call.request == static_cast<unsigned>(VIDIOC_S_FMT))
        return call.fail(EBUSY);
    auto& picture = format.fmt.pix;
    picture = {};
    picture.width = width;
    picture.height = height;
    picture.field = V4L2_FIELD_NONE;
    picture.pixelformat = model_.makesJpeg ? V4L2_PIX_FMT_MJPEG : V4L2_PIX_FMT_YUYV;
    picture.bytesperline = model_.makesJpeg ? 0 : 2 * width;
    picture.sizeimage = model_.makesJpeg ? static_cast<unsigned>(slot) : 2 * width * height;
    picture.colorspace = model_.makesJpeg ? V4L2_COLORSPACE_JPEG : V4L2_COLORSPACE_SRGB;
    call.reply(format);
}

bool VirtualCamera::answerStreaming(Call& call)
{
    switch (call.request) {
    case static_cast<unsigned>(VIDIOC_REQBUFS): {
        auto request = call.argument<v4l2_requestbuffers>();
        if (request.memory != V4L2_MEMORY_MMAP)
            call.fail(EINVAL);
        request.count = std::min(request.count, slotCount);
        request.capabilities = V4L2_BUF_CAP_SUPPORTS_MMAP;
        queued_.clear();
        call.reply(request);
        return true;
    }
    case static_cast<unsigned>(VIDIOC_QUERYBUF):
    case static_cast<unsigned>(VIDIOC_QBUF): {
        auto buffer = call.argument<v4l2_buffer>();
        buffer.length = slot;
        buffer.m.offset = static_cast<unsigned>(buffer.index * slot);
        buffer.flags |= V4L2_BUF_FLAG_TIMESTAMP_MONOTONIC;
        if (call.request == static_cast<unsigned>(VIDIOC_QBUF))
            queued_ += static_cast<char>(buffer.index);
        call.reply(buffer);
        return true;
    }
    case static_cast<unsigned>(VIDIOC_DQBUF):
        dequeue(call);
        return true;
    case static_cast<unsigned>(VIDIOC_STREAMON):
    case static_cast<unsigned>(VIDIOC_STREAMOFF):
        isStreaming_ = call.request == static_cast<unsigned>(VIDIOC_STREAMON);
        if (!isStreaming_)
            queued_.clear();
        return true;
    default:
        return false;
    }
}

void VirtualCamera::dequeue(Call& call)
{
    auto buffer = call.argument<v4l2_buffer>();
    if (queued_.empty() || !isStreaming_)
        return call.fail(EAGAIN);
    std::this_thread::sleep_for(interval);
    using namespace std::chrono;
    const auto taken = duration_cast<microseconds>(steady_clock::now().time_since_epoch() - backlog_.load());
    if (conduct_ == CameraConduct::isUnplugged)
        return call.fail(ENODEV);
    buffer.index = static_cast<unsigned char>(queued_.front());
    queued_.erase(0, 1);
    const auto bytes = picture(pictures_ + 1);
    const bool isBroken = conduct_ == CameraConduct::neverDelivers;
    buffer.m.offset = static_cast<unsigned>(buffer.index * slot);
    if (pwrite(memory_, bytes.data(), bytes.size(), buffer.m.offset) < 0)
        return call.fail(EIO);
    buffer.bytesused = isBroken ? 0 : static_cast<unsigned>(bytes.size());
    buffer.length = slot;
    buffer.sequence = pictures_;
    buffer.field = V4L2_FIELD_NONE;
    buffer.flags = V4L2_BUF_FLAG_DONE | V4L2_BUF_FLAG_TIMESTAMP_MONOTONIC | (isBroken ? V4L2_BUF_FLAG_ERROR : 0U);
    buffer.timestamp = {taken.count() / 1000000, taken.count() % 1000000};
    ++pictures_;
    call.reply(buffer);
}

} // namespace kestrovan::rigs
