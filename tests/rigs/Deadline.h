#pragma once

#include <chrono>
#include <thread>

namespace kestrovan::rigs {

using namespace std::chrono_literals;

/// Waits for something that happens elsewhere; false if it does not within `deadline`.
template <class Condition>
bool waitUntil(Condition condition, std::chrono::milliseconds deadline = 20s)
{
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(2ms);
    }
    return true;
}

/// How long `action` takes the caller.
template <class Action>
std::chrono::milliseconds timeOf(Action action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
}

} // namespace kestrovan::rigs
