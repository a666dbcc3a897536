#include "hostapp/window/SiteDetailsDialog.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

namespace plotix {

SiteDetailsDialog::SiteDetailsDialog(const QString& name, const QString& location, QWidget* parent)
    : QDialog(parent), m_name(new QLineEdit(name, this)), m_location(new QLineEdit(location, this))
{
    setWindowTitle(tr("Name and Location"));
    m_name->setMinimumWidth(320);
    m_location->setPlaceholderText(tr("such as Hillside, or 54.1° N 12.1° E"));
    auto* hint = new QLabel(tr("Reports say both, as “name at location”."), this);
    hint->setForegroundRole(QPalette::PlaceholderText);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* form = new QFormLayout(this);
    form->addRow(tr("&Name:"), m_name);
    form->addRow(tr("&Location:"), m_location);
    form->addRow(QString(), hint);
    form->addRow(buttons);
    QPushButton* accept = buttons->button(QDialogButtonBox::Ok);
    connect(m_name, &QLineEdit::textChanged, this, [this, accept] { accept->setEnabled(!this->name().isEmpty()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
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
