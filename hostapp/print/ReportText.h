#pragma once

#include "hostapp/print/ReportContents.h"

#include <QtCore/QLocale>

/// The texts of a report's page, in the user's language and their way of writing numbers and dates. Pure; main thread
/// only.
namespace plotix {

/// "1 March 2024 08:00 to 7 March 2024 22:35 UTC"; the date once where both ends are of one day. Seconds are told only
/// where they matter: under a span of ten minutes. A zone that was chosen is named in full.
QString spanText(const ReportContents& contents, double from, double to, const QLocale& locale);

/// "Boiler house, Hamburg", or what there is of it.
QString placeText(const ReportContents& contents);

/// What the rows are about, where that is not what the graph shows; else empty. Ends that differ by less than a
/// hundredth of the span are the same to a reader.
QString recordsText(const ReportContents& contents, const QLocale& locale);

/// What a reader must know beside graph and figures: the lines that the graph cuts off, and what recordsText says;
/// empty when there is nothing.
QString noteText(const ReportContents& contents, const QLocale& locale);

/// The unit of all rows, to stand above the values; empty when they have several, or the graph names them itself.
QString sharedUnit(const ReportContents& contents);

/// Minimum, maximum and average with the decimals that the table on the screen gives them.
struct FiguresText {
    QString minimum, maximum, average, points;
};
FiguresText figuresText(const ReportContents::Row& row, const QLocale& locale);

}  // namespace plotix
