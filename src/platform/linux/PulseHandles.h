#pragma once

#include "platform/linux/Release.h"

#include <pulse/pulseaudio.h>

#include <memory>

namespace kestrovan::pulse {

using MainloopHandle = std::unique_ptr<pa_mainloop, Release<pa_mainloop_free>>;
using ProplistHandle = std::unique_ptr<pa_proplist, Release<pa_proplist_free>>;

inline void endContext(pa_context* context)
{
    pa_context_set_subscribe_callback(context, nullptr, nullptr);
    pa_context_disconnect(context);
    pa_context_unref(context);
}
/// Ends the connection with its object.
using ContextHandle = std::unique_ptr<pa_context, Release<endContext>>;

inline void endStream(pa_stream* stream)
{
    pa_stream_set_write_callback(stream, nullptr, nullptr);
    // One that the server has not made yet cannot be ended: the library keeps it for us until then.
    const auto end = [](pa_stream* made, void*) {
        if (pa_stream_get_state(made) == PA_STREAM_READY)
            pa_stream_disconnect(made);
    };
    pa_stream_set_state_callback(stream, pa_stream_get_state(stream) == PA_STREAM_CREATING ? +end : nullptr, nullptr);
    pa_stream_disconnect(stream);
    pa_stream_unref(stream);
}
/// Ends the stream, and the calls of its callbacks, with its object.
using StreamHandle = std::unique_ptr<pa_stream, Release<endStream>>;

inline void endOperation(pa_operation* operation)
{
    pa_operation_cancel(operation);
    pa_operation_unref(operation);
}
/// A request whose callback is not called any more once the object is gone.
using OperationHandle = std::unique_ptr<pa_operation, Release<endOperation>>;

/// Sends a request whose outcome is of no interest.
inline void send(pa_operation* operation)
{
    if (operation)
        pa_operation_unref(operation);
}

} // namespace kestrovan::pulse
