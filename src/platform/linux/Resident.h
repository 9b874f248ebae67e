#pragma once

#include <memory>
#include <utility>

namespace kestrovan {

/// Holds, on another thread, an object that lives on the thread of a connection (BusConnection, PulseConnection): it is
/// made there soon after the construction of this handle and destroyed there soon after its end; neither waits.
/// Movable; an empty one holds nothing.
template <class Connection, class T>
class Resident {
public:
    Resident() = default;

    /// `make` runs on the connection's thread, with what the connection hands to its tasks, and returns a
    /// std::unique_ptr<T>.
    template <class Make>
    Resident(Connection& connection, Make make) : connection_(&connection), home_(std::make_shared<Home>())
    {
        connection_->post([home = home_, make = std::move(make)](auto& place) { *home = make(place); });
    }
    Resident(Resident&& other) noexcept
        : connection_(std::exchange(other.connection_, nullptr)), home_(std::move(other.home_))
    {}
    Resident& operator=(Resident&& other) noexcept
    {
        if (this != &other) {
            reset();
            connection_ = std::exchange(other.connection_, nullptr);
            home_ = std::move(other.home_);
        }
        return *this;
    }
    ~Resident() { reset(); }

    void reset()
    {
        if (home_)
            connection_->post([home = std::exchange(home_, nullptr)](auto&) { home->reset(); });
    }
    explicit operator bool() const { return home_ != nullptr; }

    /// Runs `task` with the object on its thread, if there is one.
    template <class Task>
    void perform(Task task) const
    {
        if (home_)
            connection_->post([home = home_, task = std::move(task)](auto&) {
                if (*home)
                    task(**home);
            });
    }

private:
    using Home = std::unique_ptr<T>;

    Connection* connection_ = nullptr;
    std::shared_ptr<Home> home_; ///< what is in it belongs to the connection's thread
};

} // namespace kestrovan
