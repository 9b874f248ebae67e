#include "platform/linux/JsonSettingsStore.h"

#include "platform/Diagnostics.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/XdgFolders.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <ctime>
#include <string>
#include <system_error>
#include <utility>

namespace kestrovan {

namespace {

using std::filesystem::path;

struct Content {
    std::string bytes;
    std::string damage; ///< why there are none; empty if all is well
};

std::string describe(int error)
{
    return std::generic_category().message(error);
}

Content readOpened(int file)
{
    struct stat status {};
    if (fstat(file, &status) != 0)
        return {{}, describe(errno)};
    if (!S_ISREG(status.st_mode))
        return {{}, "it is not a file"};
    std::string bytes;
    std::array<char, 65536> chunk{};
    for (;;) {
        const auto got = ::read(file, chunk.data(), chunk.size());
        if (got == 0)
            return {std::move(bytes), {}};
        if (got < 0 && errno != EINTR)
            return {{}, describe(errno)};
        bytes.append(chunk.data(), got > 0 ? static_cast<std::size_t>(got) : 0);
        if (bytes.size() > SettingsDocument::sizeLimit)
            return {{}, "it is too large"};
    }
}

// None if there is no file, which is no damage.
std::optional<Content> readFile(const path& file)
{
    // Not blocking, for a pipe in the file's place must not hold up the start.
    const Descriptor opened(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!opened)
        return errno == ENOENT || errno == ENOTDIR ? std::nullopt : std::optional(Content{{}, describe(errno)});
    return readOpened(opened.get());
}

path freeNameFor(const path& damaged)
{
    const auto now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    std::array<char, 32> stamp{};
    (void)std::strftime(stamp.data(), stamp.size(), ".damaged-%Y%m%dT%H%M%SZ", &utc);
    const auto base = damaged.string() + stamp.data();
    auto name = base;
    std::error_code ignored;
    for (int n = 2; std::filesystem::exists(std::filesystem::symlink_status(name, ignored)); ++n)
        name = base + "-" + std::to_string(n);
    return name;
}

void setAside(const path& file, const std::string& damage, Diagnostics& diagnostics)
{
    const auto damaged = SettingsWriter::target(file);
    const auto aside = freeNameFor(damaged);
    std::error_code error;
    std::filesystem::rename(damaged, aside, error);
    const auto outcome = error ? "cannot be set aside (" + error.message() + ")" : "set aside as " + aside.string();
    diagnostics.line("Damaged settings file " + file.string() + " (" + damage + "): " + outcome +
                     "; every setting has its default");
}

SettingsDocument load(const path& file, Diagnostics& diagnostics)
{
    auto content = readFile(file);
    if (!content)
        return {};
    if (content->damage.empty()) {
        if (auto document = parseSettings(content->bytes))
            return std::move(*document);
        content->damage = content->bytes.empty() ? "it is empty" : "it is not a JSON object";
    }
    setAside(file, content->damage, diagnostics);
    return {};
}

} // namespace

JsonSettingsStore::JsonSettingsStore(path file, Diagnostics& diagnostics)
    : document_(load(file, diagnostics)), writer_(std::move(file), diagnostics)
{}

std::optional<SettingsValue> JsonSettingsStore::value(const std::string& key) const
{
    return document_.value(key);
}

void JsonSettingsStore::setValue(const std::string& key, SettingsValue value)
{
    if (document_.set(key, value))
        writer_.write(document_.serialize());
}

void JsonSettingsStore::removeValue(const std::string& key)
{
    if (document_.remove(key))
        writer_.write(document_.serialize());
}

std::optional<path> JsonSettingsStore::defaultPath()
{
    const auto config = xdgFolders::config();
    return config ? std::optional(*config / "kestrovan" / "settings.json") : std::nullopt;
}

} // namespace kestrovan
