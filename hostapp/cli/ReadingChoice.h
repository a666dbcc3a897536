#pragma once

#include "hostapp/cli/ClockChoice.h"

#include <CLI/CLI.hpp>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <string>
#include <vector>

/// Options of a command that draws: how lines are arranged, how the graph looks, what is written around it, where the
/// value line stands, the marks, and with what lines are compared. Main thread only.
namespace plotix {

struct ReadingChoice {
    QString arrangement;   ///< empty: as suits the lines
    QString look;          ///< dark, light, paper; empty: dark
    QString fontSize;      ///< points; empty: the usual one
    QString legend;        ///< none, below, right; empty: none
    QString axisTitles;    ///< none, values, all; empty: the usual ones
    double lineWidth = 0;  ///< times the usual one; 0: the usual one
    bool isTransparent = false;
    QString at;                        ///< a time; empty: no value line
    QString marks;                     ///< two times with a slash between them; empty: no marks
    std::vector<std::string> compare;  ///< distances in time
    std::vector<std::string> without;  ///< keys of what is left out: limits, notes
    std::vector<std::string> quality;  ///< missing, late, strip, or none; empty: missing and late
    QString lateBy;                    ///< how long something may take and is not late; empty: no time
    ClockChoice clock;

    bool isEmpty() const
    {
        return arrangement.isEmpty() && look.isEmpty() && fontSize.isEmpty() && legend.isEmpty() &&
               axisTitles.isEmpty() && lineWidth == 0 && !isTransparent && at.isEmpty() && marks.isEmpty() &&
               compare.empty() && without.empty() && quality.empty() && lateBy.isEmpty() && clock.isEmpty();
    }
};

/// Adds --arrangement, --look, --font-size, --legend and the like to a command. The choice is *borrowed* until the
/// arguments are parsed.
void addReadingChoice(CLI::App* command, ReadingChoice& choice);

/// The choice by the names of a trend's options of reading. Requires: texts that passed the options' checks.
/// Times without a zone are those of `clock`; an invalid one is the user's.
QVariantMap readingFrom(const ReadingChoice& choice, const QTimeZone& clock = {});

/// What is wrong with two times and a slash, worded to follow the option's name; empty: nothing.
std::string checkMarks(const std::string& text);
/// The same with a distance in time, such as 7d.
std::string checkDistance(const std::string& text);

}  // namespace plotix
