// Choices for a picture that are kept by name.
//
// Ours come first and stay as they are; those of the user are saved and deleted here, and `plotix render --preset`
// knows them too.

#include "hostapp/window/ExportPictureDialog.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QInputDialog>

namespace plotix {

void ExportPictureDialog::listPresets(const QString& chosen)
{
    m_preset->clear();
    m_preset->addItem(tr("Something else"));
    const QHash<QString, QString> texts{{QStringLiteral("paper-column"), tr("Column of a paper, 85 mm")},
                                        {QStringLiteral("slide"), tr("Slide")},
                                        {QStringLiteral("report"), tr("Report, 160 mm")},
                                        {QStringLiteral("web"), tr("Web page")}};
    for (const FigurePreset& preset : figurePresets()) {
        m_preset->addItem(preset.isOurs ? texts.value(preset.name, preset.name) : preset.name, preset.name);
        m_preset->setItemData(m_preset->count() - 1, !preset.isOurs, Qt::UserRole + 1);
    }
    m_preset->setCurrentIndex(std::max(0, m_preset->findData(chosen)));
}

void ExportPictureDialog::usePreset()
{
    if (const auto preset = figurePresetNamed(m_preset->currentData().toString()))
        setSettings(*preset);
}

bool ExportPictureDialog::saveAs(const QString& name)
{
    if (!saveFigurePreset(name, settings()))
        return false;
    listPresets(name.trimmed());
    adjust();
    return true;
}

void ExportPictureDialog::askForName()
{
    QString question = tr("Name of these choices:");
    for (;;) {
        bool isGiven = false;
        const QString name =
            QInputDialog::getText(this, tr("Save Choices"), question, QLineEdit::Normal, QString(), &isGiven);
        if (!isGiven || saveAs(name))
            return;
        question = tr("This name cannot be used. Another name:");
    }
}

void ExportPictureDialog::deletePreset()
{
    deleteFigurePreset(m_preset->currentData().toString());
    listPresets({});
    changed();
}

}  // namespace plotix
