#pragma once

#include "hostapp/exchange/formats/spreadsheet/Archive.h"

#include <QtCore/QStringList>

#include <string>
#include <vector>

/// What belongs to all sheets of a spreadsheet file: their names, shared texts, the formats of cells, and the day from
/// which days count. Read once; then a value. Throws ImportFailure for a file that is no spreadsheet.
namespace plotix {

/// How a number in a cell is shown, as far as that gives it another meaning.
enum class CellFormat { Number, Date, DateAndTime, TimeOfDay };

/// The meaning of a format code, such as `dd\.mm\.yyyy hh:mm;@`: texts in it, colours and conditions do not count.
CellFormat cellFormatOf(const QString& code);

class Workbook {
public:
    struct Sheet {
        QString name;
        QString part;  ///< of the archive
    };

    explicit Workbook(const Archive& archive);

    const std::vector<Sheet>& sheets() const { return m_sheets; }
    QStringList sheetNames() const;
    const std::string& sharedText(std::size_t index) const;  ///< empty for one that is not there
    CellFormat format(std::size_t style) const;

    /// A number of days as the text of its date: "2024-01-31", "2024-01-31 12:15:00.250", "12:15:00".
    std::string dateText(double days, CellFormat format) const;

private:
    void readSheets(const Archive& archive);
    void readTexts(const Archive& archive);
    void readFormats(const Archive& archive);

    std::vector<Sheet> m_sheets;
    std::vector<std::string> m_texts;
    std::vector<CellFormat> m_formats;
    bool m_from1904 = false;
};

}  // namespace plotix
