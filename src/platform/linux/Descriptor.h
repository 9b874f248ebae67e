#pragma once

#include <unistd.h>

#include <utility>

namespace kestrovan {

/// Owns a file descriptor and closes it; an empty one (-1) owns nothing.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        if (this != &other) {
            reset();
            number_ = std::exchange(other.number_, -1);
        }
        return *this;
    }
    ~Descriptor() { reset(); }

    void reset()
    {
        if (const int number = std::exchange(number_, -1); number >= 0)
            ::close(number);
    }
    int get() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }

private:
    int number_ = -1;
};

} // namespace kestrovan
