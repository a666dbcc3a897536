#include "plugins/PlotixPlugIn/InfoTableRow.h"

namespace {

// Stored: never change.
const QString kShow = QStringLiteral("show");
const QString kColor = QStringLiteral("color");
const QString kTableName = QStringLiteral("tableName");
const QString kPropertyName = QStringLiteral("propertyName");
const QString kUnitKey = QStringLiteral("unit");
const QString kMinimum = QStringLiteral("minimum");
const QString kMaximum = QStringLiteral("maximum");
const QString kAverage = QStringLiteral("average");
const QString kPoints = QStringLiteral("points");

QString archivedColor(const QColor& color)
{
    return color.isValid() ? color.name(QColor::HexArgb) : QString();
}

}  // namespace

QVariantMap dictionaryFromInfoTableRow(const InfoTableRow& row)
{
    // Floats travel as doubles, which hold them exactly.
    return {{kShow, row.show},
            {kColor, archivedColor(row.color)},
            {kTableName, row.tableName},
            {kPropertyName, row.propertyName},
            {kUnitKey, row.unit},
            {kMinimum, static_cast<double>(row.minimum)},
            {kMaximum, static_cast<double>(row.maximum)},
            {kAverage, static_cast<double>(row.average)},
            {kPoints, static_cast<int>(row.points)}};
}

InfoTableRow infoTableRowFromDictionary(const QVariantMap& dictionary)
{
    InfoTableRow row;
    row.show = dictionary.value(kShow, true).toBool();
    row.color = dictionary.value(kColor).value<QColor>();
    row.tableName = dictionary.value(kTableName).toString();
    row.propertyName = dictionary.value(kPropertyName).toString();
    row.unit = dictionary.value(kUnitKey).toString();
    row.minimum = dictionary.value(kMinimum).toFloat();
    row.maximum = dictionary.value(kMaximum).toFloat();
    row.average = dictionary.value(kAverage).toFloat();
    row.points = dictionary.value(kPoints).toInt();
    return row;
}

QVariantList variantListFromInfoTableArray(const InfoTableArray& rows)
{
    QVariantList list;
    for (const InfoTableRowPtr& row : rows)
        list.append(dictionaryFromInfoTableRow(*row));
    return list;
}

InfoTableArrayPtr infoTableArrayFromVariantList(const QVariantList& list)
{
    auto rows = std::make_shared<InfoTableArray>();
    for (const QVariant& element : list)
        if (element.metaType() == QMetaType::fromType<QVariantMap>())
            rows->push_back(std::make_shared<InfoTableRow>(infoTableRowFromDictionary(element.toMap())));
    return rows;
}
