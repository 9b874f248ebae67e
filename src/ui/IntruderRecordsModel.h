#pragma once

#include "core/IntruderRecord.h"

#include <QAbstractListModel>
#include <QtQmlIntegration>

namespace kestrovan {

/// The intruder log as the rows of a grid, newest first: `imagePath`, `triggerReason` and `time` of each record.
class IntruderRecordsModel : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS

public:
    /// A photo that was added moves the rows of the others, and touches nothing else of them.
    void show(const std::vector<IntruderRecord>& records);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    enum Role { imagePathRole = Qt::UserRole, triggerReasonRole, timeRole };

    std::vector<IntruderRecord> records_;
};

} // namespace kestrovan
