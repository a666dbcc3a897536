#include "hostapp/window/annotating/NoteDialog.h"

#include "hostapp/window/moments/MomentEdit.h"

#include <QtCore/QLocale>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

#include <algorithm>

namespace plotix {

namespace {

constexpr int kTextWidth = 420;  // points
constexpr int kTextLines = 5;
constexpr int kPropertyLines = 5;

MomentEdit* momentField(double seconds, const QTimeZone& zone, QWidget* parent)
{
    auto* field = new MomentEdit(seconds, MomentEdit::Day::SameTime, parent);
    field->sayBy(zone);
    QString format = QLocale().dateTimeFormat(QLocale::ShortFormat);
    if (!format.contains(QLatin1String("yyyy")))
        format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    if (!format.contains(QLatin1String("ss")))
        format.replace(QLatin1String("mm"), QLatin1String("mm:ss"));
    field->setDisplayFormat(format);
    return field;
}

}  // namespace

NoteDialog::NoteDialog(const SiteNote& note, const Properties& properties, QWidget* parent, const QTimeZone& zone)
    : QDialog(parent),
      m_before(note),
      m_text(new QPlainTextEdit(note.text, this)),
      m_from(momentField(note.from, zone, this)),
      m_isSpan(new QCheckBox(tr("&Until:"), this)),
      m_to(momentField(note.to, zone, this)),
      m_author(new QLineEdit(note.author, this)),
      m_isAboutAll(new QCheckBox(tr("A&ll properties"), this)),
      m_properties(new QListWidget(this)),
      m_problem(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(note.id == 0 ? tr("New Note") : tr("Note"));
    setObjectName(QStringLiteral("note"));
    m_isSpan->setChecked(note.to > note.from);
    m_to->setEnabled(m_isSpan->isChecked());
    m_to->setAccessibleName(tr("End of the span"));
    fillProperties(properties);
    layOutFields(zone);
    connect(m_isSpan, &QCheckBox::toggled, m_to, &QWidget::setEnabled);
    connect(m_isSpan, &QCheckBox::toggled, this, &NoteDialog::check);
    connect(m_isAboutAll, &QCheckBox::toggled, this, &NoteDialog::check);
    connect(m_from, &QDateTimeEdit::dateTimeChanged, this, &NoteDialog::check);
    connect(m_to, &QDateTimeEdit::dateTimeChanged, this, &NoteDialog::check);
    for (MomentEdit* edit : {m_from, m_to})
        connect(edit, &MomentEdit::textTaken, this, &NoteDialog::check);
    connect(m_text, &QPlainTextEdit::textChanged, this, &NoteDialog::check);
    connect(m_properties, &QListWidget::itemChanged, this, &NoteDialog::check);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    check();
}

void NoteDialog::fillProperties(const Properties& properties)
{
    m_isAboutAll->setChecked(m_before.properties.empty());
    m_properties->setAccessibleName(tr("Properties that the note is about"));
    m_properties->setMaximumHeight(fontMetrics().lineSpacing() * (kPropertyLines + 1));
    for (const auto& [id, name] : properties) {
        auto* item = new QListWidgetItem(name, m_properties);
        item->setData(Qt::UserRole, id);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        const bool isMeant =
            std::find(m_before.properties.begin(), m_before.properties.end(), id) != m_before.properties.end();
        item->setCheckState(isMeant ? Qt::Checked : Qt::Unchecked);
    }
}

void NoteDialog::layOutFields(const QTimeZone& zone)
{
    m_text->setTabChangesFocus(true);
    m_text->setFocus();
    m_text->setMinimumWidth(kTextWidth);
    m_text->setFixedHeight(fontMetrics().lineSpacing() * (kTextLines + 1));
    m_problem->setObjectName(QStringLiteral("problem"));
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setWordWrap(true);
    m_problem->setMinimumHeight(fontMetrics().lineSpacing());
    auto* form = new QFormLayout(this);
    form->addRow(tr("&Text:"), m_text);
    auto* times = new QHBoxLayout;
    times->addWidget(m_from);
    times->addWidget(m_isSpan);
    times->addWidget(m_to);
    if (zone.isValid())
        times->addWidget(new QLabel(QString::fromLatin1(zone.id()), this));
    times->addStretch();
    auto* time = new QLabel(tr("T&ime:"), this);
    time->setBuddy(m_from);
    form->addRow(time, times);
    form->addRow(tr("&Author:"), m_author);
    form->addRow(tr("About:"), m_isAboutAll);
    form->addRow(QString(), m_properties);
    form->addRow(m_problem);
    form->addRow(m_buttons);
}

SiteNote NoteDialog::note() const
{
    SiteNote note = m_before;
    note.text = m_text->toPlainText().trimmed();
    note.author = m_author->text().trimmed();
    note.from = m_from->moment();
    note.to = m_isSpan->isChecked() ? m_to->moment() : note.from;
    if (m_isAboutAll->isChecked()) {
        note.properties.clear();
        return note;
    }
    for (int row = 0; row < m_properties->count(); ++row) {
        const QListWidgetItem* item = m_properties->item(row);
        const qint64 id = item->data(Qt::UserRole).toLongLong();
        std::erase(note.properties, id);
        if (item->checkState() == Qt::Checked)
            note.properties.push_back(id);
    }
    std::sort(note.properties.begin(), note.properties.end());
    return note;
}

QString NoteDialog::problem() const
{
    const SiteNote note = this->note();
    if (!m_from->problem().isEmpty())
        return m_from->problem();
    if (m_isSpan->isChecked() && !m_to->problem().isEmpty())
        return m_to->problem();
    if (note.text.isEmpty())
        return tr("Write what is to be remembered.");
    if (note.to < note.from || (m_isSpan->isChecked() && note.to == note.from))
        return tr("The span ends before it begins: choose a later end.");
    if (!m_isAboutAll->isChecked() && note.properties.empty())
        return tr("Tick the properties that the note is about, or all of them.");
    return {};
}

void NoteDialog::reject()
{
    if (note().text == m_before.text)
        QDialog::reject();
    else if (!findChild<QMessageBox*>())
        askWhatBecomesOfTheText();
}

void NoteDialog::askWhatBecomesOfTheText()
{
    auto* box = new QMessageBox(QMessageBox::Question, windowTitle(), tr("Keep what you have written?"),
                                QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(problem().isEmpty() ? tr("“Cancel” goes on writing.") : problem());
    box->button(QMessageBox::Save)->setEnabled(problem().isEmpty());
    box->setDefaultButton(problem().isEmpty() ? QMessageBox::Save : QMessageBox::Cancel);
    connect(box, &QMessageBox::finished, this, [this](int answer) {
        if (answer == QMessageBox::Save)
            accept();
        else if (answer == QMessageBox::Discard)
            QDialog::reject();
    });
    box->open();
}

void NoteDialog::check()
{
    m_properties->setEnabled(!m_isAboutAll->isChecked());
    m_problem->setText(problem());
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(m_problem->text().isEmpty());
}

}  // namespace plotix
