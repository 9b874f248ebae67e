#include "platform/linux/PosixFiles.h"

#include "platform/linux/DurableFile.h"
#include "platform/linux/XdgFolders.h"

#include <system_error>

namespace kestrovan {

bool PosixFiles::exists(const std::filesystem::path& path) const
{
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

void PosixFiles::createFolders(const std::filesystem::path& folder)
{
    durableFile::createFolders(folder);
}

std::optional<std::string> PosixFiles::writeAtomically(const std::filesystem::path& path, const std::string& bytes)
{
    return durableFile::write(path, bytes);
}

std::optional<std::string> PosixFiles::copy(const std::filesystem::path& from, const std::filesystem::path& to,
                                            std::uint64_t limit)
{
    return durableFile::copy(from, to, limit);
}

void PosixFiles::remove(const std::filesystem::path& path)
{
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}

std::optional<std::filesystem::path> PosixFiles::picturesFolder() const
{
    return xdgFolders::pictures();
}

std::optional<std::filesystem::path> PosixFiles::dataFolder() const
{
    return xdgFolders::data();
}

} // namespace kestrovan
