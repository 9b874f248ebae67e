#include "platform/linux/SettingsDocument.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace kestrovan;

// Whatever lies in the settings file is either no document, or one whose values survive being written again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto document = parseSettings({reinterpret_cast<const char*>(data), size});
    if (!document)
        return 0;
    document->set("own", SettingsData{std::string(reinterpret_cast<const char*>(data), size)});
    const auto again = parseSettings(document->serialize());
    if (!again)
        std::abort();
    for (const char* key : {"own", "a", "b", "Kestrovan_PIN", "Kestrovan_PinEnabled", "Kestrovan_IntruderRecords"})
        if (again->value(key) != document->value(key))
            std::abort();
    return 0;
}
