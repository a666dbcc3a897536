#include "hostapp/window/OutputWords.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>

namespace plotix {

namespace {

class OutputText {
    Q_DECLARE_TR_FUNCTIONS(OutputText)
};

QString textOfOtherKind(FileKind found, const QString& name)
{
    switch (found) {
    case FileKind::Png: return OutputText::tr("“%1” is a PNG picture. Choose another name.").arg(name);
    case FileKind::Pdf: return OutputText::tr("“%1” is a PDF document. Choose another name.").arg(name);
    case FileKind::Svg: return OutputText::tr("“%1” is an SVG drawing. Choose another name.").arg(name);
    case FileKind::Text: return OutputText::tr("“%1” is a text. Choose another name.").arg(name);
    case FileKind::Workbook:
        return OutputText::tr("“%1” is a spreadsheet or another archive. Choose another name.").arg(name);
    case FileKind::Database:
        return OutputText::tr("“%1” is a site or another database. Choose another name.").arg(name);
    case FileKind::Empty:
    case FileKind::Other: break;
    }
    return OutputText::tr("“%1” is a file of another kind. Choose another name.").arg(name);
}

QString timeText(double seconds)
{
    return QLocale().toString(QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(seconds * 1000)),
                              QLocale::ShortFormat);
}

}  // namespace

QString outputText(const OutputProblem& problem)
{
    const QString name = QFileInfo(problem.path).fileName();
    switch (problem.reason) {
    case OutputProblem::Reason::WrongEnding:
        return OutputText::tr("The name “%1” must end in .%2.")
            .arg(name, endingsOf(problem.wanted).join(OutputText::tr(" or .")));
    case OutputProblem::Reason::OtherKind: return textOfOtherKind(problem.found, name);
    case OutputProblem::Reason::NotAFile:
        return OutputText::tr("“%1” is not a file that can be replaced. Choose another name.").arg(name);
    case OutputProblem::Reason::NotWritten: break;
    }
    return OutputText::tr("“%1” cannot be written: %2").arg(problem.path, problem.systemError);
}

QString caseText(const CaseProblem& problem)
{
    using Reason = CaseProblem::Reason;
    const QString name = QFileInfo(problem.path).fileName();
    switch (problem.reason) {
    case Reason::WrongEnding: return OutputText::tr("The name “%1” must end in .%2.").arg(name, u"plotix");
    case Reason::IsTheSite: return OutputText::tr("“%1” is the site itself. Choose another name.").arg(name);
    case Reason::IsNoCase:
        return OutputText::tr("“%1” is not a case, so it is not written over. Choose another name.").arg(name);
    case Reason::IsInUse:
        return OutputText::tr("“%1” is open, or was not closed properly. Close it, or choose another name.").arg(name);
    case Reason::NothingRecorded:
        return OutputText::tr("Nothing was recorded between %1 and %2. Choose another span.")
            .arg(timeText(problem.span.first), timeText(problem.span.second));
    case Reason::NotWritten: break;
    }
    return OutputText::tr("“%1” cannot be written: %2").arg(problem.path, problem.detail);
}

QString contentsText(const CaseContents& contents)
{
    return OutputText::tr("%1 of %2, %3, %4")
        .arg(OutputText::tr("%Ln record(s)", nullptr, int(contents.records)),
             OutputText::tr("%Ln property(s)", nullptr, int(contents.properties)),
             OutputText::tr("%Ln note(s)", nullptr, int(contents.notes)),
             QLocale().formattedDataSize(contents.bytes, 1, QLocale::DataSizeSIFormat));
}

}  // namespace plotix
