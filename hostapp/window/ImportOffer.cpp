#include "hostapp/window/ImportOffer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

namespace plotix {

namespace {

class ImportOfferText {
    Q_DECLARE_TR_FUNCTIONS(ImportOfferText)
};

QString siteFilter()
{
    return ImportOfferText::tr("Plotix sites (*.plotix)");
}

std::optional<ImportOffer> askForNewSite(const QString& file, QWidget* parent)
{
    QFileDialog dialog(parent, ImportOfferText::tr("New Site"), {}, siteFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("plotix"));
    dialog.setOption(QFileDialog::DontConfirmOverwrite);  // making it refuses, rather than writing over a site
    dialog.setDirectory(QFileInfo(siteProposedFor(file)).absolutePath());
    dialog.selectFile(QFileInfo(siteProposedFor(file)).fileName());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return ImportOffer{dialog.selectedFiles().first(), true};
}

std::optional<ImportOffer> askForExistingSite(const QString& file, QWidget* parent)
{
    const QString path = QFileDialog::getOpenFileName(parent, ImportOfferText::tr("Open Site"),
                                                      QFileInfo(file).absolutePath(), siteFilter());
    return path.isEmpty() ? std::nullopt : std::optional(ImportOffer{path, false});
}

}  // namespace

QString siteProposedFor(const QString& file)
{
    const QFileInfo info(file);
    return info.absoluteDir().filePath(info.completeBaseName() + QStringLiteral(".plotix"));
}

std::optional<ImportOffer> askWhereToImport(const QString& file, QWidget* parent)
{
    QMessageBox box(parent);
    box.setObjectName(QStringLiteral("importOffer"));
    box.setIcon(QMessageBox::Question);
    box.setTextFormat(Qt::PlainText);
    box.setText(ImportOfferText::tr("“%1” is not a site. Import its measurements?").arg(QFileInfo(file).fileName()));
    box.setInformativeText(ImportOfferText::tr("A site keeps measurements and the trends made of them in one file."));
    const QPushButton* fresh = box.addButton(ImportOfferText::tr("&New Site…"), QMessageBox::AcceptRole);
    const QPushButton* existing = box.addButton(ImportOfferText::tr("&Existing Site…"), QMessageBox::AcceptRole);
    box.addButton(QMessageBox::Cancel);
    box.exec();
    if (box.clickedButton() == fresh)
        return askForNewSite(file, parent);
    return box.clickedButton() == existing ? askForExistingSite(file, parent) : std::nullopt;
}

}  // namespace plotix
