#include "hostapp/print/Paper.h"

#include <QtCore/QLocale>

namespace plotix {

QSizeF paperSize(Paper paper)
{
    return paper == Paper::A4 ? QSizeF(595, 842) : QSizeF(612, 792);
}

Paper usualPaper()
{
    return QLocale().measurementSystem() == QLocale::ImperialUSSystem ? Paper::Letter : Paper::A4;
}

}  // namespace plotix
