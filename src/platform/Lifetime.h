#pragma once

#include <memory>
#include <utility>

namespace kestrovan {

/// The one way in which something that waits (a timer, a posted task, a callback slot) holds its owner weakly:
/// the owner has a Lifetime as its last member and hands out callbacks wrapped by guard(), which do nothing once
/// the owner is gone. Owner and callback live on the same thread; a timer of another thread is ended by its handle.
class Lifetime {
public:
    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;
    ~Lifetime() = default;

    template <class Function>
    auto guard(Function function) const
    {
        return [alive = std::weak_ptr<const bool>(token_), function = std::move(function)](auto&&... args) {
            if (!alive.expired())
                function(std::forward<decltype(args)>(args)...);
        };
    }

    /// For callbacks that must do something else when the owner is gone (an answer that has a value, say).
    std::weak_ptr<const bool> watch() const { return token_; }

private:
    std::shared_ptr<const bool> token_ = std::make_shared<const bool>(true);
};

} // namespace kestrovan
