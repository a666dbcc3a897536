#include "plugins/PlotixPlugIn/reading/clock/ZoneDialog.h"

#include "base/ZoneNames.h"
#include "plotkit/model/CPTClock.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtCore/QDateTime>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace plotix {

namespace {

constexpr QSize kSize(420, 460);  // points
constexpr int kName = Qt::UserRole, kSearched = Qt::UserRole + 1;

/// As it is compared: whatever its case, and with the minus sign that keyboards have.
QString searchedFor(const QString& text)
{
    return text.toLower().replace(QChar(0x2212), QLatin1Char('-'));
}

/// "Europe/Berlin   Germany   UTC+1", as it is now.
QListWidgetItem* makeItem(const QString& name, double now)
{
    const QTimeZone zone(name.toUtf8());
    const QString country =
        zone.territory() == QLocale::AnyTerritory ? QString() : QLocale::territoryToString(zone.territory());
    QStringList parts{QString(name).replace(QLatin1Char('_'), QLatin1Char(' '))};
    if (!country.isEmpty())
        parts << country;
    parts << plotkit::offsetText(plotkit::offsetAt(zone, now));
    parts.removeDuplicates();
    auto* item = new QListWidgetItem(parts.join(QStringLiteral("   ")));
    item->setData(kName, name);
    item->setData(kSearched, searchedFor(parts.join(QLatin1Char(' ')) + QLatin1Char(' ') + name));
    return item;
}

}  // namespace

ZoneDialog::ZoneDialog(const QTimeZone& present, QWidget* parent)
    : QDialog(parent), m_field(new QLineEdit(this)), m_list(new QListWidget(this)), m_hint(new QLabel(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(localizedText(QT_TRANSLATE_NOOP("Plotix", "Time Zone")));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    m_field->setPlaceholderText(localizedText(QT_TRANSLATE_NOOP("Plotix", "Search for a city, a country or UTC+5:45")));
    m_field->setAccessibleName(m_field->placeholderText());
    m_field->setClearButtonEnabled(true);
    m_field->installEventFilter(this);
    m_list->setAccessibleName(windowTitle());
    m_list->setUniformItemSizes(true);
    m_hint->setWordWrap(true);
    auto* rows = new QVBoxLayout(this);
    for (QWidget* row : std::initializer_list<QWidget*>{m_field, m_list, m_hint, buttons})
        rows->addWidget(row);
    resize(kSize);
    connect(m_field, &QLineEdit::textChanged, this, &ZoneDialog::narrow);
    connect(m_list, &QListWidget::currentRowChanged, this, &ZoneDialog::judge);
    connect(m_list, &QListWidget::itemActivated, this, &ZoneDialog::take);
    connect(buttons, &QDialogButtonBox::accepted, this, &ZoneDialog::take);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    fill(present);
    m_field->setFocus();
}

void ZoneDialog::fill(const QTimeZone& present)
{
    const auto now = static_cast<double>(QDateTime::currentSecsSinceEpoch());
    const QString presentName = QString::fromUtf8(present.id());
    for (const QString& name : zoneNames()) {
        m_list->addItem(makeItem(name, now));
        if (name == presentName)
            m_list->setCurrentRow(m_list->count() - 1);
    }
    narrow();
}

/// Every word typed must be found somewhere; what was chosen stays chosen while it is among them.
void ZoneDialog::narrow()
{
    const QStringList words = searchedFor(m_field->text()).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    int first = -1;
    for (int row = 0; row < m_list->count(); ++row) {
        const QString searched = m_list->item(row)->data(kSearched).toString();
        const bool isFound = std::all_of(words.begin(), words.end(),
                                         [&searched](const QString& word) { return searched.contains(word); });
        m_list->item(row)->setHidden(!isFound);
        if (isFound && first < 0)
            first = row;
    }
    if (!m_list->currentItem() || m_list->currentItem()->isHidden())
        m_list->setCurrentRow(first);
    m_list->scrollToItem(m_list->currentItem());
    judge();
}

void ZoneDialog::judge()
{
    const bool isAny = m_list->currentItem() && !m_list->currentItem()->isHidden();
    m_ok->setEnabled(isAny);
    m_hint->setText(isAny ? QString()
                          : localizedText(QT_TRANSLATE_NOOP("Plotix", "No time zone is called “%1”. Did you mean %2?"))
                                .arg(m_field->text().simplified(), nearestZoneName(m_field->text())));
    m_hint->setVisible(!isAny);
}

void ZoneDialog::take()
{
    const QListWidgetItem* item = m_list->currentItem();
    if (!item || item->isHidden())
        return;
    const QString zone = item->data(kName).toString();
    accept();
    emit zoneGiven(zone);
}

bool ZoneDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_field || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Up && key != Qt::Key_Down && key != Qt::Key_PageUp && key != Qt::Key_PageDown)
        return false;
    QCoreApplication::sendEvent(m_list, event);
    return true;
}

}  // namespace plotix
