#include "rigs/SoundServer.h"

#include "rigs/Deadline.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace kestrovan::rigs {
namespace {

std::string outputOf(const std::string& command)
{
    std::string output;
    auto* pipe = popen((command + " 2>/dev/null").c_str(), "r"); // NOLINT: a command of the test's own
    std::array<char, 4096> buffer{};
    while (pipe && fgets(buffer.data(), buffer.size(), pipe))
        output += buffer.data();
    if (pipe)
        pclose(pipe);
    return output;
}

bool succeeds(std::vector<std::string> command)
{
    return run(std::move(command)) == 0;
}

// The line that follows the one with `heading` and begins with `field`, in the listing of pactl.
std::string fieldOf(const std::string& listing, const std::string& heading, const std::string& field)
{
    const auto section = listing.find(heading);
    const auto start = section == std::string::npos ? section : listing.find(field, section);
    return start == std::string::npos ? "" : listing.substr(start, listing.find('\n', start) - start);
}

} // namespace

SoundServer::SoundServer(Kind kind) : kind_(kind), socket_((folder_.path() / "pulse/native").string())
{
    const auto in = [this](const char* name) { return (folder_.path() / name).string(); };
    std::filesystem::create_directories(folder_.path() / "pulse");
    const std::array<std::array<std::string, 2>, 8> environment{{
        {"XDG_RUNTIME_DIR", in("")},
        {"XDG_CONFIG_HOME", in("config")},
        {"XDG_STATE_HOME", in("state")},
        {"PULSE_RUNTIME_PATH", in("pulse")},
        {"PULSE_STATE_PATH", in("state")},
        {"PULSE_COOKIE", in("cookie")},
        {"PULSE_SERVER", "unix:" + socket_},
        {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + in("bus")},
    }};
    for (const auto& [name, value] : environment)
        setenv(name.c_str(), value.c_str(), 1);
    const auto settings = folder_.path() / "config/pipewire/pipewire.conf.d";
    std::filesystem::create_directories(settings);
    std::ofstream(settings / "rate.conf") << "context.properties = { default.clock.rate = 44100 }\n";
}

bool SoundServer::start()
{
    return kind_ == Kind::pulseAudio ? startPulseAudio() : startPipeWire();
}

bool SoundServer::startPulseAudio()
{
    launch({"pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "--realtime=no",
            "--high-priority=no", "-L", "module-native-protocol-unix socket=" + socket_ + " auth-anonymous=1", "-L",
            "module-null-sink sink_name=first rate=44100", "-L", "module-null-sink sink_name=second rate=44100"});
    return waitUntil([] { return pactl("get-default-sink") == "first\n"; });
}

// Each of them gives up if what it needs is not there yet when it starts.
bool SoundServer::startPipeWire()
{
    launch({"dbus-daemon", "--session", "--nofork", "--nopidfile",
            "--address=unix:path=" + (folder_.path() / "bus").string()});
    launch({"pipewire"});
    if (!waitUntil([this] { return std::filesystem::exists(folder_.path() / "bus"); }) || !waitUntil([] {
            return succeeds({"timeout", "5", "pw-cli", "info", "0"});
        }))
        return false;
    launch({"wireplumber"});
    launch({"pipewire-pulse"});
    if (!waitUntil([] { return succeeds({"timeout", "5", "pactl", "info"}); }))
        return false;
    addSink("first");
    addSink("second");
    return waitUntil([] {
        pactl("set-default-sink first");
        return pactl("get-default-sink") == "first\n";
    });
}

void SoundServer::launch(std::vector<std::string> command)
{
    programs_.push_back(std::make_unique<Program>(std::move(command)));
}

void SoundServer::kill()
{
    programs_.clear();
    for (const char* trace : {"pulse/native", "bus", "pipewire-0", "pipewire-0.lock", "pipewire-0-manager"})
        std::filesystem::remove(folder_.path() / trace);
}

void SoundServer::signal(int number)
{
    for (const auto& program : programs_)
        ::kill(program->pid(), number);
}

std::string SoundServer::pactl(const std::string& arguments)
{
    return outputOf("LC_ALL=C timeout 5 pactl " + arguments);
}

void SoundServer::addSink(const std::string& name)
{
    pactl("load-module module-null-sink rate=44100 sink_name=" + name);
}

void SoundServer::removeSink(const std::string& name)
{
    // "12<tab>module-null-sink<tab>rate=44100 sink_name=first"
    const auto modules = pactl("list short modules");
    const auto argument = modules.find("sink_name=" + name);
    if (argument == std::string::npos)
        return;
    const auto line = modules.rfind('\n', argument);
    pactl("unload-module " + std::to_string(std::atoi(&modules[line == std::string::npos ? 0 : line + 1])));
}

bool SoundServer::isLoud(const std::string& sink)
{
    const auto listing = pactl("list sinks");
    const auto volume = fieldOf(listing, "Name: " + sink + "\n", "Volume:");
    return fieldOf(listing, "Name: " + sink + "\n", "Mute:") == "Mute: no" &&
           volume.find("front-left: 65536 ") != std::string::npos &&
           volume.find("front-right: 65536 ") != std::string::npos;
}

int SoundServer::inputs()
{
    const auto listing = pactl("list short sink-inputs");
    return static_cast<int>(std::ranges::count(listing, '\n'));
}

} // namespace kestrovan::rigs
