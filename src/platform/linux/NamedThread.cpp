#include "platform/linux/NamedThread.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <system_error>
#include <utility>

namespace kestrovan {

std::optional<std::thread> startNamedThread(const std::string& label, int nice, Task body)
{
    constexpr std::size_t kernelLimit = 15;
    const auto name = label.substr(label.rfind('.') + 1).substr(0, kernelLimit);
    try {
        return std::thread([name, nice, body = std::move(body)] {
            pthread_setname_np(pthread_self(), name.c_str());
            // Of a thread, not of the process: Linux keeps the nice value by thread.
            const auto self = static_cast<id_t>(gettid());
            if (getpriority(PRIO_PROCESS, self) < nice)
                setpriority(PRIO_PROCESS, self, nice);
            body();
        });
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

} // namespace kestrovan
