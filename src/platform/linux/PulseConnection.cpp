#include "platform/linux/PulseConnection.h"

#include "platform/Diagnostics.h"
#include "platform/linux/NamedThread.h"
#include "platform/linux/PulseServer.h"

namespace kestrovan {

PulseConnection::PulseConnection(Diagnostics& diagnostics) : diagnostics_(diagnostics), loop_(pa_mainloop_new())
{
    if (loop_)
        thread_ = startNamedThread("kestrovan.sound", 0, [this] { run(); });
    if (!thread_)
        diagnostics_.line("Sound server unavailable: the system has no thread to give");
}

PulseConnection::~PulseConnection()
{
    if (!thread_)
        return;
    isEnding_ = true;
    wakeUp_.call();
    thread_->join();
}

void PulseConnection::post(std::function<void(PulseServer&)> task)
{
    if (!thread_)
        return;
    posted_.post(std::move(task));
    wakeUp_.call();
}

void PulseConnection::run()
{
    // The library's own pa_mainloop_wakeup() is forgotten when it comes between two turns.
    auto* api = pa_mainloop_get_api(loop_.get());
    const auto awake = [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void* wakeUp) {
        static_cast<WakeUp*>(wakeUp)->acknowledge();
    };
    api->io_new(api, wakeUp_.descriptor(), PA_IO_EVENT_INPUT, awake, &wakeUp_);

    PulseServer server(*loop_, diagnostics_);
    const auto runPosted = [&] {
        while (posted_.runOne(server)) {
        }
    };
    while (!isEnding_) {
        runPosted();
        server.turn();
    }
    runPosted();
}

} // namespace kestrovan
