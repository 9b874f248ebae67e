#pragma once

#include "core/AppState.h"
#include "l10n/L10n.h"
#include "platform/ChangeFollower.h"

#include <QObject>
#include <QString>
#include <QtQmlIntegration>

namespace kestrovan {

/// The C++ half of a view: it follows the guard and tells its QML half, which binds to its properties, to look again,
/// at most once in each turn of the main queue. Main thread.
class GuardView : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

Q_SIGNALS:
    /// The notification of every property that follows the guard.
    void changed();

protected:
    GuardView(AppState& appState, MainQueue& mainQueue)
        : appState_(appState), follower_(appState, mainQueue, [this] { guardHasChanged(); })
    {}

    AppState& appState() const { return appState_; }
    AppLanguage language() const { return appState_.currentLanguage; }
    QString text(const L10nKey& key) const { return QString::fromStdString(L10n::text(key, language())); }

    virtual void guardHasChanged() { Q_EMIT changed(); }

private:
    AppState& appState_;
    ChangeFollower follower_;
};

} // namespace kestrovan
