#include "hostapp/exchange/Export.h"

#include <cmath>

namespace plotix {

const char* qualityText(bool isValid, double value)
{
    if (std::isnan(value))
        return "";
    return isValid ? "Good" : "Bad";
}

QString qualityHeader(const QString& name)
{
    return name + QStringLiteral(" Quality");
}

}  // namespace plotix
