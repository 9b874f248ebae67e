#pragma once

#include "platform/Diagnostics.h"
#include "platform/linux/Descriptor.h"

#include <mutex>

namespace kestrovan {

/// Diagnostics on standard output (or another descriptor, of which it keeps a duplicate: should somebody close the
/// original, no line ever ends up in a file that got its number).
///
/// A line comes out whole, whatever other threads say; control characters in it become spaces, and what goes beyond
/// 4096 bytes is cut. A line that the reader has no room for is dropped, as is every line once the reader is gone.
class StdoutDiagnostics final : public Diagnostics {
public:
    StdoutDiagnostics();
    explicit StdoutDiagnostics(int descriptor);

    void line(std::string_view text) override;

private:
    void write(std::string_view bytes) const;

    Descriptor descriptor_;
    std::mutex mutex_;
};

} // namespace kestrovan
