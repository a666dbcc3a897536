#pragma once

#include <QtCore/QTimeZone>
#include <QtWidgets/QDateTimeEdit>

#include <optional>

/// A field for a moment, said by the clocks of any zone.
///
/// A moment that nobody changes stays what it was, to its last fraction of a second, which the field does not show, and
/// also in the hour that clocks pass twice. What is typed is read as a whole, in the form shown, also without seconds
/// or time; what is no date is marked, changes nothing and stays to be mended. Main thread only.
namespace plotix {

class MomentEdit : public QDateTimeEdit {
    Q_OBJECT
public:
    /// What a day that is picked in the calendar, or typed without a time, means.
    enum class Day {
        SameTime,   ///< the time of day stays
        Beginning,  ///< its first moment
        End         ///< its last one
    };

    /// Seconds since 1970-01-01 UTC, by the user's clocks.
    MomentEdit(double moment, Day day, QWidget* parent = nullptr);

    double moment() const;  ///< the one before, while `problem` says something
    void setMoment(double seconds);
    void sayBy(const QTimeZone& zone);  ///< the moment stays; an invalid zone is the user's

    const QString& problem() const { return m_problem; }  ///< of the text, for people; empty: it is understood
    void tellProblem();                                   ///< beside the field

    void stepBy(int steps) override;

signals:
    void textTaken();  ///< it was typed; the moment, or the problem, may be another one

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    QString textFromDateTime(const QDateTime& dateTime) const override;
    QValidator::State validate(QString& text, int& position) const override;

private:
    QDateTime clockTime(double seconds) const;
    QString textFor(const QDateTime& moment) const;
    void takeDay(QDate date);
    void takeText(const QString& text);
    bool readText(const QString& text);
    std::optional<QDateTime> read(const QString& text, const QString& format) const;
    bool namesNoSuchDate(const QString& text) const;
    void endTyping();   ///< unless the text is not understood
    void dropTyping();  ///< shows the moment again
    void setProblem(const QString& problem);
    void selectPartAtCaret();

    Day m_day;
    QTimeZone m_zone;
    double m_moment;
    bool m_isTyping = false;
    QDateTime m_beforeTyping;
    QString m_problem;
};

}  // namespace plotix
