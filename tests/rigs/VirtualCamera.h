#pragma once

#include <umockdev.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <string>

struct v4l2_buffer;
struct v4l2_format;

namespace kestrovan::rigs {

/// What a virtual device makes of its callers.
enum class CameraConduct {
    works,
    busy,          ///< another program has it
    neverDelivers, ///< every picture is broken
    isNotACamera,  ///< carries metadata of pictures, not pictures
    isUnplugged,   ///< the node is still there, the device is not
};

/// A video device below the level of V4L2: a device node, system calls and mapped memory, without a kernel behind
/// them. It makes thirty pictures a second, 640x480, either JPEG files that bear their number or raw YUYV, black on
/// the left and white on the right. The program must run under umockdev-wrapper, with its symbols exported.
class VirtualCamera {
public:
    enum class Port { builtIn, removable, software };
    struct Model {
        bool makesJpeg = true;
        CameraConduct conduct = CameraConduct::works;
        Port port = Port::builtIn;
        std::string name = "Virtual Camera";
    };

    static constexpr unsigned width = 640;
    static constexpr unsigned height = 480;

    /// Adds /dev/video<number> to a mock machine.
    VirtualCamera(UMockdevTestbed* machine, int number, Model model);
    VirtualCamera(const VirtualCamera&) = delete;
    VirtualCamera& operator=(const VirtualCamera&) = delete;
    ~VirtualCamera();

    void setConduct(CameraConduct conduct) { conduct_ = conduct; }
    /// How old pictures are when they are handed over, as after a stall of the machine.
    void setBacklog(std::chrono::milliseconds age) { backlog_ = age; }

    unsigned picturesMade() const { return pictures_; }
    bool isStreaming() const { return isStreaming_; }
    bool isOpen() const; ///< by this process

    /// The JPEG file that picture `number` is, and back: 0 if it is none.
    static std::string jpeg(unsigned number);
    static unsigned numberOf(const std::string& jpeg);

private:
    struct Call;

    static gboolean handle(UMockdevIoctlBase* base, UMockdevIoctlClient* client, gpointer self);
    void answer(Call& call);
    bool answerQuestion(Call& call) const;
    bool answerStreaming(Call& call);
    void setFormat(Call& call) const;
    void dequeue(Call& call);
    std::string picture(unsigned number) const;

    const Model model_;
    std::string node_; ///< where the mock keeps it on the disk
    int memory_ = -1;  ///< what callers map
    UMockdevIoctlBase* handler_ = nullptr;
    std::atomic<CameraConduct> conduct_;
    std::atomic<std::chrono::milliseconds> backlog_{};
    std::atomic<unsigned> pictures_ = 0;
    std::atomic<bool> isStreaming_ = false;
    std::string queued_; ///< the indices of the buffers to be filled, in order, one a character
    std::mutex calls_;   ///< the mock answers calls on a thread of its own
};

} // namespace kestrovan::rigs
