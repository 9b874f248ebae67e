#include "rigs/HeadlessSway.h"

#include "rigs/Deadline.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>

namespace kestrovan::rigs {
namespace {

constexpr uid_t nobody = 65534;

std::filesystem::path makeFolder()
{
    auto pattern = (std::filesystem::temp_directory_path() / "kestrovan-sway-XXXXXX").string();
    std::filesystem::path folder = mkdtemp(pattern.data());
    if (geteuid() == 0 && chown(folder.c_str(), nobody, nobody) != 0)
        return {};
    return folder;
}

std::string withFolder(std::string text, const std::string& folder)
{
    constexpr std::string_view placeholder = "FOLDER";
    for (auto at = text.find(placeholder); at != std::string::npos; at = text.find(placeholder, at + folder.size()))
        text.replace(at, placeholder.size(), folder);
    return text;
}

} // namespace

HeadlessSway::HeadlessSway(std::string configuration) : folder_(makeFolder())
{
    start(std::move(configuration),
          {"-u", "WAYLAND_DISPLAY", "WLR_BACKENDS=headless", "WLR_HEADLESS_OUTPUTS=1", "WLR_LIBINPUT_NO_DEVICES=1"});
}

HeadlessSway::HeadlessSway(std::string configuration, int outputs, const HeadlessSway& host)
    : host_(&host), folder_(makeFolder())
{
    start(std::move(configuration), {"WAYLAND_DISPLAY=" + host.in("wayland-1"), "WLR_BACKENDS=wayland",
                                     "WLR_WL_OUTPUTS=" + std::to_string(outputs)});
}

void HeadlessSway::start(std::string configuration, const std::vector<std::string>& backend)
{
    std::ofstream(folder_ / "config") << withFolder(std::move(configuration), folder_.string());
    std::vector<std::string> command;
    if (geteuid() == 0)
        command = {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups", "--no-new-privs"};
    for (const auto* word : {"env", "-u", "DISPLAY"})
        command.emplace_back(word);
    command.insert(command.end(), backend.begin(), backend.end());
    for (const auto& word :
         {"XDG_RUNTIME_DIR=" + folder_.string(), "HOME=" + folder_.string(), "SWAYSOCK=" + in("ipc"),
          std::string("WLR_RENDERER=pixman"), std::string("sway"), std::string("--config"), in("config")})
        command.push_back(word);
    compositor_ = std::make_unique<Program>(std::move(command));
    isReady_ = waitForSockets();
    setenv("WAYLAND_DISPLAY", in("wayland-1").c_str(), 1);
}

HeadlessSway::~HeadlessSway()
{
    compositor_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

bool HeadlessSway::waitForSockets() const
{
    const auto areThere = [this] {
        return std::filesystem::exists(folder_ / "wayland-1") && std::filesystem::exists(folder_ / "ipc");
    };
    return waitUntil([&] { return areThere() || !compositor_->isRunning(); }) && areThere();
}

void HeadlessSway::command(const std::string& text) const
{
    run({"swaymsg", "--socket", in("ipc"), text});
}

void HeadlessSway::unplug(const std::string& output) const
{
    host_->command("[title=\"" + output + "\"] kill");
}

} // namespace kestrovan::rigs
