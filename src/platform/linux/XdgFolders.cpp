#include "platform/linux/XdgFolders.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace kestrovan::xdgFolders {

namespace {

using std::filesystem::path;

std::optional<path> variable(const char* name)
{
    const char* value = std::getenv(name);
    return value && *value == '/' ? std::optional<path>(value) : std::nullopt;
}

std::optional<path> variableOrBelowHome(const char* name, const char* fallback)
{
    if (auto set = variable(name))
        return set;
    const auto base = home();
    return base ? std::optional<path>(*base / fallback) : std::nullopt;
}

std::string_view withoutLeadingBlanks(std::string_view text)
{
    return text.substr(std::min(text.find_first_not_of(" \t"), text.size()));
}

// The text between the quotes, backslashes undone; none if it is not quoted.
std::optional<std::string> unquoted(std::string_view text)
{
    if (!text.starts_with('"'))
        return std::nullopt;
    std::string content;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '"')
            return content;
        if (text[i] == '\\' && i + 1 < text.size())
            ++i;
        content += text[i];
    }
    return std::nullopt;
}

// The folder that `XDG_PICTURES_DIR="..."` names, if that is what the line is.
std::optional<path> picturesEntry(std::string_view line, const path& home)
{
    constexpr std::string_view key = "XDG_PICTURES_DIR";
    line = withoutLeadingBlanks(line);
    if (!line.starts_with(key))
        return std::nullopt;
    line = withoutLeadingBlanks(line.substr(key.size()));
    if (!line.starts_with('='))
        return std::nullopt;
    const auto value = unquoted(withoutLeadingBlanks(line.substr(1)));
    if (!value)
        return std::nullopt;
    if (*value == "$HOME" || value->starts_with("$HOME/"))
        return path(home.string() + value->substr(5));
    return value->starts_with('/') ? std::optional<path>(*value) : std::nullopt;
}

path comparable(const path& folder)
{
    const auto normal = folder.lexically_normal();
    return normal.has_filename() ? normal : normal.parent_path();
}

} // namespace

std::optional<path> home()
{
    return variable("HOME");
}

std::optional<path> config()
{
    return variableOrBelowHome("XDG_CONFIG_HOME", ".config");
}

std::optional<path> data()
{
    return variableOrBelowHome("XDG_DATA_HOME", ".local/share");
}

std::optional<path> pictures()
{
    const auto base = home();
    const auto settings = config();
    if (!base || !settings)
        return std::nullopt;
    std::ostringstream content;
    content << std::ifstream(*settings / "user-dirs.dirs").rdbuf();
    return picturesOf(content.str(), *base);
}

std::optional<path> picturesOf(std::string_view userDirs, const path& home)
{
    path folder = home / "Pictures";
    while (!userDirs.empty()) {
        const auto end = std::min(userDirs.find('\n'), userDirs.size());
        if (auto named = picturesEntry(userDirs.substr(0, end), home))
            folder = std::move(*named);
        userDirs.remove_prefix(std::min(end + 1, userDirs.size()));
    }
    return comparable(folder) == comparable(home) ? std::nullopt : std::optional(folder);
}

} // namespace kestrovan::xdgFolders
