#pragma once

#include "parts/GuardView.h"
#include "ui/Sheets.h"
#include "ui/ShellActions.h"

#include <QColor>
#include <QtQmlIntegration>

namespace kestrovan {

/// The bottom row of the main window: the ways to the photos, to an update check and to the deterrent's preview, and
/// whether a PIN is asked for.
class FooterSection : public kestrovan::GuardView {
    Q_OBJECT
    QML_NAMED_ELEMENT(FooterSectionLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(QString galleryLabel READ galleryLabel NOTIFY changed)
    Q_PROPERTY(QColor galleryColor READ galleryColor NOTIFY changed)
    Q_PROPERTY(QString galleryHelp READ galleryHelp NOTIFY changed)
    Q_PROPERTY(QString updateLabel READ updateLabel CONSTANT)
    Q_PROPERTY(QString updateHelp READ updateHelp NOTIFY changed)
    Q_PROPERTY(QString previewLabel READ previewLabel NOTIFY changed)
    Q_PROPERTY(QString pinSymbol READ pinSymbol NOTIFY changed)
    Q_PROPERTY(QString pinLabel READ pinLabel NOTIFY changed)

public:
    FooterSection(AppState& appState, MainQueue& mainQueue, Sheets& sheets, const ShellActions& actions)
        : GuardView(appState, mainQueue), sheets_(sheets), actions_(actions)
    {}

    QString galleryLabel() const;
    QColor galleryColor() const;
    QString galleryHelp() const { return text(L10nKey::intruderGalleryTitle); }
    QString updateLabel() const { return "Update"; }
    QString updateHelp() const { return text(L10nKey::checkForUpdates); }
    QString previewLabel() const { return text(L10nKey::previewFullscreen); }
    QString pinSymbol() const { return appState().isPinEnabled ? "key.fill" : "key.slash"; }
    QString pinLabel() const { return text(appState().isPinEnabled ? L10nKey::pinActive : L10nKey::pinInactive); }

    Q_INVOKABLE void showGallery() { sheets_.show(Sheets::Sheet::intruderGallery); }
    Q_INVOKABLE void checkForUpdates() { appState().updateManager.checkForUpdates(false); }
    Q_INVOKABLE void previewDeterrent() { actions_.previewDeterrent(); }

private:
    Sheets& sheets_;
    const ShellActions& actions_;
};

} // namespace kestrovan
