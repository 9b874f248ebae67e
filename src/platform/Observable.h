#pragma once

#include <functional>
#include <list>
#include <memory>
#include <utility>

namespace kestrovan {

/// Ends a registration when it goes out of scope. Movable; an empty one ends nothing.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> end) : end_(std::move(end)) {}
    Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept
    {
        if (this != &other) {
            reset();
            end_ = std::exchange(other.end_, nullptr);
        }
        return *this;
    }
    ~Subscription() { reset(); }

    void reset()
    {
        if (const auto end = std::exchange(end_, nullptr))
            end();
    }
    explicit operator bool() const { return end_ != nullptr; }

private:
    std::function<void()> end_;
};

/// A list of callbacks of one thread, called in the order of their registration. A callback may end any
/// registration, its own too, while the list is being called.
template <class... Args>
class Signal {
public:
    using Callback = std::function<void(Args...)>;

    [[nodiscard]] Subscription subscribe(Callback callback)
    {
        const auto entry = std::make_shared<Callback>(std::move(callback));
        entries_->push_back(entry);
        return Subscription([entries = std::weak_ptr(entries_), entry] {
            if (const auto list = entries.lock())
                list->remove(entry);
            *entry = nullptr;
        });
    }

    void tell(Args... args) const
    {
        const auto snapshot = *entries_;
        for (const auto& entry : snapshot)
            if (const auto callback = *entry)
                callback(args...);
    }

private:
    std::shared_ptr<std::list<std::shared_ptr<Callback>>> entries_ =
        std::make_shared<std::list<std::shared_ptr<Callback>>>();
};

} // namespace kestrovan
