#include "rigs/RunningKestrovan.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>

namespace kestrovan::rigs {

RunningKestrovan::RunningKestrovan(const std::string& settings, std::vector<std::string> environment)
{
    if (!settings.empty()) {
        std::filesystem::create_directories(home_.path() / "config/kestrovan");
        std::ofstream(file("config/kestrovan/settings.json")) << settings;
    }
    program_ = std::make_unique<Program>(command(std::move(environment), file("output")), false);
}

std::vector<std::string> RunningKestrovan::command(std::vector<std::string> environment,
                                                   const std::string& output) const
{
    std::vector<std::string> words{"env"};
    std::ranges::move(environment, std::back_inserter(words));
    std::ranges::copy(std::array<std::string, 4>{"QT_QPA_PLATFORM=xcb", "HOME=" + home_.path().string(),
                                                 "XDG_CONFIG_HOME=" + file("config"), "XDG_DATA_HOME=" + file("data")},
                      std::back_inserter(words));
    std::ranges::copy(std::array<std::string, 5>{"sh", "-c", "exec \"$0\" > \"$1\" 2>&1", KESTROVAN_PROGRAM, output},
                      std::back_inserter(words));
    return words;
}

int RunningKestrovan::runAgain(const std::vector<std::string>& environment)
{
    Program second(command(environment, file("second-output")), false);
    return waitUntil([&] { return !second.isRunning(); }) ? second.wait() : -1;
}

int RunningKestrovan::waitForEnd()
{
    return waitUntil([this] { return !isRunning(); }) ? program_->wait() : -1;
}

std::vector<std::string> RunningKestrovan::lines() const
{
    std::vector<std::string> all;
    std::ifstream output(file("output"));
    for (std::string line; std::getline(output, line);)
        all.push_back(line);
    return all;
}

bool RunningKestrovan::waitForLine(const std::string& start) const
{
    return waitUntil([&] {
        const auto all = lines();
        return std::ranges::any_of(all, [&](const auto& line) { return line.starts_with(start); });
    });
}

bool RunningKestrovan::waitForWindow() const
{
    const bool isThere = waitUntil([] { return window() != 0; });
    if (!isThere)
        tellItsState();
    return isThere;
}

void RunningKestrovan::tellItsState() const
{
    std::cerr << "no window of the program, which has said:\n";
    for (const auto& line : lines())
        std::cerr << "    " << line << '\n';
    std::error_code ignored; // it may have ended
    for (const auto& thread :
         std::filesystem::directory_iterator("/proc/" + std::to_string(pid()) + "/task", ignored)) {
        for (const char* fact : {"comm", "wchan", "syscall"}) {
            std::string text;
            std::getline(std::ifstream(thread.path() / fact), text);
            std::cerr << text << ' ';
        }
        std::cerr << '\n';
    }
}

std::uint32_t RunningKestrovan::window()
{
    const std::unique_ptr<FILE, decltype([](FILE* pipe) { pclose(pipe); })> pipe(
        popen("xdotool search --onlyvisible --class '^kestrovan$' 2> /dev/null", "r"));
    std::uint32_t found = 0;
    return pipe && std::fscanf(pipe.get(), "%u", &found) == 1 ? found : 0;
}

} // namespace kestrovan::rigs
