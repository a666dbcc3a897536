#include "hostapp/window/importing/ImportDialog.h"

#include "hostapp/window/importing/ColumnChoices.h"
#include "hostapp/window/importing/FirstRows.h"
#include "hostapp/window/importing/ImportWords.h"
#include "hostapp/window/importing/PreviewReader.h"
#include "hostapp/window/importing/ReadingFields.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QTableView>

namespace plotix {

namespace {

constexpr int kPause = 250;  // milliseconds without a change before the file is read again

QString asSentence(QString words)
{
    if (!words.isEmpty())
        words[0] = words[0].toUpper();
    return words.endsWith(QLatin1Char('.')) ? words : words + QLatin1Char('.');
}

}  // namespace

ImportDialog::ImportDialog(const QStringList& agentNames, QWidget* parent)
    : QDialog(parent),
      m_file(new QLineEdit(this)),
      m_agent(new QComboBox(this)),
      m_fields(new ReadingFields(this)),
      m_columns(new ColumnChoices(this)),
      m_rows(new FirstRows(this)),
      m_reader(new PreviewReader(this)),
      m_all(new QCheckBox(this))
{
    setWindowTitle(tr("Import Measurements"));
    m_agent->addItems(agentNames);
    m_agent->setCurrentText({});
    m_pause.setSingleShot(true);
    build();
    connectAll();
    fileDidChange();
}

void ImportDialog::connectAll()
{
    connect(m_file, &QLineEdit::textChanged, this, &ImportDialog::fileDidChange);
    connect(m_fields, &ReadingFields::changed, this, &ImportDialog::didChange);
    connect(m_columns, &ColumnChoices::changed, this, &ImportDialog::didChange);
    connect(&m_pause, &QTimer::timeout, this, &ImportDialog::readAgain);
    connect(m_reader, &PreviewReader::previewed, this, &ImportDialog::showPreview);
    connect(m_reader, &PreviewReader::progressed, this,
            [this](int permille) { m_howMany->setText(tr("The file is being read: %1 %").arg(permille / 10)); });
}

void ImportDialog::setMoreToCome(int files)
{
    m_skip->setVisible(files > 0);
    m_all->setVisible(files > 0);
    m_all->setChecked(m_all->isChecked() && files > 0);
    setWindowTitle(files > 0 ? tr("Import Measurements (%n more to come)", nullptr, files) : tr("Import Measurements"));
    m_all->setText(tr("&Use these choices for the other %n file(s) too", nullptr, files));
}

void ImportDialog::setStandsForAll(bool stands)
{
    m_all->setChecked(stands && m_all->isVisibleTo(this));
}

bool ImportDialog::standsForAll() const
{
    return m_all->isChecked();
}

void ImportDialog::setFile(const QString& path)
{
    m_file->setText(path);
}

QString ImportDialog::file() const
{
    return m_file->text().trimmed();
}

void ImportDialog::setOptions(const ImportOptions& options)
{
    m_fields->setOptions(options);
    m_columns->setOptions(options);
    if (!options.agentName.isEmpty())
        m_agent->setCurrentText(options.agentName);
    readAgain();
}

ImportOptions ImportDialog::options() const
{
    ImportOptions options;
    options.agentName = m_agent->currentText().trimmed();
    m_fields->addTo(options);
    m_columns->addTo(options);
    return options;
}

bool ImportDialog::namesAgentByFile() const
{
    return m_agent->currentText() == m_proposedAgent;
}

void ImportDialog::chooseFile()
{
    const QString path =
        QFileDialog::getOpenFileName(this, tr("Choose a File with Measurements"), file(),
                                     tr("Measurements (*.csv *.tsv *.txt *.dat *.log *.gz *.xlsx);;All files (*)"));
    if (!path.isEmpty())
        setFile(path);
}

void ImportDialog::fileDidChange()
{
    if (m_agent->currentText().isEmpty() || m_agent->currentText() == m_proposedAgent) {
        m_proposedAgent = QFileInfo(file()).completeBaseName();
        m_agent->setCurrentText(m_proposedAgent);
    }
    m_preview.reset();
    m_refusal.reset();
    m_fields->forgetGuesses();
    m_columns->setPreview({});
    m_rows->setPreview({});
    m_notes->clear();
    m_mustFocus = true;
    readAgain();
}

void ImportDialog::didChange()
{
    m_reader->cancel();  // what it would answer is out of date
    m_isCurrent = false;
    m_refusal.reset();
    m_pause.start(kPause);
    showState();
}

void ImportDialog::readAgain()
{
    m_pause.stop();
    m_isCurrent = false;
    if (QFileInfo(file()).isFile() && m_fields->wrongText().isEmpty()) {
        m_asked = options();
        m_reader->request(file(), m_asked);
        m_howMany->setText(tr("The file is being read…"));
    } else {
        m_reader->cancel();
        m_howMany->clear();
    }
    showState();
}

void ImportDialog::showPreview(const ImportPreview& preview)
{
    m_preview = preview;
    m_isCurrent = true;
    m_fields->showGuesses(preview);
    m_columns->setPreview(preview);
    m_rows->setPreview(preview);
    QStringList notes;
    for (const ImportFinding& note : preview.notes)
        notes << asSentence(shownText(note));
    m_notes->setText(notes.join(QLatin1Char('\n')));
    showHowMany();
    showState();
    constexpr int kMostFitted = 50;  // more columns than that are not looked at one by one
    for (int column = 0; column < std::min(kMostFitted, m_rows->columnCount()); ++column)
        m_rowView->resizeColumnToContents(column);
    if (options() != m_asked) {  // what was chosen for a column came, or went with it
        readAgain();
        return;
    }
    if (std::exchange(m_mustFocus, false))
        focusProblem();
}

const ImportFinding* ImportDialog::problem() const
{
    if (m_refusal)
        return &*m_refusal;
    return m_preview && m_preview->problem ? &*m_preview->problem : nullptr;
}

void ImportDialog::showState()
{
    const QString wrong = m_fields->wrongText();
    const ImportFinding* finding = problem();
    if (!wrong.isEmpty())
        showProblem(wrong, m_fields->wrongOption());
    else if (finding)
        showProblem(asSentence(shownText(*finding)), optionOf(*finding));
    else
        showProblem({}, ImportOption::None);
    QString reason = wrong;
    if (!QFileInfo(file()).isFile())
        reason = tr("Choose a file first.");
    else if (m_isCurrent && m_preview && isRefused(*m_preview))
        reason = asSentence(shownText(*m_preview->problem));
    m_import->setEnabled(reason.isEmpty());
    m_import->setToolTip(reason);
}

void ImportDialog::showProblem(const QString& text, ImportOption option)
{
    m_problemRow->setVisible(!text.isEmpty());
    m_problem->setText(text);
    m_fields->mark(option, text);
}

void ImportDialog::showHowMany()
{
    const auto shown = static_cast<int>(m_preview->rows.size());
    const auto read = static_cast<int>(m_preview->rowsLookedAt);
    if (shown == 0)
        m_howMany->clear();
    else if (!m_preview->isWhole)
        m_howMany->setText(tr("The first %n row(s), as understood", nullptr, shown));
    else if (shown == read)
        m_howMany->setText(tr("All %n row(s), as understood", nullptr, shown));
    else
        m_howMany->setText(tr("The first %n row(s) of %1, as understood", nullptr, shown).arg(read));
}

void ImportDialog::showRefusal(const ImportFinding& finding)
{
    m_refusal = finding;
    m_mustFocus = false;
    showState();
    focusProblem();
}

/// Where the problem is settled: a field, or a cell of the column it is about.
void ImportDialog::focusProblem()
{
    const ImportFinding* finding = problem();
    if (!finding)
        return;
    const ImportOption option = optionOf(*finding);
    if (QWidget* field = m_fields->field(option)) {
        field->setFocus();
        m_side->ensureWidgetVisible(field);
        return;
    }
    const int row = m_columns->rowOf(finding->column);
    if (row >= 0 && (option == ImportOption::Unit || option == ImportOption::Name)) {
        m_columnView->setCurrentIndex(
            m_columns->index(row, option == ImportOption::Unit ? ColumnChoices::Unit : ColumnChoices::Name));
        m_columnView->setFocus();
    }
}

/// A widget can have the focus only once it is shown.
void ImportDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (m_refusal)
        focusProblem();
}

}  // namespace plotix
