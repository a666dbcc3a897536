#pragma once

#include <QtCore/QTimeZone>
#include <QtWidgets/QDateTimeEdit>

/// A field for a moment, said by the clocks of any zone.
///
/// A moment that nobody changes stays what it was, to its last fraction of a second, which the field does not show, and
/// also in the hour that clocks pass twice. Main thread only.
namespace plotix {

class MomentEdit : public QDateTimeEdit {
    Q_OBJECT
public:
    /// What a day that is picked in the calendar means.
    enum class Day {
        SameTime,   ///< the time of day stays
        Beginning,  ///< its first moment
        End         ///< its last one
    };

    /// Seconds since 1970-01-01 UTC, by the user's clocks.
    MomentEdit(double moment, Day day, QWidget* parent = nullptr);

    double moment() const;
    void setMoment(double seconds);
    void sayBy(const QTimeZone& zone);  ///< the moment stays; an invalid zone is the user's

private:
    QDateTime clockTime(double seconds) const;

    Day m_day;
    QTimeZone m_zone;
    double m_moment;
};

}  // namespace plotix
