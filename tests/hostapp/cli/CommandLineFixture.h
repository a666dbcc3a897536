#pragma once

#include "base/ReportableError.h"
#include "hostapp/cli/CommandLine.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <sstream>

/// The command line in a scratch folder, beside services that only write down what they are asked for.
namespace plotix {

/// Records what it is asked for; draws nothing.
class RecordingServices : public CommandServices {
public:
    bool hasDisplay() const override { return display; }
    int open(const OpenRequest& request) override
    {
        opened.push_back(request);
        return 0;
    }
    QByteArray render(const RenderRequest& request) override
    {
        if (renderFails)
            throw ReportableError(QStringLiteral("the module is missing; build it"));
        rendered.push_back(request);
        return request.format == RenderRequest::Format::Pdf ? "a pdf" : "a png";
    }
    QByteArray report(const ReportRequest& request) override
    {
        reported.push_back(request);
        return "a report";
    }
    CasePlan planCase(const CaseRequest& request) override
    {
        casesPlanned.push_back(request);
        return casePlan;
    }
    void serve(const ServeRequest& request) override
    {
        served.push_back(request);
        request.say(QStringLiteral("http://127.0.0.1:8123/"));
    }
    void storeTrend(const TrendRequest& trend) override
    {
        stored.push_back(trend);
        // The program lets go of the document too: the demonstration site is renamed once it is built.
        stored.back().document.reset();
    }
    CommandProgress makeProgress(const QString&) override { return progress; }

    bool display = true, renderFails = false;
    CommandProgress progress;
    std::vector<OpenRequest> opened;
    std::vector<RenderRequest> rendered;
    std::vector<ReportRequest> reported;
    CasePlan casePlan;
    std::vector<CaseRequest> casesPlanned;
    std::vector<ServeRequest> served;
    std::vector<TrendRequest> stored;
};

class CommandLineTest : public testing::Test {
protected:
    int run(const QStringList& arguments)
    {
        std::ostringstream out, err;
        const int status = runCommandLine(arguments, m_services, {out, err, m_isTerminal});
        m_output = QString::fromStdString(out.str());
        m_error = QString::fromStdString(err.str());
        return status;
    }

    void expectFailure(const QStringList& arguments, int status, const QString& text)
    {
        EXPECT_EQ(run(arguments), status);
        EXPECT_TRUE(m_error.contains(text)) << m_error.toStdString();
        EXPECT_EQ(m_error.count(QLatin1Char('\n')), 1) << m_error.toStdString();
        EXPECT_TRUE(m_error.startsWith(QStringLiteral("plotix: ")));
    }

    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
    QString site() const { return path("site.plotix"); }

    QString write(const char* name, const QByteArray& text) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }

    QByteArray contents(const QString& file) const
    {
        QFile opened(file);
        EXPECT_TRUE(opened.open(QIODevice::ReadOnly)) << file.toStdString();
        return opened.readAll();
    }

    void importText(const QByteArray& text, const QString& agent = QStringLiteral("EWR"))
    {
        ASSERT_EQ(run({"import", write("data.csv", text), "--site", site(), "--agent", agent}), 0)
            << m_error.toStdString();
    }

    void importWeather()
    {
        importText("time,Air Temperature (°C),Pressure [hPa]\n2015-01-01T00:00:00Z,1.5,1000\n"
                   "2015-01-01T00:01:00.25Z,,1001.25\n2015-01-02T00:00:00Z,2.5,1002\n");
    }

    RecordingServices m_services;
    bool m_isTerminal = false;
    QString m_output, m_error;
    QTemporaryDir m_folder;
};

}  // namespace plotix
