#pragma once

#include "hostapp/document/SiteDocument.h"
#include "hostapp/live/LiveRecorder.h"

#include <QtCore/QObject>

#include <functional>
#include <memory>

namespace plotix {

/// Records this computer into an open site document while it is switched on; whether it is, the document remembers.
///
/// *Shares* the document, *owns* the recorder. Main thread only.
class SiteRecording : public QObject {
    Q_OBJECT
public:
    using MakeRecorder = std::function<std::unique_ptr<LiveRecorder>(const QString& site)>;

    explicit SiteRecording(std::shared_ptr<SiteDocument> document, MakeRecorder makeRecorder = makeSystemRecorder);
    ~SiteRecording() override;

    static std::unique_ptr<LiveRecorder> makeSystemRecorder(const QString& site);

    bool isOn() const { return m_recorder != nullptr; }
    bool wasOn() const;  ///< when the document was used last

    /// Makes the agent where it is missing. Throws ReportableError, and is off then. On already: nothing happens.
    void switchOn();
    void switchOff();

    QString message() const;  ///< why no record could be stored; empty while all is well

signals:
    /// The document has the agent for the first time: nothing shows it yet.
    void agentAdded(const std::shared_ptr<SiteAgent>& agent);
    void messageChanged();

private:
    void remember(bool on);

    std::shared_ptr<SiteDocument> m_document;
    MakeRecorder m_makeRecorder;
    std::unique_ptr<LiveRecorder> m_recorder;  ///< while on
};

}  // namespace plotix
