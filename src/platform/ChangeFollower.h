#pragma once

#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Published.h"

namespace kestrovan {

/// Calls back after an Observable has changed: once per turn of the main queue, whatever number of its fields changed
/// in it, and after they were written. Main thread.
class ChangeFollower {
public:
    ChangeFollower(Observable& observed, MainQueue& mainQueue, Task changed)
        : mainQueue_(mainQueue), changed_(std::move(changed)), subscription_(observed.subscribe([this] { postOnce(); }))
    {}
    ChangeFollower(const ChangeFollower&) = delete;
    ChangeFollower& operator=(const ChangeFollower&) = delete;
    ~ChangeFollower() = default;

private:
    void postOnce()
    {
        if (std::exchange(isPosted_, true))
            return;
        mainQueue_.post(lifetime_.guard([this] {
            isPosted_ = false;
            changed_();
        }));
    }

    MainQueue& mainQueue_;
    const Task changed_;
    bool isPosted_ = false;
    Subscription subscription_;
    Lifetime lifetime_;
};

} // namespace kestrovan
