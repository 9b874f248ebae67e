#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

/// Where the user's files go, by the environment variables and the defaults of the XDG base directory specification
/// and of xdg-user-dirs. Relative values are ignored, as the former demands. Any thread.
namespace kestrovan::xdgFolders {

/// None without a usable $HOME.
std::optional<std::filesystem::path> home();

/// $XDG_CONFIG_HOME, else ~/.config; none without a home.
std::optional<std::filesystem::path> config();

/// $XDG_DATA_HOME, else ~/.local/share; none without a home.
std::optional<std::filesystem::path> data();

/// XDG_PICTURES_DIR of user-dirs.dirs, else ~/Pictures; none without a home, or if the entry names the home itself,
/// which is how that file says that there is no such folder.
std::optional<std::filesystem::path> pictures();

/// The same, for the content of a user-dirs.dirs file.
std::optional<std::filesystem::path> picturesOf(std::string_view userDirs, const std::filesystem::path& home);

} // namespace kestrovan::xdgFolders
