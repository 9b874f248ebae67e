#include "core/AppState.h"
#include "core/SettingsKeys.h"
#include "platform/PicturePicker.h"

namespace kestrovan {

namespace {

using std::filesystem::path;

constexpr const char* folderName = "Kestrovan";
constexpr std::string_view copyPrefix = "custom_bg.";
constexpr std::uint64_t largestPicture = std::uint64_t{256} << 20;

PicturePicker::Texts pickerTexts(AppLanguage lang)
{
    if (lang == AppLanguage::english)
        return {"Choose Fullscreen Image", "Select Image"};
    return {"Pilih Gambar Layar Penuh", "Pilih Gambar"};
}

std::string copyName(const path& source)
{
    const auto extension = source.extension().string(); // with its dot, if there is one
    return std::string(copyPrefix) + (extension.empty() ? extension : extension.substr(1));
}

} // namespace

void AppState::selectCustomImageFromPicker()
{
    if (const auto chosen = platform_.picturePicker.choose(pickerTexts(currentLanguage)))
        saveCustomImage(*chosen);
}

void AppState::saveCustomImage(const path& source)
{
    const auto data = platform_.files.dataFolder();
    if (!data)
        return;
    const auto folder = *data / folderName;
    const auto copy = folder / copyName(source);
    platform_.files.createFolders(folder);
    const auto error = platform_.files.copy(source, copy, largestPicture);
    if (error)
        platform_.diagnostics.line("Failed to copy custom image: " + *error);
    customImagePath = (error ? source : copy).string();
    store(settingsKey::customImagePath, *customImagePath.get());
}

void AppState::removeCustomImage()
{
    if (const auto& image = customImagePath.get(); image && isOwnCopy(*image))
        platform_.files.remove(*image);
    customImagePath = std::nullopt;
    platform_.settings.removeValue(settingsKey::customImagePath);
}

// After a failed copy the path names the user's own file.
bool AppState::isOwnCopy(const path& image) const
{
    const auto data = platform_.files.dataFolder();
    return data && image.parent_path() == *data / folderName && image.filename().string().starts_with(copyPrefix);
}

} // namespace kestrovan
