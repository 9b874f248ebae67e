#include "rigs/PrivateDisplay.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <utility>

namespace kestrovan::rigs {
namespace {

// The server writes the number that it has chosen as soon as it takes connections.
std::string readDisplayNumber(int descriptor)
{
    constexpr int deadline = 30'000;
    std::string number;
    pollfd watched{descriptor, POLLIN, 0};
    while (poll(&watched, 1, deadline) > 0) {
        char character = 0;
        if (read(descriptor, &character, 1) != 1 || character == '\n')
            break;
        number += character;
    }
    return number;
}

} // namespace

PrivateDisplay::PrivateDisplay(std::vector<std::string> server)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        return;
    for (const auto& word : {std::string("-displayfd"), std::to_string(ends[1]), std::string("-nolisten"),
                             std::string("tcp"), std::string("-noreset")})
        server.push_back(word);
    server_ = std::make_unique<Program>(std::move(server));
    close(ends[1]);
    if (const auto number = readDisplayNumber(ends[0]); !number.empty())
        name_ = ":" + number;
    close(ends[0]);
    setenv("DISPLAY", name_.c_str(), 1);
}

} // namespace kestrovan::rigs
