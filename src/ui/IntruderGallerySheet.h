#pragma once

#include "ui/IntruderRecordsModel.h"
#include "ui/SheetView.h"
#include "ui/ThumbnailLoader.h"

#include <QtQmlIntegration>

namespace kestrovan {

/// The sheet with the photos that the camera took.
class IntruderGallerySheet : public kestrovan::SheetView {
    Q_OBJECT
    QML_NAMED_ELEMENT(IntruderGallerySheetLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString description READ description NOTIFY changed)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY changed)
    Q_PROPERTY(QString emptyLabel READ emptyLabel NOTIFY changed)
    Q_PROPERTY(kestrovan::IntruderRecordsModel* records READ records CONSTANT)
    Q_PROPERTY(kestrovan::ThumbnailLoader* thumbnails READ thumbnails CONSTANT)
    Q_PROPERTY(QString folderLabel READ folderLabel NOTIFY changed)
    Q_PROPERTY(QString clearLabel READ clearLabel NOTIFY changed)

public:
    IntruderGallerySheet(AppState& appState, const Platform& platform, Sheets& sheets);

    QString title() const { return text(L10nKey::intruderGalleryTitle); }
    QString description() const { return text(L10nKey::intruderGalleryDesc); }
    bool isEmpty() const { return appState().intruderRecords->empty(); }
    QString emptyLabel() const { return text(L10nKey::intruderLogsEmpty); }
    IntruderRecordsModel* records() { return &records_; }
    ThumbnailLoader* thumbnails() { return &thumbnails_; }
    QString folderLabel() const { return text(L10nKey::openIntruderFolder); }
    QString clearLabel() const { return text(L10nKey::clearIntruderLogs); }

    Q_INVOKABLE void openFolder() { appState().openIntruderFolder(); }
    Q_INVOKABLE void clear() { appState().clearIntruderRecords(); }

private:
    void guardHasChanged() override;

    IntruderRecordsModel records_;
    ThumbnailLoader thumbnails_;
};

} // namespace kestrovan
