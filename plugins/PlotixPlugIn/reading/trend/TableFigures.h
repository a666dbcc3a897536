#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtGui/QAction>

#include <limits>
#include <optional>
#include <vector>

class QWidget;

/// What the statistics table shows beyond its own columns, and for its own ones where they are not about everything
/// that was fetched. The table asks; a part of the reading answers and *owns* it. Main thread only.
///
/// A line is named by its property's key; one that is not plotted has no figures.
namespace plotix {

class TableFigures : public QObject {
    Q_OBJECT
public:
    enum class Kind {
        Number,
        Time,  ///< a click goes there
        Share  ///< of a whole: a bar with its number
    };
    struct Column {
        QString identifier;  ///< stored: never changes
        QString title;       ///< for people
        Kind kind = Kind::Number;
        int width = 0;  ///< points, at first
        /// It stands behind the table's own columns, of which it moves none out of sight, instead of before their
        /// figures.
        bool isBehindOwn = false;
    };
    struct Cell {
        QString text;
        QString hint = {};                                        ///< the whole of it, for a tool tip
        double order = std::numeric_limits<double>::quiet_NaN();  ///< what rows are sorted by; NaN: before all others
        std::optional<double> share = {};                         ///< 0 to 1
    };
    /// What stands in the table's own columns.
    struct Own {
        double minimum = 0, maximum = 0, average = 0;
        qint64 points = 0;
    };

    /// Those chosen, in a fixed order.
    virtual std::vector<Column> columns() const = 0;
    virtual QStringList offered() const = 0;  ///< identifiers of all there are
    virtual Cell cell(const QString& key, const QString& identifier) const = 0;
    /// Nothing: the table's own numbers, which are about everything fetched.
    virtual std::optional<Own> own(const QString& key) const = 0;
    /// How many of the records that the figures are about are not valid, late or corrected, in words; nothing where
    /// nobody has chosen to see that.
    virtual std::optional<QString> quality(const QString& key) const = 0;
    /// What the figures are about, as words behind "Statistics of"; empty: everything fetched.
    virtual QString about() const = 0;

    /// The row that is selected in the table; empty: none.
    virtual void select(const QString& key) = 0;
    /// A cell was clicked, or Return pressed on it: a time is gone to. An empty identifier means the row: its maximum.
    virtual void activate(const QString& key, const QString& identifier) = 0;
    /// What the header's menu offers; owned here. Empty: no menu.
    virtual std::vector<QAction*> headerActions() const = 0;
    /// A new heading for the table; the caller owns it. Hides itself while there is nothing to choose.
    virtual QWidget* makeHeading(QWidget* parent) = 0;

    /// Figures of what is visible may wait until a pan rests: this takes up the span shown now, for who reads them
    /// meanwhile.
    virtual void takeUp() = 0;
    /// Works out here and now whatever is still being worked out, for who cannot wait for a signal.
    virtual void finish() = 0;

signals:
    void columnsChanged();
    void figuresChanged();
    /// Somebody has just asked for what stands there: the table shows it.
    void cellMeant(const QString& key, const QString& identifier);
};

}  // namespace plotix
