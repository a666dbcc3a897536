#include "hostapp/site/FigureRecipe.h"

#include "base/png/PngText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>

#include <cmath>

namespace plotix {

namespace {

// Stored, as all names below: never change.
constexpr int kForm = 1;
const QString kFormKey = QStringLiteral("plotixFigure");
const QByteArray kKeyword("plotix");
const QByteArray kElement("<plotix:recipe xmlns:plotix=\"urn:plotix:figure\">");
const QByteArray kElementEnd("</plotix:recipe>");

QByteArray escaped(const QByteArray& recipe)
{
    return QString::fromUtf8(recipe).toHtmlEscaped().toUtf8();
}

QByteArray unescaped(QByteArray text)
{
    return text.replace("&lt;", "<").replace("&gt;", ">").replace("&quot;", "\"").replace("&amp;", "&");
}

QByteArray element(const QByteArray& recipe)
{
    return kElement + escaped(recipe) + kElementEnd;
}

QByteArray packetOf(const QByteArray& recipe)
{
    return "<?xpacket begin=\"\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
           "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">"
           "<rdf:Description rdf:about=\"\">" +
           element(recipe) + "</rdf:Description></rdf:RDF></x:xmpmeta>\n<?xpacket end=\"r\"?>";
}

QByteArray svgWith(QByteArray svg, const QByteArray& recipe)
{
    const qsizetype at = svg.indexOf("<defs>");
    return at < 0 ? svg : svg.insert(at, "<metadata>" + element(recipe) + "</metadata>\n");
}

/// What has to be known of a PDF file in order to add to it.
struct PdfEnd {
    int size = 0, info = 0, root = 0;
    qint64 table = 0;  ///< where its last table of objects begins
    QByteArray catalog;
};

std::optional<PdfEnd> endOf(const QByteArray& pdf)
{
    static const QRegularExpression trailer(QStringLiteral(
        "trailer\\s*<<\\s*/Size (\\d+)\\s*/Info (\\d+) 0 R\\s*/Root (\\d+) 0 R\\s*>>\\s*startxref\\s*(\\d+)"
        "\\s*%%EOF\\s*$"));
    const auto found = trailer.match(QString::fromLatin1(pdf.right(1024)));
    if (!found.hasMatch())
        return std::nullopt;
    PdfEnd end{found.captured(1).toInt(),
               found.captured(2).toInt(),
               found.captured(3).toInt(),
               found.captured(4).toLongLong(),
               {}};
    const qsizetype object = pdf.indexOf('\n' + QByteArray::number(end.root) + " 0 obj");
    const qsizetype from = pdf.indexOf("<<", object) + 2;
    const qsizetype to = pdf.indexOf(">>", from);
    if (object < 0 || from < 2 || to < 0)
        return std::nullopt;
    end.catalog = pdf.mid(from, to - from);
    return end;
}

QByteArray tableRow(qint64 offset)
{
    return QByteArray::number(offset).rightJustified(10, '0') + " 00000 n \n";
}

/// An update at the end, as the format provides for: a stream of metadata, and the catalog again, which names it.
QByteArray pdfWith(const QByteArray& pdf, const QByteArray& recipe)
{
    const std::optional<PdfEnd> end = endOf(pdf);
    if (!end)
        return pdf;
    const QByteArray packet = packetOf(recipe);
    QByteArray file = pdf;
    if (!file.endsWith('\n'))
        file += '\n';
    const qint64 stream = file.size();
    file += QByteArray::number(end->size) + " 0 obj\n<</Type /Metadata /Subtype /XML /Length " +
            QByteArray::number(packet.size()) + ">>\nstream\n" + packet + "\nendstream\nendobj\n";
    const qint64 catalog = file.size();
    file += QByteArray::number(end->root) + " 0 obj\n<<" + end->catalog + "/Metadata " + QByteArray::number(end->size) +
            " 0 R\n>>\nendobj\n";
    const qint64 table = file.size();
    file += "xref\n" + QByteArray::number(end->root) + " 1\n" + tableRow(catalog) + QByteArray::number(end->size) +
            " 1\n" + tableRow(stream);
    file += "trailer\n<<\n/Size " + QByteArray::number(end->size + 1) + "\n/Info " + QByteArray::number(end->info) +
            " 0 R\n/Root " + QByteArray::number(end->root) + " 0 R\n/Prev " + QByteArray::number(end->table) +
            "\n>>\nstartxref\n" + QByteArray::number(table) + "\n%%EOF\n";
    return file;
}

}  // namespace

QString textOfMoment(const Date& moment)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(std::llround(moment.seconds * 1000)), Qt::UTC)
        .toString(Qt::ISODateWithMs);
}

OptionalDate momentOfText(const QString& text)
{
    const QDateTime moment = QDateTime::fromString(text, Qt::ISODateWithMs);
    return moment.isValid() ? OptionalDate(Date{double(moment.toMSecsSinceEpoch()) / 1000}) : std::nullopt;
}

QByteArray recipeOf(const ShownView& view)
{
    const QJsonObject object{
        {kFormKey, kForm},
        {QStringLiteral("program"), QStringLiteral("Plotix ") + QCoreApplication::applicationVersion()},
        {QStringLiteral("site"), view.siteName},
        {QStringLiteral("siteFile"), view.siteFile},
        {QStringLiteral("trend"), view.trend},
        {QStringLiteral("agent"), view.agent},
        {QStringLiteral("properties"), QJsonArray::fromStringList(view.properties)},
        {QStringLiteral("from"), view.from ? textOfMoment(*view.from) : QString()},
        {QStringLiteral("to"), view.to ? textOfMoment(*view.to) : QString()},
        {QStringLiteral("reading"), QJsonObject::fromVariantMap(view.reading)}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<ShownView> viewInRecipe(const QByteArray& recipe)
{
    const QJsonObject object = QJsonDocument::fromJson(recipe).object();
    const int form = object.value(kFormKey).toInt();
    if (form < 1 || form > kForm)
        return std::nullopt;
    ShownView view;
    view.siteName = object.value(QStringLiteral("site")).toString();
    view.siteFile = object.value(QStringLiteral("siteFile")).toString();
    view.trend = object.value(QStringLiteral("trend")).toString();
    view.agent = object.value(QStringLiteral("agent")).toString();
    for (const QJsonValue& key : object.value(QStringLiteral("properties")).toArray())
        view.properties << key.toString();
    view.from = momentOfText(object.value(QStringLiteral("from")).toString());
    view.to = momentOfText(object.value(QStringLiteral("to")).toString());
    view.reading = object.value(QStringLiteral("reading")).toObject().toVariantMap();
    return view;
}

QByteArray withRecipe(FileKind kind, const QByteArray& file, const QByteArray& recipe)
{
    switch (kind) {
    case FileKind::Png: return pngWithText(file, kKeyword, recipe);
    case FileKind::Pdf: return pdfWith(file, recipe);
    case FileKind::Svg: return svgWith(file, recipe);
    default: return file;
    }
}

std::optional<ShownView> viewInFigure(const QByteArray& file)
{
    if (const auto text = textInPng(file, kKeyword))
        return viewInRecipe(*text);
    const qsizetype from = file.lastIndexOf(kElement);
    const qsizetype to = from < 0 ? -1 : file.indexOf(kElementEnd, from);
    if (to < 0)
        return std::nullopt;
    return viewInRecipe(unescaped(file.mid(from + kElement.size(), to - from - kElement.size())));
}

}  // namespace plotix
