#include "platform/linux/DurableFile.h"

#include "platform/linux/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <vector>

namespace kestrovan::durableFile {

namespace {

using std::filesystem::path;

std::string describe(int error)
{
    return std::generic_category().message(error);
}

bool writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return false;
        bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return true;
}

// Some file systems have nothing to flush and say so.
bool flush(int descriptor)
{
    return fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
}

} // namespace

bool createFolders(const path& folder)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(folder, ignored))
        return true;
    const auto parent = folder.parent_path();
    if (!parent.empty() && parent != folder && !createFolders(parent))
        return false;
    constexpr mode_t userOnly = 0700;
    return mkdir(folder.c_str(), userOnly) == 0 || std::filesystem::is_directory(folder, ignored);
}

namespace {

// `fill` writes the content to a descriptor; false, with errno set, if it cannot.
template <class Fill>
std::optional<std::string> replace(const path& path, Fill fill)
{
    // In the same folder, for a rename works only within one file system.
    const auto folder = path.parent_path();
    auto temporary = (folder / ".kestrovan-XXXXXX").string();
    const Descriptor file(mkostemp(temporary.data(), O_CLOEXEC)); // of mode 0600
    if (!file)
        return describe(errno);
    if (!fill(file.get()) || !flush(file.get()) || rename(temporary.c_str(), path.c_str()) != 0) {
        const int error = errno;
        unlink(temporary.c_str());
        return describe(error);
    }
    // The rename has happened; if only its durability fails, the file is nevertheless wholly there.
    const Descriptor parent(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (parent)
        fsync(parent.get());
    return std::nullopt;
}

bool pour(int from, int to, std::uint64_t limit)
{
    std::vector<char> buffer(std::size_t{1} << 16);
    for (std::uint64_t poured = 0; poured <= limit;) {
        const auto length = ::read(from, buffer.data(), buffer.size());
        if (length == 0)
            return true;
        if (length < 0 && errno != EINTR)
            return false;
        const auto bytes = static_cast<std::size_t>(std::max<ssize_t>(length, 0));
        if (!writeAll(to, {buffer.data(), bytes}))
            return false;
        poured += bytes;
    }
    errno = EFBIG;
    return false;
}

} // namespace

std::optional<std::string> write(const path& path, std::string_view bytes)
{
    return replace(path, [bytes](int file) { return writeAll(file, bytes); });
}

std::optional<std::string> copy(const path& from, const path& to, std::uint64_t limit)
{
    const Descriptor source(open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!source || fstat(source.get(), &status) != 0)
        return describe(errno);
    if (!S_ISREG(status.st_mode))
        return "Not a regular file";
    if (static_cast<std::uint64_t>(status.st_size) > limit)
        return describe(EFBIG);
    return replace(to, [&](int file) { return pour(source.get(), file, limit); });
}

} // namespace kestrovan::durableFile
