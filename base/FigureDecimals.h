#pragma once

/// How many decimals the extremes and the average of a line are worth, for every outlet that writes them: the table on
/// the screen, its copies, the report on paper. Free functions over values; any thread.
namespace plotix {

struct FigureDecimals {
    int extremes = 0, average = 0;  ///< 0 to 9, of the average 0 to 10
};

/// As many as make about four digits of the range, but none that nobody measured: the extremes have no more than the
/// longer of them has itself; the average no more than it was rounded to, and one beyond the extremes', but as many as
/// they have where it was rounded to as many: 3.9999 beside 9.68 is 4.00. Equal extremes are written exactly. Without
/// finite extremes none.
FigureDecimals figureDecimals(float minimum, float maximum, float average);

/// Those of the range alone, for other figures of the line, which nobody rounded. Requires: finite numbers.
int decimalsForStatistics(float minimum, float maximum);

}  // namespace plotix
