#pragma once

#include "platform/MainQueue.h"

#include <map>
#include <optional>

namespace kestrovan {

/// What a thread has to do later, for its loop to run when it is due. One thread.
class Agenda {
public:
    using Clock = std::chrono::steady_clock;

    /// It cannot be taken back: guard it.
    void after(Clock::duration delay, Task task) { tasks_.emplace(Clock::now() + delay, std::move(task)); }

    /// Runs one that is due; false if none is.
    bool runDue()
    {
        if (tasks_.empty() || tasks_.begin()->first > Clock::now())
            return false;
        const auto due = tasks_.extract(tasks_.begin());
        due.mapped()();
        return true;
    }

    /// When the next one is due; none if there is none.
    std::optional<Clock::time_point> next() const
    {
        return tasks_.empty() ? std::nullopt : std::optional(tasks_.begin()->first);
    }

private:
    std::multimap<Clock::time_point, Task> tasks_;
};

} // namespace kestrovan
