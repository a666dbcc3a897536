#pragma once

#include "hostapp/site/FigureSettings.h"
#include "hostapp/site/TrendPicture.h"

#include <QtCore/QTimer>
#include <QtWidgets/QDialog>

#include <functional>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

/// Asks for a picture of a trend: of what, in which format, how large and dense, and how the graph looks in it. Shows
/// it as it will be. Begins with what was accepted last; sets of choices are kept by name. Main thread only.
namespace plotix {

class ExportPictureDialog : public QDialog {
    Q_OBJECT
public:
    enum class Table { Offered, NotOffered };  ///< not for a view that gives no figures

    /// What the trend itself looks like, and how a picture of it is drawn, for the preview; null where it cannot be.
    struct Trend {
        QVariantMap reading;
        std::function<QImage(const TrendPicture& picture)> draw;
    };

    ExportPictureDialog(const QString& title, Table table, QWidget* parent = nullptr, Trend trend = {});

    /// Its size is in points, 1 to 32,767 of the unit chosen.
    TrendPicture picture() const;

    bool hasRecipe() const;  ///< the file is to tell what it shows
    FigureSettings settings() const;
    void setSettings(const FigureSettings& settings);  ///< brought into the limits of the fields
    void setWhat(TrendPicture::What what);             ///< a table only where it is offered
    void setFormat(FileKind format);                   ///< of a page with its table SVG is PDF

    /// Keeps the settings by a name and chooses it; false, and nothing happens, for an empty name and for ours.
    bool saveAs(const QString& name);

    void accept() override;  ///< remembers all but the title

private:
    void buildFields(Table table);
    void buildLooks();
    void layOut();
    QFormLayout* form();
    QComboBox* addChoice(const QList<std::pair<QString, QString>>& wordsAndTexts);
    void listPresets(const QString& chosen);
    void usePreset();
    void askForName();
    void deletePreset();
    void changed();
    void adjust();
    void updatePreview();

    Trend m_trend;
    QTimer m_previewTimer;
    bool m_isSetting = false;  // several fields at once

    // All owned by the dialog.
    QComboBox *m_what, *m_preset, *m_format, *m_unit;
    QDoubleSpinBox *m_width, *m_height;
    QSpinBox* m_dots;
    QComboBox *m_look = nullptr, *m_legend = nullptr, *m_axisTitles = nullptr, *m_valueLine = nullptr;
    QDoubleSpinBox *m_fontSize, *m_lineWidth;
    QCheckBox *m_transparent, *m_recipe;
    QLineEdit* m_title;
    QLabel *m_pixels, *m_preview;
    QPushButton *m_save, *m_delete;
    QPushButton* m_export = nullptr;
};

}  // namespace plotix
