#pragma once

#include "hostapp/exchange/ImportPreview.h"

#include <QtWidgets/QWidget>

#include <map>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;

/// How a file is to be read: a field for each thing that is found out from the file, which shows what was found and
/// lets the user say otherwise. Fields that mean nothing for the file are hidden.
///
/// Part of the import dialog. Main thread only.
namespace plotix {

class ReadingFields : public QWidget {
    Q_OBJECT
public:
    explicit ReadingFields(QWidget* parent = nullptr);

    void setOptions(const ImportOptions& options);
    void addTo(ImportOptions& options) const;
    /// What cannot be used as it is written; empty: nothing.
    QString wrongText() const;
    ImportOption wrongOption() const;  ///< whose field it is; None: nothing is wrong

    void showGuesses(const ImportPreview& preview);
    void forgetGuesses();  ///< they are another file's

    /// Marks the field that settles a problem, and takes the mark off the others. None: no field.
    void mark(ImportOption option, const QString& why = {});
    /// Null for what has no field here.
    QWidget* field(ImportOption option) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void changed();  ///< by the user

private:
    QComboBox* addChoice(ImportOption option, const QString& label, const QStringList& words);
    QComboBox* addNamed(ImportOption option, const QString& label, const char* name);
    void addRows();
    void addQuality();
    void setQuality(const ImportOptions& options);
    void addQualityTo(ImportOptions& options) const;
    bool isQualityWrong() const;
    void addSwitches();
    void showWhatApplies(const SourceForm& form);
    void showTimeGuesses(const ImportPreview& preview);
    void showQualities(const ImportPreview& preview);

    std::map<ImportOption, QWidget*> m_fields;
    // All owned by the widget.
    QFormLayout* m_form;
    QComboBox *m_timeColumn, *m_timeZone, *m_dateOrder, *m_decimal, *m_delimiter, *m_sheet, *m_arrangement;
    QComboBox* m_rowsAtOneTime = nullptr;
    QLineEdit *m_where = nullptr, *m_quality = nullptr, *m_badWords = nullptr;
    QCheckBox *m_keepAllNumbers = nullptr, *m_skipBadRows = nullptr, *m_ignoreQuality = nullptr;
};

}  // namespace plotix
