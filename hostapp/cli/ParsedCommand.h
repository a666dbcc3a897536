#pragma once

#include "hostapp/exchange/ImportOptions.h"
#include "hostapp/print/Paper.h"

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <variant>

/// What a command line asks for, as values. Pure: nothing is opened, and no clock is read; a time without a zone is in
/// the user's. Any thread.
namespace plotix {

struct OpenCommand {
    QString site;        ///< empty: the demonstration site
    QString screenshot;  ///< empty: a window on the screen
    QSize size{1280, 800};
};

struct ImportCommand {
    QString file, site;
    ImportOptions options;
    bool json = false;
};

struct InfoCommand {
    QString site;
    bool json = false;
};

/// Which records: of which agent and properties, and from when to when.
struct RecordChoice {
    QString agent;                   ///< empty: the only one
    QStringList properties;          ///< names or keys; empty: all
    std::optional<double> from, to;  ///< seconds since 1970-01-01 UTC; absent: open
    QString range;                   ///< a quick range's name; empty: all time
};

struct RenderCommand {
    QString site, output;
    RecordChoice choice;
    QSize size{1200, 600};
    QString title;
    bool bare = false;
};

struct ExportCommand {
    QString site, output;
    RecordChoice choice;
};

struct ReportCommand {
    QString site, output;
    QString view;                ///< its title; empty: the only one
    std::optional<Paper> paper;  ///< absent: what is usual in the user's country
};

struct RecordCommand {
    QString site;
    double interval = 1;             ///< seconds
    std::optional<double> duration;  ///< seconds; absent: until stopped
    bool printTimes = false;
};

struct ServeCommand {
    QStringList sites;
    QString address = QStringLiteral("127.0.0.1");
    int port = 8123;    ///< 0: any that is free
    QString tokenFile;  ///< empty: without a token
};

/// At most one of the two says what to drop; neither: nothing.
struct CompactCommand {
    QString site;
    std::optional<double> before;  ///< seconds since 1970-01-01 UTC
    std::optional<double> keep;    ///< seconds back from the site's last record
};

struct VerifyCommand {
    QString site;
};

struct ParsedCommand {
    std::variant<OpenCommand, ImportCommand, InfoCommand, RenderCommand, ExportCommand, RecordCommand, ReportCommand,
                 ServeCommand, CompactCommand, VerifyCommand>
        command;
    std::optional<QString> help;        ///< asked for: print it and do nothing else
    std::optional<QString> wrongUsage;  ///< one line
};

/// `arguments` are the words after the program's name.
ParsedCommand parseCommandLine(const QStringList& arguments);

}  // namespace plotix
