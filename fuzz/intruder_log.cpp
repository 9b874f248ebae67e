#include "core/IntruderRecord.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace kestrovan;

// Whatever is stored as the intruder log is either no log, or one that can be written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto records = decodeIntruderRecords({reinterpret_cast<const char*>(data), size});
    if (!records)
        return 0;
    const auto text = encodeIntruderRecords(*records);
    const auto again = text ? decodeIntruderRecords(*text) : std::nullopt;
    if (!again || again->size() != records->size())
        std::abort();
    for (std::size_t i = 0; i < records->size(); ++i)
        if ((*again)[i].id != (*records)[i].id || (*again)[i].imagePath != (*records)[i].imagePath ||
            (*again)[i].triggerReason != (*records)[i].triggerReason)
            std::abort();
    return 0;
}
