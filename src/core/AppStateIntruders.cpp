#include "core/AppState.h"
#include "core/SettingsKeys.h"

namespace kestrovan {

void AppState::addIntruderRecord(const std::filesystem::path& path, const std::string& reason)
{
    const auto now = std::chrono::floor<IntruderRecord::Moment::duration>(platform_.clock.now());
    auto records = intruderRecords.get();
    records.insert(records.begin(), {makeRecordId(), now, path.string(), reason});
    intruderRecords = std::move(records);
    saveIntruderRecords();
}

void AppState::clearIntruderRecords()
{
    intruderRecords = std::vector<IntruderRecord>();
    saveIntruderRecords();
}

void AppState::openIntruderFolder()
{
    const auto folder = cameraManager.intruderDirectory();
    platform_.files.createFolders(folder);
    platform_.workspace.revealFolder(folder);
}

void AppState::loadIntruderRecords()
{
    const auto stored = platform_.settings.read<SettingsData>(settingsKey::intruderRecords);
    if (!stored)
        return;
    auto records = decodeIntruderRecords(stored->bytes);
    if (!records)
        return;
    std::erase_if(*records, [this](const IntruderRecord& record) { return !platform_.files.exists(record.imagePath); });
    intruderRecords = std::move(*records);
}

void AppState::saveIntruderRecords()
{
    if (auto json = encodeIntruderRecords(intruderRecords))
        store(settingsKey::intruderRecords, SettingsData{std::move(*json)});
}

} // namespace kestrovan
