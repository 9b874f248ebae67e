#pragma once

#include "ui/SheetView.h"

#include <QtQmlIntegration>

#include <memory>

namespace kestrovan {

/// The sheet that follows a check for updates, and offers what it found.
class UpdateModalSheet : public kestrovan::SheetView {
    Q_OBJECT
    QML_NAMED_ELEMENT(UpdateModalSheetLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(bool isChecking READ isChecking NOTIFY changed)
    Q_PROPERTY(bool isUpToDate READ isUpToDate NOTIFY changed)
    Q_PROPERTY(bool isUpdateAvailable READ isUpdateAvailable NOTIFY changed)
    Q_PROPERTY(bool isError READ isError NOTIFY changed)
    Q_PROPERTY(double spinnerTurn READ spinnerTurn NOTIFY spun)
    Q_PROPERTY(QString checkingLabel READ checkingLabel NOTIFY changed)
    Q_PROPERTY(QString currentVersion READ currentVersion NOTIFY changed)
    Q_PROPERTY(QString upToDateTitle READ upToDateTitle NOTIFY changed)
    Q_PROPERTY(QString upToDateDescription READ upToDateDescription NOTIFY changed)
    Q_PROPERTY(QString newVersion READ newVersion NOTIFY changed)
    Q_PROPERTY(QString notesTitle READ notesTitle NOTIFY changed)
    Q_PROPERTY(QString notes READ notes NOTIFY changed)
    Q_PROPERTY(QString downloadLabel READ downloadLabel NOTIFY changed)
    Q_PROPERTY(QString errorTitle READ errorTitle NOTIFY changed)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY changed)
    Q_PROPERTY(QString retryLabel READ retryLabel NOTIFY changed)

public:
    UpdateModalSheet(AppState& appState, MainQueue& mainQueue, Sheets& sheets)
        : SheetView(appState, mainQueue, sheets, Sheets::Sheet::update), mainQueue_(mainQueue)
    {}

    // What the sheet shows: one of these, or nothing while no check was made.
    bool isChecking() const { return status().isChecking(); }
    bool isUpToDate() const { return status().isUpToDate(); }
    bool isUpdateAvailable() const { return status().availableUpdate() != nullptr; }
    bool isError() const { return status().errorMessage() != nullptr; }

    double spinnerTurn() const { return spinnerTurn_; } ///< degrees, clockwise
    QString checkingLabel() const { return text(L10nKey::checkingForUpdates); }
    QString currentVersion() const;
    QString upToDateTitle() const { return text(L10nKey::upToDateTitle); }
    QString upToDateDescription() const { return text(L10nKey::upToDateDesc); }
    QString newVersion() const; ///< empty unless an update is available, like `notes`
    QString notesTitle() const { return text(L10nKey::updateNotesTitle); }
    QString notes() const;
    QString downloadLabel() const { return text(L10nKey::downloadUpdateNow); }
    QString errorTitle() const;
    QString errorMessage() const; ///< empty unless the check failed
    QString retryLabel() const { return text(L10nKey::checkForUpdates); }

    Q_INVOKABLE void download(); ///< by the user's browser
    Q_INVOKABLE void retry() { appState().updateManager.checkForUpdates(false); }

    /// Whether anything may move: false while nobody can see it.
    void setAnimated(bool animated);

Q_SIGNALS:
    void spun();

private:
    const UpdateCheckStatus& status() const { return appState().updateManager.updateStatus; }
    void guardHasChanged() override;
    void updateSpinner();

    MainQueue& mainQueue_;
    bool isAnimated_ = false;
    double spinnerTurn_ = 0;
    std::unique_ptr<Timer> spinner_;
};

} // namespace kestrovan
