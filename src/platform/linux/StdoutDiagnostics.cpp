#include "platform/linux/StdoutDiagnostics.h"

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <ctime>
#include <string>

namespace kestrovan {

namespace {

// Keeps a write to a closed pipe from ending the program, whatever the program has decided about SIGPIPE: the signal
// is held back on this thread, and one that the write has caused is taken away.
class NoBrokenPipeSignal {
public:
    NoBrokenPipeSignal()
    {
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        alreadyPending_ = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
    }
    NoBrokenPipeSignal(const NoBrokenPipeSignal&) = delete;
    NoBrokenPipeSignal& operator=(const NoBrokenPipeSignal&) = delete;
    ~NoBrokenPipeSignal()
    {
        const timespec atOnce{};
        if (!alreadyPending_)
            while (sigtimedwait(&pipe_, nullptr, &atOnce) < 0 && errno == EINTR) {
            }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }

private:
    sigset_t pipe_{};
    sigset_t before_{};
    bool alreadyPending_ = false;
};

bool hasRoom(int descriptor)
{
    pollfd poller{descriptor, POLLOUT, 0};
    return poll(&poller, 1, 0) == 1 && (poller.revents & (POLLERR | POLLHUP | POLLNVAL)) == 0;
}

} // namespace

StdoutDiagnostics::StdoutDiagnostics() : StdoutDiagnostics(STDOUT_FILENO) {}

StdoutDiagnostics::StdoutDiagnostics(int descriptor)
    : descriptor_(fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1))
{}

void StdoutDiagnostics::line(std::string_view text)
{
    // Up to PIPE_BUF bytes a pipe takes at once or not at all, and one that polls as writable has room for as many.
    std::string bytes(text.substr(0, PIPE_BUF - 1));
    std::ranges::replace_if(
        bytes, [](unsigned char c) { return c < 0x20 || c == 0x7f; }, ' ');
    bytes += '\n';
    const std::lock_guard lock(mutex_);
    const NoBrokenPipeSignal noSignal;
    write(bytes);
}

void StdoutDiagnostics::write(std::string_view bytes) const
{
    while (!bytes.empty() && hasRoom(descriptor_.get())) {
        const auto written = ::write(descriptor_.get(), bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return;
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
}

} // namespace kestrovan
