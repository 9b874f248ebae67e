#pragma once

#include "parts/GuardView.h"
#include "ui/Sheets.h"

#include <QtQmlIntegration>

namespace kestrovan {

/// The settings of the intruder camera, and the ways to its photos.
class CameraSettings : public kestrovan::GuardView {
    Q_OBJECT
    QML_NAMED_ELEMENT(CameraSettingsLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString description READ description NOTIFY changed)
    Q_PROPERTY(QString captureLabel READ captureLabel NOTIFY changed)
    Q_PROPERTY(bool isCaptureOn READ isCaptureOn NOTIFY changed)
    Q_PROPERTY(QString delayTitle READ delayTitle NOTIFY changed)
    Q_PROPERTY(QString delayDescription READ delayDescription NOTIFY changed)
    Q_PROPERTY(QStringList delays READ delays NOTIFY changed)
    Q_PROPERTY(int delayIndex READ delayIndex NOTIFY changed)
    Q_PROPERTY(QString photosLabel READ photosLabel NOTIFY changed)
    Q_PROPERTY(QString folderLabel READ folderLabel NOTIFY changed)

public:
    CameraSettings(AppState& appState, MainQueue& mainQueue, Sheets& sheets)
        : GuardView(appState, mainQueue), sheets_(sheets)
    {}

    QString title() const { return text(L10nKey::cameraSectionTitle); }
    QString description() const { return text(L10nKey::cameraCaptureDesc); }
    QString captureLabel() const { return text(L10nKey::cameraCaptureToggle); }
    bool isCaptureOn() const { return appState().isCameraCaptureEnabled; }
    QString delayTitle() const { return text(L10nKey::cameraDelayTitle); }
    QString delayDescription() const { return text(L10nKey::cameraDelayDesc); }
    QStringList delays() const;
    int delayIndex() const; ///< by whole seconds; -1 for a delay that is not among the choices
    QString photosLabel() const;
    QString folderLabel() const { return text(L10nKey::openIntruderFolder); }

    Q_INVOKABLE void setCapture(bool on) { appState().toggleCameraCapture(on); }
    Q_INVOKABLE void chooseDelay(int index);
    Q_INVOKABLE void showPhotos() { sheets_.show(Sheets::Sheet::intruderGallery); }
    Q_INVOKABLE void openFolder() { appState().openIntruderFolder(); }

private:
    Sheets& sheets_;
};

} // namespace kestrovan
