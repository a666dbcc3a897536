#pragma once

#include <CLI/CLI.hpp>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <string>

/// Options of a command that draws: where the value line stands in the picture, and its marks. Main thread only.
namespace plotix {

struct ReadingChoice {
    QString at;     ///< a time; empty: no value line
    QString marks;  ///< two times with a slash between them; empty: no marks

    bool isEmpty() const { return at.isEmpty() && marks.isEmpty(); }
};

/// Adds --at and --marks to a command. The choice is *borrowed* until the arguments are parsed.
void addReadingChoice(CLI::App* command, ReadingChoice& choice);

/// The choice by the names of a trend's options of reading. Requires: texts that passed the options' checks.
QVariantMap readingFrom(const ReadingChoice& choice);

/// What is wrong with two times and a slash, worded to follow the option's name; empty: nothing.
std::string checkMarks(const std::string& text);

}  // namespace plotix
