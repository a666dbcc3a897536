#pragma once

#include "hostapp/document/SiteDocument.h"
#include "hostapp/live/LiveRecorder.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>

#include <functional>
#include <memory>

namespace plotix {

/// Records a live source, this computer, into an open site document while switched on. The document stores whether it
/// is on.
///
/// *Shares* the document, *owns* the recorder. Main thread only.
class SiteRecording : public QObject {
    Q_OBJECT
public:
    using MakeSource = std::function<std::unique_ptr<ReadingSource>()>;

    explicit SiteRecording(std::shared_ptr<SiteDocument> document, MakeSource makeSource = makeComputer);
    ~SiteRecording() override;

    static std::unique_ptr<ReadingSource> makeComputer();

    bool isOn() const;   ///< false again once another file has taken the site's name
    bool wasOn() const;  ///< when the document was used last

    /// Makes the agent if it is missing. Throws ReportableError and stays off. On already: nothing happens.
    void switchOn();
    void switchOff();

    const QDateTime& since() const { return m_since; }  ///< when it was switched on; invalid while off
    std::size_t stored() const;                         ///< records since then; 0 while off
    std::size_t onDisk() const;                         ///< records on this disk that the site's server has not got yet
    QString message() const;                            ///< why no record could be stored; empty while all is well

signals:
    /// The agent was just added to the document: nothing shows it yet.
    void agentAdded(const std::shared_ptr<SiteAgent>& agent);
    void messageChanged();
    void switched();    ///< on or off
    void progressed();  ///< more records are stored, or wait on this disk

private:
    void remember(bool on);

    std::shared_ptr<SiteDocument> m_document;
    MakeSource m_makeSource;
    QDateTime m_since;
    std::unique_ptr<LiveRecorder> m_recorder;  ///< while on
};

}  // namespace plotix
