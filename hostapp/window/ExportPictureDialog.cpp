#include "hostapp/window/ExportPictureDialog.h"

#include <QtCore/QSettings>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

namespace plotix {

namespace {

// Rows of the two lists. Stored as numbers: never change the order.
enum WhatRow { GraphRow, GraphAndTableRow };
enum FormatRow { PngRow, PdfRow };

// Names in the user's settings. Stored: never change.
constexpr auto kWhatKey = "ExportPicture/what";
constexpr auto kFormatKey = "ExportPicture/format";
constexpr auto kSizeKey = "ExportPicture/size";
constexpr auto kDensityKey = "ExportPicture/density";

constexpr double kLongestSide = 32'767;  // pixels; the longest that is drawn
constexpr double kMostPixels = 200e6;

bool isTooLarge(const QSizeF& pixels)
{
    return std::max(pixels.width(), pixels.height()) > kLongestSide || pixels.width() * pixels.height() > kMostPixels;
}

TrendPicture remembered()
{
    const QSettings settings;
    TrendPicture picture;
    if (settings.value(QLatin1String(kWhatKey)).toInt() == GraphAndTableRow)
        picture.what = TrendPicture::What::GraphAndTable;
    if (settings.value(QLatin1String(kFormatKey)).toInt() == PdfRow)
        picture.format = FileKind::Pdf;
    picture.size = settings.value(QLatin1String(kSizeKey), picture.size).toSize();
    picture.density = settings.value(QLatin1String(kDensityKey), picture.density).toDouble();
    return picture;
}

}  // namespace

ExportPictureDialog::ExportPictureDialog(const QString& title, Table table, QWidget* parent)
    : QDialog(parent),
      m_what(new QComboBox(this)),
      m_format(new QComboBox(this)),
      m_width(new QSpinBox(this)),
      m_height(new QSpinBox(this)),
      m_density(new QDoubleSpinBox(this)),
      m_title(new QLineEdit(title, this)),
      m_pixels(new QLabel(this))
{
    setWindowTitle(tr("Export Picture"));
    buildFields(table);
    buildForm(title);
    setPicture(remembered());
    adjust();
}

void ExportPictureDialog::buildFields(Table table)
{
    m_what->addItems({tr("Graph, as on the screen"), tr("Graph and table, dark on white")});
    if (table == Table::NotOffered)
        qobject_cast<QStandardItemModel*>(m_what->model())->item(GraphAndTableRow)->setEnabled(false);
    m_format->addItems({tr("PNG, for screens and mail"), tr("PDF, sharp at every size")});
    for (QSpinBox* box : {m_width, m_height}) {
        box->setRange(40, 16'384);
        box->setSingleStep(20);
        box->setSuffix(tr(" points"));
        connect(box, &QSpinBox::valueChanged, this, &ExportPictureDialog::adjust);
    }
    m_density->setRange(0.5, 8);
    m_density->setSingleStep(0.5);
    m_density->setDecimals(2);
    m_density->setSuffix(tr(" pixels a point"));
    connect(m_density, &QDoubleSpinBox::valueChanged, this, &ExportPictureDialog::adjust);
    connect(m_what, &QComboBox::currentIndexChanged, this, &ExportPictureDialog::adjust);
    connect(m_format, &QComboBox::currentIndexChanged, this, &ExportPictureDialog::adjust);
    m_title->setMinimumWidth(280);
    m_pixels->setForegroundRole(QPalette::PlaceholderText);
    m_pixels->setWordWrap(true);
}

void ExportPictureDialog::buildForm(const QString& title)
{
    m_title->setText(title);
    auto* form = new QFormLayout(this);
    form->addRow(tr("&Picture of:"), m_what);
    form->addRow(tr("&Format:"), m_format);
    form->addRow(tr("&Width:"), m_width);
    form->addRow(tr("&Height:"), m_height);
    form->addRow(tr("&Density:"), m_density);
    form->addRow(QString(), m_pixels);
    form->addRow(tr("&Title:"), m_title);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_export = buttons->addButton(tr("&Export…"), QDialogButtonBox::AcceptRole);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

TrendPicture ExportPictureDialog::picture() const
{
    return {m_what->currentIndex() == GraphAndTableRow ? TrendPicture::What::GraphAndTable : TrendPicture::What::Graph,
            m_format->currentIndex() == PdfRow ? FileKind::Pdf : FileKind::Png,
            {m_width->value(), m_height->value()},
            m_density->value(),
            m_title->text()};
}

void ExportPictureDialog::setPicture(const TrendPicture& picture)
{
    const auto* rows = qobject_cast<QStandardItemModel*>(m_what->model());
    const bool withTable = picture.what == TrendPicture::What::GraphAndTable;
    m_what->setCurrentIndex(withTable && rows->item(GraphAndTableRow)->isEnabled() ? GraphAndTableRow : GraphRow);
    m_format->setCurrentIndex(picture.format == FileKind::Pdf ? PdfRow : PngRow);
    m_width->setValue(picture.size.width());
    m_height->setValue(picture.size.height());
    m_density->setValue(picture.density);
}

void ExportPictureDialog::adjust()
{
    const bool isPixels = m_format->currentIndex() == PngRow;
    const QSizeF pixels = QSizeF(m_width->value(), m_height->value()) * m_density->value();
    const bool tooLarge = isPixels && isTooLarge(pixels);
    m_density->setEnabled(isPixels);
    m_pixels->setText(!isPixels  ? tr("Lines and letters, no pixels")
                      : tooLarge ? tr("%1 × %2 pixels are too many: choose less, or PDF")
                                       .arg(qRound(pixels.width()))
                                       .arg(qRound(pixels.height()))
                                 : tr("%1 × %2 pixels").arg(qRound(pixels.width())).arg(qRound(pixels.height())));
    if (m_export)
        m_export->setEnabled(!tooLarge);
}

void ExportPictureDialog::accept()
{
    QSettings settings;
    settings.setValue(QLatin1String(kWhatKey), m_what->currentIndex());
    settings.setValue(QLatin1String(kFormatKey), m_format->currentIndex());
    settings.setValue(QLatin1String(kSizeKey), QSize(m_width->value(), m_height->value()));
    settings.setValue(QLatin1String(kDensityKey), m_density->value());
    QDialog::accept();
}

}  // namespace plotix
