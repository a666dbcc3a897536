#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/cli/ClockChoice.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/core/OutputFile.h"

/// Reports: the program lays out and prints, the file is written whole or not at all.
namespace plotix {

namespace {

struct ReportCommand {
    QString site, output;
    QString view;                ///< its title; empty: the only one
    std::optional<Paper> paper;  ///< absent: what is usual in the user's country
    ReportForm form = ReportForm::Page;
    QString columns;
    QString over;  ///< empty: as the view has it
    ClockChoice clock;
};

/// What was said about the table, by the names that a trend has for it.
QVariantMap statisticsOf(const ReportCommand& command)
{
    QVariantMap statistics;
    if (!command.columns.isEmpty())
        statistics.insert(QStringLiteral("columns"), listFromArgument(command.columns));
    if (!command.over.isEmpty())
        statistics.insert(QStringLiteral("over"), command.over);
    return statistics;
}

int runCommand(const ReportCommand& command, CommandContext context)
{
    requireWritable(FileKind::Pdf, command.output);
    const ReportRequest request{openSite(command.site), command.view,          command.paper,
                                command.form,           statisticsOf(command), clockFrom(command.clock)};
    zoneOf(command.clock, *request.document);  // refuses one that nobody has said
    writeOutput(FileKind::Pdf, command.output, context.services.report(request));
    return kCommandDone;
}

}  // namespace

Command addReport(CLI::App& program)
{
    const auto command = std::make_shared<ReportCommand>();
    CLI::App* report = program.add_subcommand("report", "Print a view's report into a PDF file, without a window");
    addSite(report, command->site);
    addText(report, "--output", command->output, "The file to write")
        ->required()
        ->type_name("FILE.pdf")
        ->check(checkPdf);
    addText(report, "--view", command->view, "The view's title; may be left out when there is only one view")
        ->type_name("TITLE");
    addChoice<Paper>(report, "--paper", command->paper, {{"A4", Paper::A4}, {"Letter", Paper::Letter}},
                     "The sheet; what is usual in your country unless given");
    addChoice<ReportForm>(report, "--form", command->form,
                          {{"page", ReportForm::Page}, {"classic", ReportForm::Classic}},
                          "page: graph and figures together, made for paper, unless given; classic: as the view itself "
                          "writes it");
    addText(report, "--columns", command->columns,
            "Columns of the table beyond its own, such as median,timeWeightedMean,coverage; as the view has it unless "
            "given")
        ->type_name("NAME,…");
    addText(report, "--over", command->over,
            "What the table is about: everything fetched, what the graph shows, or what lies between its marks")
        ->type_name("fetched|visible|marked")
        ->check(CLI::IsMember({"fetched", "visible", "marked"}));
    addClockChoice(report, command->clock);
    report->footer("Example:\n  plotix report nyc.plotix --view \"Newark 2013\" --paper Letter --output newark.pdf");
    Command made{report, Command::Makes::Picture,
                 [command](CommandContext context) { return runCommand(*command, context); }};
    made.contradiction = [command]() -> std::optional<QString> {
        if (command->form == ReportForm::Classic && !statisticsOf(*command).isEmpty())
            return QStringLiteral("--form classic has the view's own table; leave out --columns and --over");
        return std::nullopt;
    };
    return made;
}

}  // namespace plotix
