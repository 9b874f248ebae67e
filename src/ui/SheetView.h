#pragma once

#include "parts/GuardView.h"
#include "ui/Sheets.h"

#include <QtQmlIntegration>

namespace kestrovan {

/// What every sheet of the main window has: whether it is shown, where it lies among the others, and an end.
class SheetView : public kestrovan::GuardView {
    Q_OBJECT
    QML_NAMED_ELEMENT(SheetLogic)
    QML_UNCREATABLE("What the sheets have in common")
    Q_PROPERTY(bool isShown READ isShown NOTIFY changed)
    Q_PROPERTY(int layer READ layer NOTIFY changed)
    Q_PROPERTY(bool isInFront READ isInFront NOTIFY changed)
    Q_PROPERTY(QString closeLabel READ closeLabel NOTIFY changed)

public:
    bool isShown() const { return sheets_.isShown(sheet_); }
    int layer() const { return sheets_.layer(sheet_); }
    bool isInFront() const { return sheets_.isInFront(sheet_); }
    QString closeLabel() const { return text(L10nKey::close); }

    Q_INVOKABLE void close() { sheets_.dismiss(sheet_); }

protected:
    SheetView(AppState& appState, MainQueue& mainQueue, Sheets& sheets, Sheets::Sheet sheet)
        : GuardView(appState, mainQueue), sheets_(sheets), sheet_(sheet),
          sheetsFollower_(sheets, mainQueue, [this] { guardHasChanged(); })
    {}

private:
    Sheets& sheets_;
    const Sheets::Sheet sheet_;
    ChangeFollower sheetsFollower_;
};

} // namespace kestrovan
