#include "hostapp/cli/CommandProgressBar.h"

#include "base/StopRequest.h"
#include "hostapp/cli/TerminalText.h"

#include <QtCore/QElapsedTimer>

#include <cmath>
#include <ostream>

namespace plotix {

namespace {

constexpr int kBarWidth = 40;             // characters
constexpr qint64 kBetweenDrawings = 100;  // milliseconds

class TerminalBar {
public:
    TerminalBar(std::ostream& stream, const QString& title) : m_stream(stream), m_title(title) {}
    ~TerminalBar()
    {
        if (m_isDrawn)
            m_stream << "\r\x1b[K" << std::flush;
    }
    TerminalBar(const TerminalBar&) = delete;
    TerminalBar& operator=(const TerminalBar&) = delete;

    void draw(double fraction)
    {
        if (m_isDrawn && m_sinceDrawing.elapsed() < kBetweenDrawings)
            return;
        m_stream << '\r' << progressLine(m_title, fraction) << std::flush;
        m_isDrawn = true;
        m_sinceDrawing.start();
    }

private:
    std::ostream& m_stream;  // borrowed
    QString m_title;
    bool m_isDrawn = false;
    QElapsedTimer m_sinceDrawing;
};

}  // namespace

std::string progressLine(const QString& title, double fraction)
{
    const double part = std::isnan(fraction) ? 0 : std::clamp(fraction, 0.0, 1.0);
    const int full = static_cast<int>(std::lround(part * kBarWidth));
    return QStringLiteral("%1  [%2%3] %4 %")
        .arg(QString::fromStdString(harmlessText(title.toStdString())), QString(full, QLatin1Char('=')),
             QString(kBarWidth - full, QLatin1Char(' ')))
        .arg(static_cast<int>(part * 100), 3)
        .toStdString();
}

CommandProgress makeCommandProgress(CommandServices& services, CommandStreams streams, const QString& title)
{
    const CommandProgress own = services.makeProgress(title);
    const auto bar = !own && streams.errorIsTerminal
                         ? std::make_shared<TerminalBar>(streams.terminal ? *streams.terminal : streams.error, title)
                         : nullptr;
    return [own, bar](double fraction) {
        if (bar)
            bar->draw(fraction);
        return (!own || own(fraction)) && !StopRequest::isRequested();
    };
}

}  // namespace plotix
