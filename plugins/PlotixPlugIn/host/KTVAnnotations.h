#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <vector>

/// A value that a property should stay on one side of, such as "alarm high". A value.
struct KTVLimit {
    /// Where values are beyond the limit. Stored: never change the order.
    enum class Side { Above, Below };
    /// Stored: never change the order.
    enum class Severity { Notice, Warning, Alarm };

    QString name;      ///< for people
    double value = 0;  ///< in the property's unit of the moment
    Side side = Side::Above;
    Severity severity = Severity::Warning;

    /// A value on the limit is not beyond it; nor is NaN.
    bool isBeyond(double number) const { return side == Side::Above ? number > value : number < value; }
    friend bool operator==(const KTVLimit&, const KTVLimit&) = default;
};

/// What somebody wrote about a time or a span. A value.
struct KTVNote {
    qint64 identifier = 0;
    double from = 0, to = 0;  ///< seconds since 1970-01-01 UTC; the same for a note about a time
    QString author, text;
    bool isAboutAll = true;     ///< not about certain properties
    QStringList propertyNames;  ///< keys of this agent's properties that it is about

    friend bool operator==(const KTVNote&, const KTVNote&) = default;
};

/// Limits and notes that the host keeps beside an agent's records: read by whoever draws the agent, changed by the host
/// alone, in its own dialogs. The agent *owns* it. Main thread only.
class KTVHOST_EXPORT KTVAnnotations : public QObject {
    Q_OBJECT
public:
    ~KTVAnnotations() override;

    virtual std::vector<KTVLimit> limitsOf(const QString& propertyName) const = 0;
    /// About any of this agent's properties, or all; in the order of time.
    virtual std::vector<KTVNote> notes() const = 0;

    /// Whether the host answers what follows; without it nothing happens.
    virtual bool canEdit() const { return false; }
    virtual void editLimits(const QString& /*propertyName*/) {}
    /// Asks for a note's text. No names: about all properties.
    virtual void addNote(double /*from*/, double /*to*/, const QStringList& /*propertyNames*/) {}
    virtual void openNote(qint64 /*identifier*/) {}
    virtual void showNotes() {}

signals:
    void changed();  ///< limits or notes, whoever changed them
};

/// An agent that has limits and notes: a host's agent is one beside KTVAgent if it likes.
class KTVHOST_EXPORT KTVAnnotatedAgent {
public:
    virtual ~KTVAnnotatedAgent();
    virtual KTVAnnotations* annotations() const = 0;  ///< *borrowed*, lives as long as the agent; null: none
};
