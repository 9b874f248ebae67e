#include "platform/linux/ProcLid.h"

#include "platform/linux/SmallFile.h"

#include <dirent.h>

#include <memory>

namespace kestrovan {

std::optional<bool> readProcLid(const std::filesystem::path& root)
{
    const auto folder = root / "acpi/button/lid";
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(::opendir(folder.c_str()), ::closedir);
    std::optional<bool> closed;
    while (const auto* entry = directory ? ::readdir(directory.get()) : nullptr) { // NOLINT(concurrency-mt-unsafe)
        if (entry->d_name[0] == '.')
            continue;
        const auto state = readSmallFile(::dirfd(directory.get()), std::string(entry->d_name) + "/state").value_or("");
        if (state.ends_with("closed"))
            return true;
        if (state.ends_with("open"))
            closed = false;
    }
    return closed;
}

} // namespace kestrovan
