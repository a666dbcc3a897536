#include "hostapp/window/importing/ImportDialog.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

namespace plotix {

ImportDialog::ImportDialog(const QStringList& agentNames, QWidget* parent)
    : QDialog(parent),
      m_file(new QLineEdit(this)),
      m_agent(new QComboBox(this)),
      m_where(new QLineEdit(this)),
      m_timeColumn(new QLineEdit(this)),
      m_timeZone(new QLineEdit(this)),
      m_dateOrder(new QComboBox(this)),
      m_skipBadRows(new QCheckBox(tr("&Skip rows that cannot be read"), this))
{
    setWindowTitle(tr("Import Measurements"));
    m_agent->setEditable(true);
    m_agent->addItems(agentNames);
    m_agent->setCurrentText({});
    m_agent->setToolTip(tr("The source of these measurements; a new name makes a new one."));
    m_where->setObjectName(QStringLiteral("rows"));
    m_where->setPlaceholderText(tr("all, or those with a text in a column, such as origin=EWR"));
    m_timeColumn->setPlaceholderText(tr("found out, or the heading of a column"));
    m_timeZone->setPlaceholderText(tr("yours, or such as Europe/Berlin or +01:00"));
    m_dateOrder->addItems({tr("Found out from the file"), tr("Day before month"), tr("Month before day")});
    auto* choose = new QPushButton(tr("&Choose…"), this);
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(m_file);
    fileRow->addWidget(choose);
    auto* form = new QFormLayout(this);
    form->addRow(tr("&File:"), fileRow);
    static_cast<QLabel*>(form->labelForField(fileRow))->setBuddy(m_file);  // a row of two widgets gets no buddy itself
    setTabOrder(m_file, choose);
    setTabOrder(choose, m_agent);
    form->addRow(tr("&Agent:"), m_agent);
    form->addRow(tr("&Rows:"), m_where);
    form->addRow(tr("Time c&olumn:"), m_timeColumn);
    form->addRow(tr("&Time zone:"), m_timeZone);
    form->addRow(tr("&Dates:"), m_dateOrder);
    form->addRow(QString(), m_skipBadRows);
    m_buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_import = m_buttons->addButton(tr("&Import"), QDialogButtonBox::AcceptRole);
    form->addRow(m_buttons);
    m_file->setAccessibleName(tr("File"));
    m_file->setMinimumWidth(360);
    connect(choose, &QPushButton::clicked, this, &ImportDialog::chooseFile);
    connect(m_file, &QLineEdit::textChanged, this, &ImportDialog::fileDidChange);
    connect(m_where, &QLineEdit::textChanged, this, &ImportDialog::updateImport);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    fileDidChange();
}

void ImportDialog::setMoreToCome(int files)
{
    if (files == 0)
        return;
    setWindowTitle(tr("Import Measurements (%n more to come)", nullptr, files));
    QPushButton* skip = m_buttons->addButton(tr("&Skip This File"), QDialogButtonBox::ActionRole);
    connect(skip, &QPushButton::clicked, this, [this] { done(kSkipped); });
}

void ImportDialog::setFile(const QString& path)
{
    m_file->setText(path);
}

QString ImportDialog::file() const
{
    return m_file->text().trimmed();
}

ImportOptions ImportDialog::options() const
{
    ImportOptions options;
    options.agentName = m_agent->currentText().trimmed();
    if (const QString where = m_where->text().trimmed(); !where.isEmpty())
        options.where = {
            {where.section(QLatin1Char('='), 0, 0).trimmed(), where.section(QLatin1Char('='), 1).trimmed()}};
    options.timeColumn = m_timeColumn->text().trimmed();
    options.timeZone = m_timeZone->text().trimmed();
    options.dateOrder = static_cast<DateOrder>(m_dateOrder->currentIndex());
    options.skipBadRows = m_skipBadRows->isChecked();
    return options;
}

void ImportDialog::chooseFile()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Choose a File with Measurements"), file(),
                                                      tr("Text files (*.csv *.tsv *.txt *.dat);;All files (*)"));
    if (!path.isEmpty())
        setFile(path);
}

void ImportDialog::updateImport()
{
    QString reason;
    if (!QFileInfo(file()).isFile())
        reason = tr("Choose a file first.");
    else if (const QString where = m_where->text().trimmed(); !where.isEmpty() && where.indexOf(QLatin1Char('=')) < 1)
        reason = tr("Write the rows you want as COLUMN=TEXT.");
    m_import->setEnabled(reason.isEmpty());
    m_import->setToolTip(reason);
}

void ImportDialog::fileDidChange()
{
    const QFileInfo info(file());
    updateImport();
    if (m_agent->currentText().isEmpty() || m_agent->currentText() == m_proposedAgent) {
        m_proposedAgent = info.completeBaseName();
        m_agent->setCurrentText(m_proposedAgent);
    }
}

}  // namespace plotix
