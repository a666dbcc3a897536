#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"

#include "plugins/PlotixPlugIn/host/KTVObservationRegistry.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace {

/// One element of a column, made on demand; shares the column.
class RecordSnapshot : public KTVProperty {
public:
    RecordSnapshot(std::shared_ptr<KTVRecordColumn> column, std::size_t index)
        : m_column(std::move(column)), m_index(index)
    {
    }

    QString name() const override { return m_column->descriptor().name; }
    QString propertyName() const override { return m_column->descriptor().propertyName; }
    QString unit() const override { return m_column->unit(); }
    void setUnit(const QString& unit) override
    {
        const KTVPropertyChange change{m_column->unit(), unit};
        m_column->setUnit(unit);
        m_observations.notify(this, QStringLiteral("unit"), change);
    }
    double unitValue() const override
    {
        return isValid() ? m_column->unitValue(m_index) : std::numeric_limits<double>::quiet_NaN();
    }
    QString unitSymbol() const override { return m_column->unitSymbol(); }
    QColor color() const override { return m_column->descriptor().color; }
    std::uint32_t type() const override { return m_column->descriptor().type; }
    bool isValid() const override { return m_column->isValid(m_index); }
    bool visible() const override { return m_column->descriptor().visible; }

    void addObserver(KTVPropertyObserver* observer, const QString& key, ObservationTag context) override
    {
        m_observations.add(observer, key, context);
    }
    void removeObserver(KTVPropertyObserver* observer, const QString& key) override
    {
        m_observations.remove(observer, key);
    }

private:
    std::shared_ptr<KTVRecordColumn> m_column;
    std::size_t m_index;
    KTVObservationRegistry m_observations;
};

}  // namespace

KTVRecordColumn::KTVRecordColumn(Descriptor descriptor, plotix::PagedArray<double> values,
                                 plotix::ValidityBitmap validity, std::shared_ptr<const KTVUnitModel> unitModel)
    : m_descriptor(std::move(descriptor)),
      m_values(std::move(values)),
      m_validity(std::move(validity)),
      m_isResident(m_values.isResident() && m_validity.words().isResident()),
      m_unitModel(std::move(unitModel))
{
    assert(m_validity.isAllValid() || m_validity.words().size() * 64 >= m_values.size());
    prepareMap();
}

QString KTVRecordColumn::unitSymbol() const
{
    return m_unitModel ? m_unitModel->symbolForUnit(m_descriptor.unit) : m_descriptor.unit;
}

KTVUnitModel::Integral KTVRecordColumn::integral() const
{
    return m_unitModel ? m_unitModel->integralOf(m_descriptor.unit) : KTVUnitModel::integralInHours(m_descriptor.unit);
}

void KTVRecordColumn::setUnit(const QString& unit)
{
    m_descriptor.unit = unit;
    prepareMap();
    for (const auto& [index, snapshot] : m_exceptions)
        if (snapshot)
            snapshot->setUnit(unit);
}

KTVRecordColumn::Hold KTVRecordColumn::heldPages(std::size_t first, std::size_t end) const
{
    constexpr std::size_t kBits = 64;
    const plotix::PagedArray<std::uint64_t>& words = m_validity.words();
    const bool areTogether = words.memory() == m_values.memory();
    return {m_values.hold(first, end), areTogether || words.isEmpty()
                                           ? plotix::PagedMemory::Hold()
                                           : words.hold(first / kBits, (end + kBits - 1) / kBits)};
}

bool KTVRecordColumn::isValid(std::size_t index) const
{
    const Hold held = hold(index, index + 1);
    return m_validity.isValid(index) && !std::isnan(m_values[index]);
}

double KTVRecordColumn::unitValue(std::size_t index) const
{
    double value = 0;
    copyUnitValues(index, {&value, 1});
    return value;
}

void KTVRecordColumn::copyUnitValues(std::size_t first, std::span<double> out) const
{
    assert(first <= size() && out.size() <= size() - first);
    if (out.empty())
        return;
    const plotix::PagedMemory::Hold held = m_values.hold(first, first + out.size());
    convert(m_values.span().subspan(first, out.size()), out);
}

void KTVRecordColumn::convert(std::span<const double> archived, std::span<double> out) const
{
    assert(archived.size() == out.size());
    if (m_map.isIdentity)
        std::copy(archived.begin(), archived.end(), out.begin());
    else if (m_map.isLinear)
        std::transform(archived.begin(), archived.end(), out.begin(),
                       [map = m_map](double value) { return value * map.scale + map.offset; });
    else
        m_unitModel->convertValues(m_descriptor.archivedUnit, m_descriptor.unit, archived.data(), out.data(),
                                   out.size());
}

KTVPropertyPtr KTVRecordColumn::snapshotAt(std::size_t index) const
{
    assert(index < size());
    const auto exception = m_exceptions.find(index);
    if (exception != m_exceptions.end())
        return exception->second;
    return std::make_shared<RecordSnapshot>(std::const_pointer_cast<KTVRecordColumn>(shared_from_this()), index);
}

void KTVRecordColumn::setException(std::size_t index, KTVPropertyPtr snapshot)
{
    assert(index < size());
    m_exceptions[index] = std::move(snapshot);
}

// Always from the archived unit, never from the one shown before: changing back and forth adds no rounding.
void KTVRecordColumn::prepareMap()
{
    m_map = {};
    if (m_unitModel && m_descriptor.unit != m_descriptor.archivedUnit)
        m_map = m_unitModel->mapBetween(m_descriptor.archivedUnit, m_descriptor.unit);
}
