#pragma once

#include "parts/GuardView.h"

#include <QtQmlIntegration>

namespace kestrovan {

/// What a screen reader says by itself: that the guard does something else now, or that the PIN was wrong. Not each
/// second of a countdown.
class Announcement : public kestrovan::GuardView {
    Q_OBJECT
    QML_NAMED_ELEMENT(AnnouncementLogic)
    QML_UNCREATABLE("Made by C++ for the view of the same name")
    Q_PROPERTY(QString words READ words NOTIFY due)

public:
    Announcement(AppState& appState, MainQueue& mainQueue);

    QString words() const { return words_; } ///< the last that were due; empty before

Q_SIGNALS:
    void due();

private:
    /// What is worth a word if it changes.
    struct Situation {
        bool isArming = false;
        bool isArmed = false;
        std::optional<AlarmReason> alarm;

        bool operator==(const Situation&) const = default;
    };

    Situation situation() const;
    void guardHasChanged() override;
    QString pinComplaint() const;
    void announce(const QString& words);

    Situation lastSituation_;
    std::int64_t lastFailures_;
    QString words_;
};

} // namespace kestrovan
