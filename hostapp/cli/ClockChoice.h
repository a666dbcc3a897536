#pragma once

#include <CLI/CLI.hpp>
#include <QtCore/QString>
#include <QtCore/QTimeZone>
#include <QtCore/QVariant>

#include <string>

/// Options of a command that writes times: by which clocks, and how their hours are written. Main thread only.
namespace plotix {

class SiteDocument;

struct ClockChoice {
    QString zone;   ///< a name, or "site"; empty: the user's
    QString hours;  ///< 24 or locale; empty: the usual ones

    bool isEmpty() const { return zone.isEmpty() && hours.isEmpty(); }
};

/// Adds --zone; the choice is *borrowed* until the arguments are parsed.
void addZoneChoice(CLI::App* command, ClockChoice& choice);

/// Adds --zone and --hours. The choice is *borrowed* until the arguments are parsed.
void addClockChoice(CLI::App* command, ClockChoice& choice);

/// The zone chosen; invalid: the user's. Throws ReportableError where the site's is asked for and nobody has said it.
QTimeZone zoneOf(const ClockChoice& choice, const SiteDocument& document);

/// The choice by the names of a trend's option of reading "clock". Requires: texts that passed the options' checks.
QVariantMap clockFrom(const ClockChoice& choice);

/// What is wrong with the name of a zone, worded to follow the option's name; empty: nothing.
std::string checkZone(const std::string& text);

}  // namespace plotix
