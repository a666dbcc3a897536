#include "hostapp/core/Units.h"

#include "hostapp/core/UnitTable.h"

#include <QtCore/QHash>

#include <cmath>
#include <map>
#include <mutex>
#include <udunits2.h>
#include <utility>

namespace plotix {

namespace {

/// Different characters that look alike become one: the masculine ordinal, Greek mu, odd blanks.
QString cleaned(const QString& text)
{
    QString clean = text.simplified();
    clean.replace(QChar(0x00BA), QChar(0x00B0));
    clean.replace(QChar(0x03BC), QChar(0x00B5));
    return clean;
}

bool hasLetter(const QString& text)
{
    for (const QChar character : text)
        if (character.isLetter())
            return true;
    return false;
}

/// The short number that a value is a rounding error away from; nothing for a value that really has many digits.
std::optional<double> shortForm(double value)
{
    const double shorter = QByteArray::number(value, 'g', 12).toDouble();
    return std::abs(shorter - value) <= 1e-13 * std::abs(value) ? std::optional(shorter) : std::nullopt;
}

/// If either end of the conversion's offset is a short number, the other is computed from it: 0 °C is exactly 32 °F,
/// and 32 °F exactly 0 °C.
double exactOffset(double offset, double scale)
{
    if (std::abs(offset) < 1e-9 * std::abs(scale))
        return 0;
    if (const std::optional<double> exact = shortForm(offset))
        return *exact;
    const std::optional<double> zero = shortForm(-offset / scale);
    return zero ? -(*zero * scale) : offset;
}

/// The times over which a unit's integral is looked for, in this order: kW becomes kWh, L/min becomes L.
struct TimeStep {
    const char* expression;
    double seconds;
};
constexpr TimeStep kTimeSteps[] = {{"hour", 3600}, {"minute", 60}, {"second", 1}, {"day", 86400}};

using UnitPointer = std::unique_ptr<ut_unit, decltype(&ut_free)>;
using ConverterPointer = std::unique_ptr<cv_converter, decltype(&cv_free)>;

}  // namespace

/// UDUNITS-2 is not thread-safe, hence one lock, held briefly because maps are cached.
struct Units::Impl {
    Impl()
    {
        for (const UnitRow& row : unitTable()) {
            const QString text = QString::fromUtf8(row.text);
            addSpelling(cleaned(text), &row);
            const QStringList spellings = QString::fromUtf8(row.spellings).split(QLatin1Char('|'), Qt::SkipEmptyParts);
            for (const QString& spelling : spellings)
                addSpelling(cleaned(spelling), &row);
        }
    }
    ~Impl()
    {
        units.clear();
        if (system)
            ut_free_system(system);
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    /// Read on first use: most of what is asked stands in the table. Null when UDUNITS-2's own files are missing; then
    /// every unit is plain text.
    ut_system* library()
    {
        if (!std::exchange(libraryAsked, true)) {
            ut_set_error_message_handler(ut_ignore);
            system = ut_read_xml(nullptr);
        }
        return system;
    }

    void addSpelling(const QString& spelling, const UnitRow* row)
    {
        rows.insert(spelling, row);
        const QString folded = spelling.toCaseFolded();
        foldedRows.insert(folded, foldedRows.contains(folded) && foldedRows.value(folded) != row ? nullptr : row);
    }

    /// The table's row; null for units it does not list. In a word the case means nothing; in a short symbol it may
    /// (mm and Mm), so UDUNITS-2 is asked before the case is ignored.
    const UnitRow* rowOf(const QString& text)
    {
        constexpr qsizetype wordLength = 4;
        const QString clean = cleaned(text);
        if (const UnitRow* row = rows.value(clean))
            return row;
        if (clean.size() < wordLength && parsed(clean))
            return nullptr;
        return foldedRows.value(clean.toCaseFolded());
    }

    ut_unit* parsed(const QString& expression)
    {
        const auto found = units.find(expression);
        if (found != units.end())
            return found->second.get();
        const QByteArray text = expression.toUtf8();
        ut_unit* unit = hasLetter(expression) && library() ? ut_parse(library(), text.constData(), UT_UTF8) : nullptr;
        return units.emplace(expression, UnitPointer(unit, &ut_free)).first->second.get();
    }

    ut_unit* unitOf(const QString& text)
    {
        const UnitRow* row = rowOf(text);
        if (!row)
            return parsed(cleaned(text));
        return unitOfRow(*row);
    }

    ut_unit* unitOfRow(const UnitRow& row)
    {
        const QString expression = QString::fromUtf8(row.expression);
        const auto found = units.find(expression);
        if (found != units.end() && found->second)
            return found->second.get();
        ut_unit* unit = library() ? ut_parse(library(), row.expression, UT_UTF8) : nullptr;
        return (units.insert_or_assign(expression, UnitPointer(unit, &ut_free)).first)->second.get();
    }

    ConverterPointer converter(const QString& from, const QString& to)
    {
        ut_unit* one = unitOf(from);
        ut_unit* other = unitOf(to);
        const bool possible = one && other && ut_are_convertible(one, other) != 0;
        return {possible ? ut_get_converter(one, other) : nullptr, &cv_free};
    }

    Map makeMap(const QString& from, const QString& to);

    /// Whether the row's unit is this very one. What has no dimension but time, such as % over an hour, is none of
    /// them.
    bool isSame(ut_unit* unit, const UnitRow& row)
    {
        ut_unit* other = unitOfRow(row);
        if (!other || row.quantity == Quantity::Time || ut_are_convertible(unit, other) == 0)
            return false;
        const ConverterPointer conversion(ut_get_converter(unit, other), &cv_free);
        return conversion && std::abs(cv_convert_double(conversion.get(), 1) - 1) < 1e-12 &&
               std::abs(cv_convert_double(conversion.get(), 0)) < 1e-12;
    }
    std::optional<Integral> integralOf(const QString& text);

    std::mutex mutex;
    ut_system* system = nullptr;
    bool libraryAsked = false;
    QHash<QString, const UnitRow*> rows;
    QHash<QString, const UnitRow*> foldedRows;  // null: the case decides
    std::map<QString, UnitPointer> units;       // by expression; null: no unit
    QHash<std::pair<QString, QString>, Map> maps;
};

KTVUnitModel::Map Units::Impl::makeMap(const QString& from, const QString& to)
{
    Map map;
    const ConverterPointer conversion = converter(from, to);
    if (!conversion)
        return map;
    // Slope and offset are computed from two conversions, far apart so that the slope has all its digits.
    constexpr double far = 1099511627776.0;
    const double atZero = cv_convert_double(conversion.get(), 0);
    const double atFar = cv_convert_double(conversion.get(), far);
    const double atOne = cv_convert_double(conversion.get(), 1);
    const double slope = (atFar - atZero) / far;
    map.scale = shortForm(slope).value_or(slope);
    map.offset = exactOffset(atZero, map.scale);
    map.isLinear = std::isfinite(map.scale) && std::isfinite(map.offset) &&
                   std::abs(map.scale + map.offset - atOne) <= 1e-9 * (1 + std::abs(atOne));
    map.isIdentity = map.isLinear && map.scale == 1 && map.offset == 0;
    if (!map.isLinear) {
        map.scale = 1;
        map.offset = 0;
    }
    return map;
}

Units::Units() : m_impl(std::make_unique<Impl>()) {}
Units::~Units() = default;

std::shared_ptr<const Units> Units::shared()
{
    static const std::shared_ptr<const Units> units = std::make_shared<Units>();
    return units;
}

KTVUnitModel::Map Units::mapBetween(const QString& fromUnit, const QString& toUnit) const
{
    if (fromUnit == toUnit)
        return {};
    const std::lock_guard lock(m_impl->mutex);
    const std::pair key(fromUnit, toUnit);
    const auto found = m_impl->maps.constFind(key);
    if (found != m_impl->maps.constEnd())
        return *found;
    const Map map = m_impl->makeMap(fromUnit, toUnit);
    m_impl->maps.insert(key, map);
    return map;
}

void Units::convertValues(const QString& fromUnit, const QString& toUnit, const double* from, double* to,
                          std::size_t count) const
{
    const Map map = mapBetween(fromUnit, toUnit);
    if (map.isLinear) {
        for (std::size_t i = 0; i < count; ++i)
            to[i] = map.isIdentity ? from[i] : from[i] * map.scale + map.offset;
        return;
    }
    const std::lock_guard lock(m_impl->mutex);
    const ConverterPointer conversion = m_impl->converter(fromUnit, toUnit);
    for (std::size_t i = 0; i < count; ++i)
        to[i] = cv_convert_double(conversion.get(), from[i]);
}

QString Units::symbolForUnit(const QString& unit) const
{
    return normalise(unit).value_or(unit);
}

std::optional<KTVUnitModel::Integral> Units::Impl::integralOf(const QString& text)
{
    ut_unit* unit = unitOf(text);
    for (const TimeStep& step : kTimeSteps) {
        ut_unit* time = parsed(QString::fromLatin1(step.expression));
        const UnitPointer integral(unit && time ? ut_multiply(unit, time) : nullptr, &ut_free);
        for (const UnitRow& row : unitTable())
            if (integral && isSame(integral.get(), row))
                return Integral{QString::fromUtf8(row.text), 1 / step.seconds};
    }
    return std::nullopt;
}

KTVUnitModel::Integral Units::integralOf(const QString& unit) const
{
    const QString symbol = symbolForUnit(unit);
    const std::lock_guard lock(m_impl->mutex);
    return m_impl->integralOf(unit).value_or(integralInHours(symbol));
}

std::optional<QString> Units::normalise(const QString& text) const
{
    const std::lock_guard lock(m_impl->mutex);
    if (const UnitRow* row = m_impl->rowOf(text))
        return QString::fromUtf8(row->text);
    const QString clean = cleaned(text);
    return m_impl->parsed(clean) ? std::optional(clean) : std::nullopt;
}

bool Units::areCompatible(const QString& oneUnit, const QString& otherUnit) const
{
    const std::lock_guard lock(m_impl->mutex);
    return m_impl->converter(oneUnit, otherUnit) != nullptr;
}

QStringList Units::compatibleUnits(const QString& unit) const
{
    if (unit.isEmpty())
        return {};
    const std::lock_guard lock(m_impl->mutex);
    const UnitRow* own = m_impl->rowOf(unit);
    ut_unit* parsed = m_impl->unitOf(unit);
    QStringList units;
    if (!own)
        units.append(unit);
    for (const UnitRow& row : unitTable()) {
        // UDUNITS-2 cannot tell a fraction from an angle; a menu offers only the quantity that the table lists for the
        // unit.
        const bool sameQuantity =
            own ? row.quantity == own->quantity : parsed && ut_are_convertible(parsed, m_impl->unitOfRow(row)) != 0;
        if (sameQuantity)
            units.append(QString::fromUtf8(row.text));
    }
    return units;
}

double Units::convert(double value, const QString& fromUnit, const QString& toUnit) const
{
    double result = value;
    convertValues(fromUnit, toUnit, &value, &result, 1);
    return result;
}

}  // namespace plotix
