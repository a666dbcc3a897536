#include "hostapp/window/ExportPictureDialog.h"

#include <QtCore/QSettings>
#include <QtGui/QPainter>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

#include <algorithm>

namespace plotix {

namespace {

// Rows of the lists. Stored as numbers: never change the order.
enum WhatRow { GraphRow, GraphAndTableRow };
constexpr FileKind kFormats[] = {FileKind::Png, FileKind::Pdf, FileKind::Svg};
enum FormatRow { PngRow, PdfRow, SvgRow };

// Names in the user's settings. Stored: never change.
constexpr auto kWhatKey = "ExportPicture/what";
constexpr auto kFormatKey = "ExportPicture/format";
constexpr auto kFigureKey = "ExportPicture/figure";
constexpr auto kRecipeKey = "ExportPicture/recipe";

constexpr double kLongestSide = 32'767;  // pixels; the longest that is drawn
constexpr double kMostPixels = 200e6;
constexpr QSize kPreviewSize(420, 340);
constexpr int kPreviewDelay = 60;  // milliseconds; typing a number is one change

bool isTooLarge(const QSizeF& pixels)
{
    return std::max(pixels.width(), pixels.height()) > kLongestSide || pixels.width() * pixels.height() > kMostPixels;
}

/// As large as graphs usually are, twice as dense.
FigureSettings usualSettings()
{
    return {double(kUsualGraphSize.width()), double(kUsualGraphSize.height()), FigureSettings::Unit::Points, 144};
}

/// On squares where nothing is drawn, as drawing programs show it.
QPixmap onSquares(const QImage& picture)
{
    constexpr int kSquare = 8;
    QPixmap pixmap(picture.size());
    QPainter painter(&pixmap);
    for (int y = 0; y < picture.height(); y += kSquare)
        for (int x = 0; x < picture.width(); x += kSquare)
            painter.fillRect(x, y, kSquare, kSquare, (x + y) / kSquare % 2 ? QColor(0xee, 0xee, 0xee) : Qt::white);
    painter.drawImage(picture.rect(), picture);
    painter.end();
    pixmap.setDevicePixelRatio(picture.devicePixelRatio());
    return pixmap;
}

void chooseWord(QComboBox& box, const QString& word)
{
    box.setCurrentIndex(std::max(0, box.findData(word)));
}

}  // namespace

ExportPictureDialog::ExportPictureDialog(const QString& title, Table table, QWidget* parent, Trend trend)
    : QDialog(parent),
      m_trend(std::move(trend)),
      m_what(new QComboBox(this)),
      m_preset(new QComboBox(this)),
      m_format(new QComboBox(this)),
      m_unit(new QComboBox(this)),
      m_width(new QDoubleSpinBox(this)),
      m_height(new QDoubleSpinBox(this)),
      m_dots(new QSpinBox(this)),
      m_fontSize(new QDoubleSpinBox(this)),
      m_lineWidth(new QDoubleSpinBox(this)),
      m_transparent(new QCheckBox(tr("T&ransparent ground"), this)),
      m_recipe(new QCheckBox(tr("&Opens again in Plotix"), this)),
      m_title(new QLineEdit(title, this)),
      m_pixels(new QLabel(this)),
      m_preview(new QLabel(this)),
      m_save(new QPushButton(tr("&Save…"), this)),
      m_delete(new QPushButton(tr("&Delete"), this))
{
    setWindowTitle(tr("Export Picture"));
    buildFields(table);
    buildLooks();
    layOut();
    const QSettings stored;
    const QVariantMap figure = stored.value(QLatin1String(kFigureKey)).toMap();
    m_recipe->setChecked(stored.value(QLatin1String(kRecipeKey), true).toBool());
    listPresets({});
    setWhat(stored.value(QLatin1String(kWhatKey)).toInt() == GraphAndTableRow ? TrendPicture::What::GraphAndTable
                                                                              : TrendPicture::What::Graph);
    setFormat(kFormats[std::clamp(stored.value(QLatin1String(kFormatKey)).toInt(), int(PngRow), int(SvgRow))]);
    setSettings(figure.isEmpty() ? usualSettings() : figureSettingsFrom(figure));
    m_previewTimer.setSingleShot(true);
    connect(&m_previewTimer, &QTimer::timeout, this, &ExportPictureDialog::updatePreview);
}

void ExportPictureDialog::buildFields(Table table)
{
    m_what->addItems({tr("Graph, as on the screen"), tr("Graph and table, dark on white")});
    if (table == Table::NotOffered)
        qobject_cast<QStandardItemModel*>(m_what->model())->item(GraphAndTableRow)->setEnabled(false);
    m_format->addItems(
        {tr("PNG, for screens and mail"), tr("PDF, sharp at every size"), tr("SVG, to go on drawing and for the web")});
    m_unit->addItems({tr("millimeters"), tr("points"), tr("pixels")});
    m_unit->setAccessibleName(tr("Unit of width and height"));
    for (QDoubleSpinBox* box : {m_width, m_height}) {
        box->setRange(1, kLongestSide);
        box->setDecimals(1);
        box->setSingleStep(5);
        connect(box, &QDoubleSpinBox::valueChanged, this, &ExportPictureDialog::changed);
    }
    m_width->setAccessibleName(tr("Width"));
    m_height->setAccessibleName(tr("Height"));
    m_dots->setRange(36, 2400);
    m_dots->setSuffix(tr(" dots an inch"));
    m_save->setAccessibleName(tr("Save these choices by a name"));
    m_delete->setAccessibleName(tr("Delete the saved choices of this name"));
    connect(m_dots, &QSpinBox::valueChanged, this, &ExportPictureDialog::changed);
    connect(m_unit, &QComboBox::currentIndexChanged, this, &ExportPictureDialog::changed);
    connect(m_what, &QComboBox::currentIndexChanged, this, &ExportPictureDialog::adjust);
    connect(m_format, &QComboBox::currentIndexChanged, this, &ExportPictureDialog::adjust);
    connect(m_title, &QLineEdit::textChanged, this, &ExportPictureDialog::adjust);
    connect(m_preset, &QComboBox::activated, this, &ExportPictureDialog::usePreset);
    connect(m_save, &QPushButton::clicked, this, &ExportPictureDialog::askForName);
    connect(m_delete, &QPushButton::clicked, this, &ExportPictureDialog::deletePreset);
    m_title->setMinimumWidth(280);
    m_pixels->setForegroundRole(QPalette::PlaceholderText);
    m_pixels->setWordWrap(true);
}

QComboBox* ExportPictureDialog::addChoice(const QList<std::pair<QString, QString>>& wordsAndTexts)
{
    auto* box = new QComboBox(this);
    box->addItem(tr("As the trend"), QString());
    for (const auto& [word, text] : wordsAndTexts)
        box->addItem(text, word);
    connect(box, &QComboBox::currentIndexChanged, this, &ExportPictureDialog::changed);
    return box;
}

void ExportPictureDialog::buildLooks()
{
    m_look = addChoice({{QStringLiteral("dark"), tr("Dark")},
                        {QStringLiteral("light"), tr("Light")},
                        {QStringLiteral("paper"), tr("Paper")}});
    m_legend = addChoice({{QStringLiteral("none"), tr("None")},
                          {QStringLiteral("below"), tr("Below the graph")},
                          {QStringLiteral("right"), tr("At the right")}});
    m_axisTitles = addChoice({{QStringLiteral("usual"), tr("Usual")},
                              {QStringLiteral("none"), tr("None")},
                              {QStringLiteral("values"), tr("Along value axes")},
                              {QStringLiteral("all"), tr("Along all axes")}});
    m_valueLine = addChoice({{QStringLiteral("none"), tr("Left out")}});
    m_valueLine->setToolTip(tr("A line that is held, and the box that says what is read there."));
    m_fontSize->setRange(4.5, 36);  // the least stands for none
    m_fontSize->setSingleStep(0.5);
    m_fontSize->setDecimals(1);
    m_fontSize->setSuffix(tr(" points"));
    m_lineWidth->setRange(0.1, 5);
    m_lineWidth->setSingleStep(0.1);
    m_lineWidth->setSuffix(tr(" times as wide"));
    for (QDoubleSpinBox* box : {m_fontSize, m_lineWidth}) {
        box->setSpecialValueText(tr("As the trend"));
        connect(box, &QDoubleSpinBox::valueChanged, this, &ExportPictureDialog::changed);
    }
    m_recipe->setChecked(true);
    m_recipe->setToolTip(
        tr("The file then tells what it shows: the names of site, file, trend, source and properties, the "
           "span, and what was chosen. Nothing else, and no folder of this computer."));
    connect(m_transparent, &QCheckBox::toggled, this, &ExportPictureDialog::changed);
}

QFormLayout* ExportPictureDialog::form()
{
    auto* form = new QFormLayout;
    const auto row = [](const QList<QWidget*>& widgets) {
        auto* line = new QHBoxLayout;
        for (QWidget* widget : widgets)
            line->addWidget(widget, widget == widgets.front() ? 1 : 0);
        return line;
    };
    const auto add = [&](const QString& text, QWidget* buddy, QLayout* line) {
        auto* label = new QLabel(text, this);
        label->setBuddy(buddy);
        form->addRow(label, line);
    };
    form->addRow(tr("&Picture of:"), m_what);
    add(tr("For &use as:"), m_preset, row({m_preset, m_save, m_delete}));
    form->addRow(tr("&Format:"), m_format);
    add(tr("&Width, height:"), m_width, row({m_width, m_height, m_unit}));
    form->addRow(tr("D&ensity:"), m_dots);
    form->addRow(QString(), m_pixels);
    form->addRow(tr("&Look:"), m_look);
    form->addRow(tr("Te&xt:"), m_fontSize);
    form->addRow(tr("Le&gend:"), m_legend);
    form->addRow(tr("&Axis titles:"), m_axisTitles);
    form->addRow(tr("Li&nes:"), m_lineWidth);
    form->addRow(tr("&Value line:"), m_valueLine);
    form->addRow(QString(), m_transparent);
    form->addRow(tr("&Title:"), m_title);
    form->addRow(QString(), m_recipe);
    return form;
}

void ExportPictureDialog::layOut()
{
    m_preview->setFixedSize(kPreviewSize);
    m_preview->setAlignment(Qt::AlignCenter);
    m_preview->setAccessibleName(tr("The picture as it will be"));
    auto* columns = new QHBoxLayout;
    columns->addLayout(form(), 1);
    columns->addWidget(m_preview);
    m_preview->setVisible(m_trend.draw != nullptr);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_export = buttons->addButton(tr("Export…"), QDialogButtonBox::AcceptRole);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(columns);
    rows->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

FigureSettings ExportPictureDialog::settings() const
{
    FigureSettings settings;
    settings.width = m_width->value();
    settings.height = m_height->value();
    settings.unit = static_cast<FigureSettings::Unit>(m_unit->currentIndex());
    settings.dotsPerInch = m_dots->value();
    settings.look = m_look->currentData().toString();
    settings.legend = m_legend->currentData().toString();
    settings.axisTitles = m_axisTitles->currentData().toString();
    settings.fontSize = m_fontSize->value() > m_fontSize->minimum() ? m_fontSize->value() : 0;
    settings.lineWidth = m_lineWidth->value() > m_lineWidth->minimum() ? m_lineWidth->value() : 0;
    settings.isTransparent = m_transparent->isChecked();
    settings.valueLine = m_valueLine->currentData().toString();
    return settings;
}

void ExportPictureDialog::setSettings(const FigureSettings& settings)
{
    m_isSetting = true;
    m_unit->setCurrentIndex(static_cast<int>(settings.unit));
    m_width->setValue(settings.width);
    m_height->setValue(settings.height);
    m_dots->setValue(settings.dotsPerInch);
    chooseWord(*m_look, settings.look);
    chooseWord(*m_legend, settings.legend);
    chooseWord(*m_axisTitles, settings.axisTitles);
    m_fontSize->setValue(settings.fontSize);
    m_lineWidth->setValue(settings.lineWidth);
    m_transparent->setChecked(settings.isTransparent);
    chooseWord(*m_valueLine, settings.valueLine);
    m_isSetting = false;
    changed();
}

void ExportPictureDialog::setWhat(TrendPicture::What what)
{
    const auto* rows = qobject_cast<QStandardItemModel*>(m_what->model());
    const bool withTable = what == TrendPicture::What::GraphAndTable;
    m_what->setCurrentIndex(withTable && rows->item(GraphAndTableRow)->isEnabled() ? GraphAndTableRow : GraphRow);
}

void ExportPictureDialog::setFormat(FileKind format)
{
    m_format->setCurrentIndex(int(std::find(std::begin(kFormats), std::end(kFormats), format) - kFormats));
    adjust();
}

bool ExportPictureDialog::hasRecipe() const
{
    return m_recipe->isChecked() && m_what->currentIndex() == GraphRow;
}

TrendPicture ExportPictureDialog::picture() const
{
    const FigureSettings chosen = settings();
    const bool withTable = m_what->currentIndex() == GraphAndTableRow;
    return {withTable ? TrendPicture::What::GraphAndTable : TrendPicture::What::Graph,
            kFormats[m_format->currentIndex()],
            pointsOf(chosen),
            chosen.dotsPerInch / 72.0,
            m_title->text(),
            withTable ? QVariantMap() : readingOf(chosen, m_trend.reading)};
}

/// A choice by hand is no preset any more, unless it is the same.
void ExportPictureDialog::changed()
{
    if (m_isSetting)
        return;
    const FigureSettings chosen = settings();
    int row = 0;
    for (int preset = 1; preset < m_preset->count(); ++preset)
        if (figurePresetNamed(m_preset->itemData(preset).toString()) == chosen)
            row = preset;
    m_preset->setCurrentIndex(row);
    adjust();
}

void ExportPictureDialog::adjust()
{
    const bool withTable = m_what->currentIndex() == GraphAndTableRow;
    qobject_cast<QStandardItemModel*>(m_format->model())->item(SvgRow)->setEnabled(!withTable);
    if (withTable && m_format->currentIndex() == SvgRow)
        m_format->setCurrentIndex(PdfRow);
    for (QWidget* field :
         {static_cast<QWidget*>(m_look), static_cast<QWidget*>(m_legend), static_cast<QWidget*>(m_axisTitles),
          static_cast<QWidget*>(m_fontSize), static_cast<QWidget*>(m_lineWidth), static_cast<QWidget*>(m_transparent),
          static_cast<QWidget*>(m_valueLine), static_cast<QWidget*>(m_recipe)})
        field->setEnabled(!withTable);
    const FigureSettings chosen = settings();
    const bool isPixels = m_format->currentIndex() == PngRow;
    const QSizeF pixels = pixelsOf(chosen);
    const bool tooLarge = isPixels ? isTooLarge(pixels) : isTooLarge(pointsOf(chosen));
    m_dots->setEnabled(isPixels || chosen.unit == FigureSettings::Unit::Pixels);
    const QString text = tooLarge ? tr("%1 × %2 pixels are too many: choose less, or PDF") : tr("%1 × %2 pixels");
    m_pixels->setText(isPixels ? text.arg(qRound(pixels.width())).arg(qRound(pixels.height()))
                               : tr("Lines and letters, no pixels"));
    m_delete->setEnabled(m_preset->currentData(Qt::UserRole + 1).toBool());
    if (m_export)
        m_export->setEnabled(!tooLarge);
    if (m_trend.draw && !tooLarge)
        m_previewTimer.start(kPreviewDelay);
}

void ExportPictureDialog::updatePreview()
{
    TrendPicture small = picture();
    const double share =
        std::min(kPreviewSize.width() / small.size.width(), kPreviewSize.height() / small.size.height());
    small.format = FileKind::Png;
    small.density = std::min(share, small.density) * devicePixelRatioF();
    QImage drawn = m_trend.draw(small);
    drawn.setDevicePixelRatio(devicePixelRatioF());
    m_preview->setPixmap(drawn.isNull() ? QPixmap() : onSquares(drawn));
}

void ExportPictureDialog::accept()
{
    QSettings stored;
    stored.setValue(QLatin1String(kWhatKey), m_what->currentIndex());
    stored.setValue(QLatin1String(kFormatKey), m_format->currentIndex());
    stored.setValue(QLatin1String(kFigureKey), mapOf(settings()));
    stored.setValue(QLatin1String(kRecipeKey), m_recipe->isChecked());
    QDialog::accept();
}

}  // namespace plotix
