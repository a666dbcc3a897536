#include "hostapp/window/ExportImageDialog.h"

#include "hostapp/core/Defaults.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

namespace plotix {

ExportImageDialog::ExportImageDialog(const QString& title, QWidget* parent)
    : QDialog(parent),
      m_width(new QSpinBox(this)),
      m_height(new QSpinBox(this)),
      m_density(new QDoubleSpinBox(this)),
      m_title(new QLineEdit(title, this)),
      m_pixels(new QLabel(this))
{
    setWindowTitle(tr("Export Image"));
    for (QSpinBox* box : {m_width, m_height}) {
        box->setRange(40, 16'384);
        box->setSingleStep(20);
        box->setSuffix(tr(" points"));
        connect(box, &QSpinBox::valueChanged, this, &ExportImageDialog::describePixels);
    }
    m_density->setRange(0.5, 8);
    m_density->setSingleStep(0.5);
    m_density->setDecimals(2);
    m_density->setSuffix(tr(" pixels a point"));
    connect(m_density, &QDoubleSpinBox::valueChanged, this, &ExportImageDialog::describePixels);
    m_title->setMinimumWidth(280);
    m_pixels->setForegroundRole(QPalette::PlaceholderText);
    auto* form = new QFormLayout(this);
    form->addRow(tr("&Width:"), m_width);
    form->addRow(tr("&Height:"), m_height);
    form->addRow(tr("&Density:"), m_density);
    form->addRow(QString(), m_pixels);
    form->addRow(tr("&Title:"), m_title);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    buttons->addButton(tr("&Export…"), QDialogButtonBox::AcceptRole);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    setSize(kUsualGraphSize);
    setDensity(2);
    describePixels();
}

QSize ExportImageDialog::size() const
{
    return {m_width->value(), m_height->value()};
}

double ExportImageDialog::density() const
{
    return m_density->value();
}

QString ExportImageDialog::title() const
{
    return m_title->text();
}

void ExportImageDialog::setSize(const QSize& points)
{
    m_width->setValue(points.width());
    m_height->setValue(points.height());
}

void ExportImageDialog::setDensity(double density)
{
    m_density->setValue(density);
}

void ExportImageDialog::describePixels()
{
    const QSizeF pixels = QSizeF(size()) * density();
    m_pixels->setText(tr("%1 × %2 pixels").arg(qRound(pixels.width())).arg(qRound(pixels.height())));
}

}  // namespace plotix
