#pragma once

#include "hostapp/exchange/Export.h"
#include "hostapp/window/PropertyChoice.h"
#include "hostapp/window/SpanChoice.h"

#include <QtWidgets/QDialog>

class QCheckBox;
class QComboBox;
class QPushButton;
class QRadioButton;

/// Asks which records go into a file, of which agent and of which of its properties, and in which form. Main thread
/// only.
namespace plotix {

class ExportRecordsDialog : public QDialog {
    Q_OBJECT
public:
    using Span = MomentSpan;  ///< both included

    /// An agent, with the properties that are ticked at first.
    struct Source {
        QString name;
        std::vector<PropertyChoice::Property> properties;
    };

    /// The clocks that times may be said by, beside the user's and UTC; an invalid one: nobody has said.
    struct Zones {
        QTimeZone trend;  ///< is chosen first
        QTimeZone site;
    };

    /// `visible` is the span that the trend in front shows, if there is one. Without it all records are chosen. The
    /// first source is chosen. Requires: there is one.
    ExportRecordsDialog(std::vector<Source> sources, const std::optional<Span>& visible, QWidget* parent = nullptr,
                        const Zones& zones = {});

    std::size_t source() const;                                                     ///< its position
    std::vector<std::size_t> properties() const { return m_properties->ticked(); }  ///< of the source
    std::optional<Span> span() const;                                               ///< nothing: all records
    ExportForm form() const;
    QString fileType() const;  ///< "csv" or "xlsx"

    void chooseAll();
    void chooseSpan(const Span& span) { m_chosen->choose(span); }
    void chooseWorkbook();
    void chooseSemicolons();

    void accept() override;  ///< stays open when the span is reversed, and while a property is searched for

private:
    void adjust();
    void offerProperties();
    void buildRows();
    void offerClocks(const Zones& zones);
    QTimeZone zone() const;

    std::vector<Source> m_sources;
    std::optional<Span> m_visible;
    // All owned by the dialog.
    QRadioButton *m_all, *m_shown;
    SpanChoice* m_chosen;
    QComboBox *m_source, *m_format, *m_decimal, *m_clock;
    PropertyChoice* m_properties;
    QCheckBox *m_guard, *m_qualities;
    QPushButton* m_export = nullptr;
    bool m_wasWorkbook = false;
};

}  // namespace plotix
