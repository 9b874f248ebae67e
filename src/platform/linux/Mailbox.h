#pragma once

#include <deque>
#include <functional>
#include <mutex>

namespace kestrovan {

/// Tasks that any thread leaves for one thread, to be run there with something that only that thread may touch.
template <class Place>
class Mailbox {
public:
    using Task = std::function<void(Place& place)>;

    void post(Task task)
    {
        const std::scoped_lock lock(mutex_);
        posted_.push_back(std::move(task));
    }

    /// Runs the oldest one; false if there is none.
    bool runOne(Place& place)
    {
        Task task;
        {
            const std::scoped_lock lock(mutex_);
            if (posted_.empty())
                return false;
            task = std::move(posted_.front());
            posted_.pop_front();
        }
        task(place);
        return true;
    }

private:
    std::mutex mutex_; ///< held for moments only
    std::deque<Task> posted_;
};

} // namespace kestrovan
