#include "hostapp/window/SiteDetailsDialog.h"

#include "base/ZoneNames.h"

#include <QtWidgets/QCompleter>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

namespace plotix {

SiteDetailsDialog::SiteDetailsDialog(const QString& name, const QString& location, const QTimeZone& zone,
                                     QWidget* parent)
    : QDialog(parent),
      m_name(new QLineEdit(name, this)),
      m_location(new QLineEdit(location, this)),
      m_zone(new QLineEdit(QString::fromUtf8(zone.id()), this)),
      m_problem(new QLabel(this))
{
    setWindowTitle(tr("Name and Location"));
    m_name->setMinimumWidth(320);
    m_location->setPlaceholderText(tr("such as Hillside, or 54.1° N 12.1° E"));
    m_zone->setPlaceholderText(tr("such as Europe/Berlin"));
    m_zone->setClearButtonEnabled(true);
    auto* names = new QCompleter(zoneNames(), this);
    names->setCaseSensitivity(Qt::CaseInsensitive);
    names->setFilterMode(Qt::MatchContains);
    m_zone->setCompleter(names);
    auto* hint = new QLabel(tr("Reports say both, as “name at location”."), this);
    hint->setForegroundRole(QPalette::PlaceholderText);
    auto* zoneHint = new QLabel(tr("A trend can say its times by the clocks of the site: View ▸ Time Zone."), this);
    zoneHint->setForegroundRole(QPalette::PlaceholderText);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_accept = buttons->button(QDialogButtonBox::Ok);
    auto* form = new QFormLayout(this);
    form->addRow(tr("&Name:"), m_name);
    form->addRow(tr("&Location:"), m_location);
    form->addRow(QString(), hint);
    form->addRow(tr("Time &zone:"), m_zone);
    form->addRow(QString(), zoneHint);
    form->addRow(QString(), m_problem);
    form->addRow(buttons);
    for (const QLineEdit* field : {m_name, m_zone})
        connect(field, &QLineEdit::textChanged, this, &SiteDetailsDialog::judge);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    judge();
}

void SiteDetailsDialog::judge()
{
    const QString typed = m_zone->text().simplified();
    const bool isKnown = typed.isEmpty() || zone().isValid();
    m_problem->setText(
        isKnown ? QString() : tr("No time zone is called “%1”. Did you mean %2?").arg(typed, nearestZoneName(typed)));
    m_problem->setVisible(!isKnown);
    m_accept->setEnabled(isKnown && !name().isEmpty());
}

QTimeZone SiteDetailsDialog::zone() const
{
    return zoneNamed(m_zone->text()).value_or(QTimeZone());
}

QString SiteDetailsDialog::name() const
{
    return m_name->text().simplified();
}

QString SiteDetailsDialog::location() const
{
    return m_location->text().simplified();
}

}  // namespace plotix
