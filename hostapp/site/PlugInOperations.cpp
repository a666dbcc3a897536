#include "hostapp/site/PlugInOperations.h"

#include <QtCore/QMetaMethod>

namespace plotix {

bool respondsToAction(const KTVPlugIn* plugIn, const char* name)
{
    if (!plugIn)
        return false;
    const QByteArray signature = QMetaObject::normalizedSignature(QByteArray(name) + "(QObject*)");
    return plugIn->metaObject()->indexOfMethod(signature) >= 0;
}

bool sendAction(KTVPlugIn* plugIn, const char* name, QObject* sender)
{
    return respondsToAction(plugIn, name) &&
           QMetaObject::invokeMethod(plugIn, name, Qt::DirectConnection, Q_ARG(QObject*, sender));
}

bool drawsGraph(const KTVPlugIn* plugIn)
{
    return plugIn && plugIn->metaObject()->indexOfMethod("graphImageWithSize(QSizeF,double,QString)") >= 0;
}

QImage graphImage(KTVPlugIn* plugIn, const QSizeF& size, double density, const QString& title)
{
    QImage image;
    if (drawsGraph(plugIn))
        QMetaObject::invokeMethod(plugIn, "graphImageWithSize", Qt::DirectConnection, Q_RETURN_ARG(QImage, image),
                                  Q_ARG(QSizeF, size), Q_ARG(double, density), Q_ARG(QString, title));
    return image;
}

QImage graphForPaper(KTVPlugIn* plugIn, const QSizeF& size, double density)
{
    return graphImage(plugIn, size, density, QString());
}

QByteArray graphPDF(KTVPlugIn* plugIn, const QSizeF& size, const QString& title)
{
    QByteArray data;
    if (plugIn && plugIn->metaObject()->indexOfMethod("graphPDFWithSize(QSizeF,QString)") >= 0)
        QMetaObject::invokeMethod(plugIn, "graphPDFWithSize", Qt::DirectConnection, Q_RETURN_ARG(QByteArray, data),
                                  Q_ARG(QSizeF, size), Q_ARG(QString, title));
    return data;
}

std::optional<QByteArray> graphFile(KTVPlugIn* plugIn, const QVariantMap& figure)
{
    if (!plugIn || plugIn->metaObject()->indexOfMethod("graphFile(QVariantMap)") < 0)
        return std::nullopt;
    QByteArray data;
    QMetaObject::invokeMethod(plugIn, "graphFile", Qt::DirectConnection, Q_RETURN_ARG(QByteArray, data),
                              Q_ARG(QVariantMap, figure));
    return data;
}

bool canPrintOnPage(const KTVPlugIn* plugIn)
{
    return plugIn && plugIn->metaObject()->indexOfMethod("reportContents()") >= 0 &&
           plugIn->metaObject()->indexOfMethod("drawGraphOnPaper(QPainter*,QRectF)") >= 0;
}

QVariantMap reportContents(KTVPlugIn* plugIn)
{
    QVariantMap contents;
    if (canPrintOnPage(plugIn))
        QMetaObject::invokeMethod(plugIn, "reportContents", Qt::DirectConnection, Q_RETURN_ARG(QVariantMap, contents));
    return contents;
}

void drawGraphOnPaper(KTVPlugIn* plugIn, QPainter& painter, const QRectF& rect)
{
    if (canPrintOnPage(plugIn))
        QMetaObject::invokeMethod(plugIn, "drawGraphOnPaper", Qt::DirectConnection, Q_ARG(QPainter*, &painter),
                                  Q_ARG(QRectF, rect));
}

bool canShowRange(const KTVPlugIn* plugIn)
{
    return plugIn && plugIn->metaObject()->indexOfMethod("showRange(double,double)") >= 0 &&
           plugIn->metaObject()->indexOfMethod("shownRange()") >= 0;
}

namespace {

std::optional<std::pair<double, double>> rangeNamed(const char* operation, const KTVPlugIn* plugIn)
{
    QVariantList dates;
    if (plugIn && plugIn->metaObject()->indexOfMethod(QByteArray(operation) + "()") >= 0)
        QMetaObject::invokeMethod(const_cast<KTVPlugIn*>(plugIn), operation, Qt::DirectConnection,
                                  Q_RETURN_ARG(QVariantList, dates));
    return dates.size() == 2 ? std::optional(std::pair(dates[0].toDouble(), dates[1].toDouble())) : std::nullopt;
}

}  // namespace

std::optional<std::pair<double, double>> shownRange(const KTVPlugIn* plugIn)
{
    return canShowRange(plugIn) ? rangeNamed("shownRange", plugIn) : std::nullopt;
}

std::optional<std::pair<double, double>> refreshedRange(const KTVPlugIn* plugIn)
{
    return rangeNamed("refreshedRange", plugIn);
}

void showRange(KTVPlugIn* plugIn, double from, double to)
{
    if (canShowRange(plugIn))
        QMetaObject::invokeMethod(plugIn, "showRange", Qt::DirectConnection, Q_ARG(double, from), Q_ARG(double, to));
}

void readRange(KTVPlugIn* plugIn, double from, double to)
{
    if (plugIn && plugIn->metaObject()->indexOfMethod("readRange(double,double)") >= 0)
        QMetaObject::invokeMethod(plugIn, "readRange", Qt::DirectConnection, Q_ARG(double, from), Q_ARG(double, to));
}

std::vector<std::pair<double, double>> spansBeside(const KTVPlugIn* plugIn, double from, double to)
{
    QObject* reader = nullptr;
    if (plugIn && plugIn->metaObject()->indexOfMethod("trendReader()") >= 0)
        QMetaObject::invokeMethod(const_cast<KTVPlugIn*>(plugIn), "trendReader", Qt::DirectConnection,
                                  Q_RETURN_ARG(QObject*, reader));
    QVariantList told;
    if (reader && reader->metaObject()->indexOfMethod("spansBeside(double,double)") >= 0)
        QMetaObject::invokeMethod(reader, "spansBeside", Qt::DirectConnection, Q_RETURN_ARG(QVariantList, told),
                                  Q_ARG(double, from), Q_ARG(double, to));
    std::vector<std::pair<double, double>> spans;
    for (const QVariant& span : told)
        if (const QVariantList bounds = span.toList(); bounds.size() == 2)
            spans.emplace_back(bounds[0].toDouble(), bounds[1].toDouble());
    return spans;
}

QObject* readSpansOf(const KTVPlugIn* plugIn)
{
    QObject* spans = nullptr;
    if (plugIn && plugIn->metaObject()->indexOfMethod("readSpans()") >= 0)
        QMetaObject::invokeMethod(const_cast<KTVPlugIn*>(plugIn), "readSpans", Qt::DirectConnection,
                                  Q_RETURN_ARG(QObject*, spans));
    return spans;
}

QVariantMap spansTold(const KTVPlugIn* plugIn)
{
    QVariantMap spans;
    QObject* told = readSpansOf(plugIn);
    if (told && told->metaObject()->indexOfMethod("spans()") >= 0)
        QMetaObject::invokeMethod(told, "spans", Qt::DirectConnection, Q_RETURN_ARG(QVariantMap, spans));
    return spans;
}

void sendToReadSpans(KTVPlugIn* plugIn, const char* operation)
{
    QObject* told = readSpansOf(plugIn);
    if (told && told->metaObject()->indexOfMethod(QByteArray(operation) + "()") >= 0)
        QMetaObject::invokeMethod(told, operation, Qt::DirectConnection);
}

void sendToReadSpans(KTVPlugIn* plugIn, const char* operation, bool chosen)
{
    QObject* told = readSpansOf(plugIn);
    if (told && told->metaObject()->indexOfMethod(QByteArray(operation) + "(bool)") >= 0)
        QMetaObject::invokeMethod(told, operation, Qt::DirectConnection, Q_ARG(bool, chosen));
}

bool lacksRecords(const KTVPlugIn* plugIn)
{
    bool lacks = false;
    if (plugIn && plugIn->metaObject()->indexOfMethod("lacksRecords()") >= 0)
        QMetaObject::invokeMethod(const_cast<KTVPlugIn*>(plugIn), "lacksRecords", Qt::DirectConnection,
                                  Q_RETURN_ARG(bool, lacks));
    return lacks;
}

std::vector<QString> footnoteTexts(const KTVPlugIn& plugIn)
{
    QVariantList notes;
    if (plugIn.metaObject()->indexOfMethod("footnotes()") >= 0)
        QMetaObject::invokeMethod(const_cast<KTVPlugIn*>(&plugIn), "footnotes", Qt::DirectConnection,
                                  Q_RETURN_ARG(QVariantList, notes));
    std::vector<QString> texts;
    for (const QVariant& told : notes) {
        const QVariantMap note = told.toMap();
        const QString author = note.value(QStringLiteral("author")).toString();
        texts.push_back(QStringLiteral("%1  %2: %3")
                            .arg(note.value(QStringLiteral("number")).toString(),
                                 note.value(QStringLiteral("time")).toString(),
                                 note.value(QStringLiteral("text")).toString()) +
                        (author.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(author)));
    }
    return texts;
}

std::optional<QVariantMap> reading(const KTVPlugIn* plugIn)
{
    if (!plugIn || plugIn->metaObject()->indexOfMethod("reading()") < 0 ||
        plugIn->metaObject()->indexOfMethod("setReading(QVariantMap)") < 0)
        return std::nullopt;
    QVariantMap options;
    QMetaObject::invokeMethod(const_cast<KTVPlugIn*>(plugIn), "reading", Qt::DirectConnection,
                              Q_RETURN_ARG(QVariantMap, options));
    return options;
}

QStringList figureColumns(const KTVPlugIn* plugIn)
{
    QStringList columns;
    if (plugIn && plugIn->metaObject()->indexOfMethod("figureColumns()") >= 0)
        QMetaObject::invokeMethod(const_cast<KTVPlugIn*>(plugIn), "figureColumns", Qt::DirectConnection,
                                  Q_RETURN_ARG(QStringList, columns));
    return columns;
}

void setReading(KTVPlugIn* plugIn, const QVariantMap& options)
{
    if (reading(plugIn))
        QMetaObject::invokeMethod(plugIn, "setReading", Qt::DirectConnection, Q_ARG(QVariantMap, options));
}

QList<QAction*> readingActions(const KTVPlugIn* plugIn)
{
    QList<QAction*> actions;
    if (plugIn && plugIn->metaObject()->indexOfMethod("readingActions()") >= 0)
        QMetaObject::invokeMethod(const_cast<KTVPlugIn*>(plugIn), "readingActions", Qt::DirectConnection,
                                  Q_RETURN_ARG(QList<QAction*>, actions));
    return actions;
}

QVariantMap changeableState(const KTVPlugIn* plugIn)
{
    QVariantMap state;
    if (plugIn && plugIn->metaObject()->indexOfMethod("changeable()") >= 0)
        QMetaObject::invokeMethod(const_cast<KTVPlugIn*>(plugIn), "changeable", Qt::DirectConnection,
                                  Q_RETURN_ARG(QVariantMap, state));
    return state;
}

QStringList plottedKeys(const KTVPlugIn* plugIn)
{
    return changeableState(plugIn).value(QStringLiteral("properties")).toStringList();
}

QStringList shownKeys(const KTVPlugIn* plugIn)
{
    QStringList keys = plottedKeys(plugIn);
    for (const QString& hidden : changeableState(plugIn).value(QStringLiteral("hidden")).toStringList())
        keys.removeAll(hidden);
    return keys;
}

void changeTo(KTVPlugIn* plugIn, const QVariantMap& state)
{
    if (plugIn && plugIn->metaObject()->indexOfMethod("changeTo(QVariantMap)") >= 0)
        QMetaObject::invokeMethod(plugIn, "changeTo", Qt::DirectConnection, Q_ARG(QVariantMap, state));
}

}  // namespace plotix
