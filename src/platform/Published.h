#pragma once

#include "platform/Observable.h"

#include <string>

namespace kestrovan {

/// An object whose fields others follow. It announces a change *before* the write, on the thread that writes;
/// an observer that wants the new values reads them on a later turn of the main queue.
class Observable {
public:
    Observable() = default;
    Observable(const Observable&) = delete;
    Observable& operator=(const Observable&) = delete;
    virtual ~Observable() = default;

    [[nodiscard]] Subscription subscribe(std::function<void()> observer)
    {
        return changes_.subscribe(std::move(observer));
    }
    void announceChange() const { changes_.tell(); }

private:
    Signal<> changes_;
};

/// A field of an Observable: assigning it announces, then writes.
template <class T>
class Published {
public:
    Published(const Observable& owner, T initial) : owner_(owner), value_(std::move(initial)) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    Published& operator=(T value)
    {
        owner_.announceChange();
        value_ = std::move(value);
        return *this;
    }

    const T& get() const { return value_; }
    operator const T&() const { return value_; } // NOLINT(google-explicit-constructor): reads like the field it is
    const T* operator->() const { return &value_; }

private:
    const Observable& owner_;
    T value_;
};

} // namespace kestrovan
