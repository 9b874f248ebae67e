#pragma once

#include <linux/input.h>
#include <umockdev.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace kestrovan::rigs {

/// A laptop's lid and sleep key: devices that logind finds and hears, and the file in which the kernel tells of the
/// lid. The program must run under umockdev-wrapper and private_system.sh.
class MockLid {
public:
    MockLid() : testbed_(umockdev_testbed_new())
    {
        char* root = umockdev_testbed_get_root_dir(testbed_);
        root_ = root;
        g_free(root);
        isClosed() = false;
        const std::ofstream running("/run/udev/control"); // as if there were a udevd
        add(lidSwitch);
        add(sleepKey);
        std::filesystem::create_directories(procFile().parent_path());
        writeProcFile(false);
        std::filesystem::create_directories(root_ / "sys/power");
        std::ofstream(root_ / "sys/power/state") << "freeze mem disk\n";
        std::ofstream(root_ / "sys/power/mem_sleep") << "s2idle [deep]\n";
    }
    MockLid(const MockLid&) = delete;
    MockLid& operator=(const MockLid&) = delete;
    ~MockLid() { g_object_unref(testbed_); }

    /// Where other devices of the same laptop go.
    UMockdevTestbed* testbed() const { return testbed_; }
    std::filesystem::path procRoot() const { return root_ / "proc"; }

    void set(bool closed)
    {
        isClosed() = closed;
        writeProcFile(closed);
        send(lidSwitch, closed ? 1 : 0);
    }
    void pressSleepKey()
    {
        send(sleepKey, 1);
        send(sleepKey, 0);
    }

private:
    struct Input {
        int number; ///< of /dev/input/event…
        const char* name;
        const char* kind; ///< as udev classifies it
        std::uint16_t type, code;

        std::string path() const { return "/dev/input/event" + std::to_string(number); }
        std::string device() const { return "13:" + std::to_string(64 + number); }
    };
    static constexpr Input lidSwitch{0, "Lid Switch", "ID_INPUT_SWITCH", EV_SW, SW_LID};
    static constexpr Input sleepKey{1, "Sleep Button", "ID_INPUT_KEY", EV_KEY, KEY_SLEEP};

    /// For the ioctl handler, which runs on a thread of the mock's.
    static std::atomic<bool>& isClosed()
    {
        static std::atomic<bool> closed = false;
        return closed;
    }

    std::filesystem::path procFile() const { return procRoot() / "acpi/button/lid/LID0/state"; }
    void writeProcFile(bool closed) const
    {
        std::ofstream(procFile()) << "state:      " << (closed ? "closed" : "open") << "\n";
    }

    void send(const Input& input, int value)
    {
        std::array<input_event, 2> events{};
        events[0].type = input.type;
        events[0].code = input.code;
        events[0].value = value;
        events[1].type = EV_SYN;
        const int device = umockdev_testbed_get_dev_fd(testbed_, input.path().c_str());
        [[maybe_unused]] const auto written = ::write(device, events.data(), sizeof events);
    }

    void add(const Input& input)
    {
        const auto number = std::to_string(input.number);
        const auto parent = "P: /devices/LNXSYSTM:00/PNP0C0D:0" + number + "/input/input" + number;
        const auto properties = std::string("E: ID_INPUT=1\nE: ") + input.kind + "=1\n";
        const auto description = parent + "\nE: SUBSYSTEM=input\nE: NAME=\"" + input.name + "\"\n" + properties +
                                 "A: name=" + input.name + "\n\n" + parent + "/event" + number + "\nN: input/event" +
                                 number + "\nE: DEVNAME=" + input.path() +
                                 "\nE: SUBSYSTEM=input\nE: MAJOR=13\nE: MINOR=" + std::to_string(64 + input.number) +
                                 "\nE: TAGS=:power-switch:\nE: CURRENT_TAGS=:power-switch:\n" + properties +
                                 "A: dev=" + input.device() + "\n\n";
        umockdev_testbed_add_from_string(testbed_, description.c_str(), nullptr);
        UMockdevIoctlBase* handler = umockdev_ioctl_base_new();
        g_signal_connect(handler, "handle-ioctl", G_CALLBACK(answer),
                         const_cast<Input*>(&input)); // NOLINT(cppcoreguidelines-pro-type-const-cast)
        umockdev_testbed_attach_ioctl(testbed_, input.path().c_str(), handler, nullptr);
        writeUdevRecord(input);
    }

    /// What udevd would have written: logind looks for its switches by this tag.
    void writeUdevRecord(const Input& input) const
    {
        const std::ofstream tagged("/run/udev/tags/power-switch/c" + input.device());
        std::filesystem::create_directories(root_ / "run/udev/data");
        for (const auto& folder : {root_ / "run/udev/data", std::filesystem::path("/run/udev/data")})
            std::ofstream(folder / ("c" + input.device()))
                << "I:1000000\nE:ID_INPUT=1\nE:" << input.kind << "=1\nG:power-switch\nQ:power-switch\nV:1\n";
    }

    static gboolean answer(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer which)
    {
        const auto& input = *static_cast<const Input*>(which);
        const unsigned long request = umockdev_ioctl_client_get_request(client);
        std::array<std::uint8_t, 512> bytes{};
        const auto size = std::min<std::size_t>(_IOC_SIZE(request), bytes.size());
        const unsigned number = _IOC_NR(request);
        const auto set = [&bytes](unsigned bit) { bytes.at(bit / 8) |= static_cast<std::uint8_t>(1U << bit % 8); };
        if (number == _IOC_NR(EVIOCGSW(0)) && input.type == EV_SW && isClosed())
            set(SW_LID);
        else if (number == _IOC_NR(EVIOCGBIT(0, 0)))
            set(input.type);
        else if (number == _IOC_NR(EVIOCGBIT(input.type, 0)))
            set(input.code);
        else if (number == _IOC_NR(EVIOCGNAME(0)))
            std::strcpy(reinterpret_cast<char*>(bytes.data()), input.name);
        const bool isRead = (_IOC_DIR(request) & _IOC_READ) != 0 && size > 0;
        if (UMockdevIoctlData* data =
                isRead ? umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, size, nullptr)
                       : nullptr) {
            umockdev_ioctl_data_update(data, 0, bytes.data(), static_cast<gint>(size));
            umockdev_ioctl_data_unref(data);
        }
        umockdev_ioctl_client_complete(client, isRead ? static_cast<glong>(size) : 0, 0);
        return TRUE;
    }

    UMockdevTestbed* testbed_;
    std::filesystem::path root_;
};

} // namespace kestrovan::rigs
