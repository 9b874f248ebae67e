#include "rigs/Program.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrovan::rigs {

Program::Program(std::vector<std::string> command, bool quiet)
{
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (auto& word : command)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    if (quiet)
        for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
            posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_WRONLY, 0);
    if (posix_spawnp(&pid_, arguments.front(), &files, nullptr, arguments.data(), environ) != 0)
        pid_ = -1;
    posix_spawn_file_actions_destroy(&files);
}

Program::~Program()
{
    if (!isRunning())
        return;
    kill(pid_, SIGKILL);
    wait();
}

bool Program::isRunning()
{
    if (pid_ > 0 && waitpid(pid_, &status_, WNOHANG) == pid_)
        pid_ = -1;
    return pid_ > 0;
}

int Program::wait()
{
    if (pid_ > 0)
        waitpid(pid_, &status_, 0);
    pid_ = -1;
    return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1;
}

} // namespace kestrovan::rigs
