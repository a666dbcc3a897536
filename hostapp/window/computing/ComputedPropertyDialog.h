#pragma once

#include "hostapp/document/FormulaPreview.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/formulas/FormulaPlan.h"

#include <QtCore/QTimer>
#include <QtWidgets/QDialog>

#include <atomic>
#include <memory>
#include <optional>

class QComboBox;
class QDialogButtonBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QToolButton;

/// Asks for a computed property: name, formula, unit, colour, and how other agents' times are joined. Says while typing
/// what is wrong, or the unit of the result and its last values, which a worker thread works out.
///
/// It stores nothing: the caller does. *Shares* records and directory. Main thread only.
namespace plotix {

class FormulaEdit;

class ComputedPropertyDialog : public QDialog {
    Q_OBJECT
public:
    struct About {
        std::shared_ptr<RecordStore> records;
        std::shared_ptr<const FormulaDirectory> directory;
        RowId agent = 0;
        std::optional<SiteProperty::Description> property = {};  ///< the one that is changed; absent: a new one
    };
    explicit ComputedPropertyDialog(About about, QWidget* parent = nullptr);
    ~ComputedPropertyDialog() override;

    ComputedProperty property() const;  ///< as it stands in the fields

private:
    void makeFields();
    void layOutFields();
    void fill();
    void check();  // says what is wrong, or what comes out
    QString problemWithName() const;
    void showUnit(const QString& following);
    void askForPreview();
    void showPreview(const FormulaPreview& preview);
    void pickColor();
    void setColor(const QColor& color);

    About m_about;
    std::optional<QColor> m_color;
    QTimer m_previewDelay;
    /// The preview asked for last; those on their way to another end.
    std::shared_ptr<std::atomic<int>> m_asked = std::make_shared<std::atomic<int>>(0);
    // All owned by the dialog.
    QLineEdit* m_name;
    FormulaEdit* m_formula;
    QLabel* m_message;
    QComboBox* m_unit;
    QToolButton* m_colorButton;
    QComboBox* m_join;
    QDoubleSpinBox* m_gap;
    QComboBox* m_gapUnit;
    QLabel* m_preview;
    QDialogButtonBox* m_buttons;
};

}  // namespace plotix
