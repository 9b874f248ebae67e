#include "ui/IntruderRecordsModel.h"

#include <QDateTime>

#include <algorithm>

namespace kestrovan {

namespace {

QString localTime(IntruderRecord::Moment moment)
{
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(moment.time_since_epoch()).count();
    return QDateTime::fromMSecsSinceEpoch(milliseconds).toString("dd/MM HH:mm:ss");
}

bool endsWith(const std::vector<IntruderRecord>& records, const std::vector<IntruderRecord>& end)
{
    return records.size() >= end.size() && std::equal(end.rbegin(), end.rend(), records.rbegin());
}

} // namespace

void IntruderRecordsModel::show(const std::vector<IntruderRecord>& records)
{
    const auto isSameRecord = [](const auto& one, const auto& other) { return one.id == other.id; };
    if (std::equal(records.begin(), records.end(), records_.begin(), records_.end(), isSameRecord))
        return;
    if (!endsWith(records, records_)) {
        beginResetModel();
        records_ = records;
        endResetModel();
        return;
    }
    beginInsertRows({}, 0, static_cast<int>(records.size() - records_.size()) - 1);
    records_ = records;
    endInsertRows();
}

int IntruderRecordsModel::rowCount(const QModelIndex& /*parent*/) const
{
    return static_cast<int>(records_.size());
}

QVariant IntruderRecordsModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto& record = records_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case imagePathRole:
        return QString::fromStdString(record.imagePath);
    case triggerReasonRole:
        return QString::fromStdString(record.triggerReason);
    case timeRole:
        return localTime(record.timestamp);
    default:
        return {};
    }
}

QHash<int, QByteArray> IntruderRecordsModel::roleNames() const
{
    return {{imagePathRole, "imagePath"}, {triggerReasonRole, "triggerReason"}, {timeRole, "time"}};
}

} // namespace kestrovan
