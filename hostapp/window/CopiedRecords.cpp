#include "hostapp/window/CopiedRecords.h"

#include "base/ReportableError.h"
#include "hostapp/exchange/formats/RecordExport.h"
#include "records/store/RecordStore.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QTemporaryDir>

namespace plotix {

namespace {

class CopiedRecordsText {
    Q_DECLARE_TR_FUNCTIONS(CopiedRecordsText)
};

qint64 mostRecords(RecordStore& store, const RecordExport& what)
{
    qint64 most = 0;
    for (const RowId property : what.properties)
        most = std::max(most, qint64(store.statistics(what.agent, property, what.from, what.to).valid));
    return most;
}

}  // namespace

QString copiedRecords(SiteDocument& document, const SiteAgent& agent, const QStringList& keys,
                      const std::pair<double, double>& span, const QTimeZone& zone)
{
    std::vector<std::shared_ptr<SiteProperty>> properties;
    for (const auto& property : agent.siteProperties())
        if (keys.contains(property->propertyName()))
            properties.push_back(property);
    RecordExport what = exportOf(agent, properties);
    what.from = span.first;
    what.to = span.second;
    what.form = {.clock = ExportForm::Clock::Local, .zone = zone, .delimiter = '\t', .guardsFormulas = true};
    if (QLocale().decimalPoint() == u",")
        what.form.decimalSign = ',';
    const qint64 count = mostRecords(*document.records(), what);
    if (count == 0)
        return {};
    if (count > kMostCopiedRecords)
        throw ReportableError(
            CopiedRecordsText::tr("There are %1 records in this span, too many for the clipboard. Zoom "
                                  "in, or take File ▸ Export Records.")
                .arg(QLocale().toString(count)));
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("records.txt"));
    exportRecords(*document.records(), what, path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ReportableError(file.errorString());
    return QString::fromUtf8(file.readAll());
}

}  // namespace plotix
