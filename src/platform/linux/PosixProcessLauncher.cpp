#include "platform/linux/PosixProcessLauncher.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <csignal>

extern "C" { // glibc 2.36 has forgotten it
#include <sys/pidfd.h>
}

namespace kestrovan {

namespace {

using CommandLine = std::vector<std::string>;

constexpr const char* caffeinate = "/usr/bin/caffeinate";

struct InhibitedByFlag {
    const char* flag;
    const char* what;
};
// Display and user activity are idleness to logind; disks sleep with the machine.
constexpr std::array inhibitedByFlags{InhibitedByFlag{"-d", "idle"}, InhibitedByFlag{"-u", "idle"},
                                      InhibitedByFlag{"-i", "idle"}, InhibitedByFlag{"-m", "sleep:handle-lid-switch"}};

CommandLine keepAwake(const CommandLine& flags)
{
    std::string what;
    for (const auto& [flag, inhibited] : inhibitedByFlags)
        if (std::ranges::find(flags, flag) != flags.end() && what.find(inhibited) == std::string::npos)
            what += (what.empty() ? "" : ":") + std::string(inhibited);
    return {"systemd-inhibit", "--what=" + (what.empty() ? "idle" : what),
            "--who=Kestrovan", "--why=The guard keeps the machine awake",
            "--mode=block",    "cat"};
}

/// What a child starts with, and what it does not inherit.
class SpawnSettings {
public:
    explicit SpawnSettings(int standardInput)
    {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_adddup2(&actions_, standardInput, STDIN_FILENO);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);

        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings()
    {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&actions_);
    }

    /// The new process's number, -1 if the program cannot be started.
    pid_t spawn(CommandLine& command) const
    {
        std::vector<char*> arguments;
        std::ranges::transform(command, std::back_inserter(arguments), [](auto& text) { return text.data(); });
        arguments.push_back(nullptr);
        pid_t pid = -1;
        const int error = posix_spawnp(&pid, arguments.front(), &actions_, &attributes_, arguments.data(), ::environ);
        return error == 0 ? pid : -1;
    }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

void killNow(pid_t pid)
{
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, 0);
}

/// Starts `command` on a leash.
std::optional<ChildReaper::StartedProcess> start(CommandLine command)
{
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    const Descriptor input(ends[0]);
    ChildReaper::StartedProcess process{.handle = {}, .leash = Descriptor(ends[1])};
    const pid_t pid = SpawnSettings(input.get()).spawn(command);
    if (pid < 0)
        return std::nullopt;
    process.handle = Descriptor(::pidfd_open(pid, 0));
    if (process.handle)
        return process;
    killNow(pid);
    return std::nullopt;
}

} // namespace

class PosixProcessLauncher::Process final : public ChildProcess {
public:
    Process(std::shared_ptr<ChildReaper> reaper, std::shared_ptr<ChildReaper::Child> child)
        : reaper_(std::move(reaper)), child_(std::move(child))
    {}
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process() override { terminate(); }

    bool isRunning() const override { return child_->isRunning && !child_->isToEnd; }
    void terminate() override
    {
        if (!child_->isToEnd)
            reaper_->end(*child_);
    }

private:
    std::shared_ptr<ChildReaper> reaper_;
    std::shared_ptr<ChildReaper::Child> child_;
};

std::unique_ptr<ChildProcess> PosixProcessLauncher::launch(const std::string& executable,
                                                           const std::vector<std::string>& arguments)
{
    CommandLine command{executable};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const bool isKept = executable == caffeinate;
    if (isKept)
        command = keepAwake(arguments);

    auto process = reaper_->isReady() ? start(command) : std::nullopt;
    if (!process)
        return nullptr;
    auto child = std::make_shared<ChildReaper::Child>();
    child->process = std::move(*process);
    if (isKept)
        child->startAgain = [command] { return start(command); };
    reaper_->add(child);
    return std::make_unique<Process>(reaper_, child);
}

} // namespace kestrovan
