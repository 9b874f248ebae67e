#pragma once

namespace kestrovan {

/// What std::unique_ptr needs to own a C library's object that ends by `release(object)`.
template <auto release>
struct Release {
    template <class Handle>
    void operator()(Handle* handle) const
    {
        release(handle);
    }
};

} // namespace kestrovan
