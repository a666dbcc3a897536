#include "hostapp/window/OutputWords.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>

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

}  // namespace plotix
