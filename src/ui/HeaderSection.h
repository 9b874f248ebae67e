#pragma once

#include "parts/GuardView.h"
#include "ui/Sheets.h"

#include <QtQmlIntegration>

namespace kestrovan {

/// The top row of the main window: the program's name, the language switch, and the ways to About and Settings.
class HeaderSection : public kestrovan::GuardView {
    Q_OBJECT
    QML_NAMED_ELEMENT(HeaderSectionLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(QString appName READ appName NOTIFY changed)
    Q_PROPERTY(QString appSubtitle READ appSubtitle NOTIFY changed)
    Q_PROPERTY(QString languageLabel READ languageLabel NOTIFY changed)
    Q_PROPERTY(QString languageHelp READ languageHelp NOTIFY changed)
    Q_PROPERTY(QString aboutHelp READ aboutHelp NOTIFY changed)
    Q_PROPERTY(QString settingsHelp READ settingsHelp NOTIFY changed)

public:
    HeaderSection(AppState& appState, MainQueue& mainQueue, Sheets& sheets)
        : GuardView(appState, mainQueue), sheets_(sheets)
    {}

    QString appName() const { return text(L10nKey::appName); }
    QString appSubtitle() const { return text(L10nKey::appSubtitle); }
    QString languageLabel() const;
    QString languageHelp() const;
    QString aboutHelp() const { return text(L10nKey::aboutSectionTitle); }
    QString settingsHelp() const { return text(L10nKey::settingsTitle); }

    Q_INVOKABLE void switchLanguage();
    Q_INVOKABLE void showAbout() { sheets_.show(Sheets::Sheet::about); }
    Q_INVOKABLE void showSettings() { sheets_.show(Sheets::Sheet::settings); }

private:
    bool isEnglish() const { return language() == AppLanguage::english; }

    Sheets& sheets_;
};

} // namespace kestrovan
