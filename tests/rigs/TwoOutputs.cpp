#include "rigs/TwoOutputs.h"

#include <fstream>

namespace kestrovan::rigs {
namespace {

// The driver "dummy" has outputs, but no hardware; mice and keyboards of the machine are left alone.
constexpr const char* configuration = R"(
Section "ServerFlags"
  Option "AutoAddDevices" "false"
  Option "AutoAddGPU" "false"
EndSection
Section "Device"
  Identifier "memory"
  Driver "dummy"
  VideoRam 64000
EndSection
Section "Monitor"
  Identifier "nobody looks at"
  HorizSync 5.0-1000.0
  VertRefresh 5.0-200.0
  Modeline "1920x1080" 23.53 1920 1952 2040 2072 1080 1106 1108 1135
EndSection
Section "Screen"
  Identifier "all"
  Device "memory"
  Monitor "nobody looks at"
  DefaultDepth 24
  SubSection "Display"
    Depth 24
    Modes "1920x1080"
    Virtual 3840 1080
  EndSubSection
EndSection
)";

std::string mode(const Screen& screen)
{
    return std::to_string(screen.frame.width) + "x" + std::to_string(screen.frame.height);
}

} // namespace

TwoOutputs::TwoOutputs(Size first, Size second)
    : screens_{Screen{"DUMMY0", {0, 0, first.width, first.height}},
               Screen{"DUMMY1", {first.width, 0, second.width, second.height}}}
{
    const auto file = (folder_.path() / "xorg.conf").string();
    std::ofstream(file) << configuration;
    display_ = std::make_unique<PrivateDisplay>(
        std::vector<std::string>{"Xorg", "-config", file, "-novtswitch", "-sharevts", "-logfile", "/dev/null"});
    for (std::size_t index = 0; isReady() && index < screens_.size(); ++index) {
        run({"xrandr", "--addmode", screens_.at(index).name, mode(screens_.at(index))});
        plug(index);
    }
}

void TwoOutputs::plug(std::size_t index) const
{
    const auto& screen = screens_.at(index);
    run({"xrandr", "--output", screen.name, "--mode", mode(screen), "--pos", std::to_string(screen.frame.x) + "x0"});
}

void TwoOutputs::unplug(std::size_t index) const
{
    run({"xrandr", "--output", screens_.at(index).name, "--off"});
}

} // namespace kestrovan::rigs
