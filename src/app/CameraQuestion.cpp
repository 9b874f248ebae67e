#include "app/CameraQuestion.h"

#include "core/AppState.h"

#include <QPushButton>

namespace kestrovan {

namespace {

struct Texts {
    const char* question;
    const char* explanation;
    const char* allow;
    const char* refuse;
};

constexpr Texts english{"May Kestrovan use the camera?",
                        "When the alarm sounds, it takes a photo of whoever is in front of the laptop. Photos stay in "
                        "your pictures folder and are sent to nobody.",
                        "Allow", "Don't Allow"};
constexpr Texts indonesian{"Bolehkah Kestrovan memakai kamera?",
                           "Saat alarm berbunyi, Kestrovan memotret orang di depan laptop. Foto tetap tersimpan di "
                           "folder gambar Anda dan tidak dikirim ke siapa pun.",
                           "Izinkan", "Jangan Izinkan"};

} // namespace

void CameraQuestion::ask(Answer answer)
{
    if (!appState_)
        return;
    answer_ = std::move(answer);
    dialog_ = std::make_unique<QMessageBox>();
    dialog_->setObjectName("cameraQuestion");
    dialog_->setWindowTitle("Kestrovan");
    dialog_->setModal(false);
    refuse_ = dialog_->addButton(QString(), QMessageBox::NoRole);
    allow_ = dialog_->addButton(QString(), QMessageBox::YesRole);
    dialog_->setEscapeButton(nullptr);
    QObject::connect(dialog_.get(), &QMessageBox::finished, dialog_.get(),
                     [this] { decide(dialog_->clickedButton()); });
    refresh();
}

void CameraQuestion::follow(AppState& appState, MainQueue& mainQueue)
{
    appState_ = &appState;
    follower_.emplace(appState, mainQueue, [this] { refresh(); });
}

void CameraQuestion::refresh()
{
    if (!dialog_)
        return;
    const auto& texts = appState_->currentLanguage == AppLanguage::english ? english : indonesian;
    dialog_->setText(texts.question);
    dialog_->setInformativeText(texts.explanation);
    allow_->setText(texts.allow);
    refuse_->setText(texts.refuse);
    dialog_->setVisible(!appState_->guardState->isAlarmTriggered());
}

void CameraQuestion::decide(const QAbstractButton* pressed)
{
    const auto answer = std::exchange(answer_, nullptr);
    dialog_.release()->deleteLater(); // which this very call comes from
    if (answer && (pressed == allow_ || pressed == refuse_))
        answer(pressed == allow_);
}

} // namespace kestrovan
