#pragma once

#include "records/tables/TableDatabase.h"

/// One table as records: what is asked of the database for them. Values; any thread.
///
/// A time at which several rows have a value of one property has the greatest of them: the one choice that a database
/// makes the same way in every statement. NULL and NaN are no value. In a table whose rows name their property, only
/// rows of the properties asked for are looked at: each is a series of its own, and what others have at other times is
/// not read for it.
namespace plotix {

class TableStatements {
public:
    /// `columns`: all of the table, as the server describes them. Throws where one that the table is read by is not
    /// there, or is of a type that cannot be read.
    /// `isUnique`: no two rows have the same time, so that none need be put together.
    TableStatements(std::shared_ptr<const TableDatabase> database, AttachedTable table,
                    const std::vector<TableServer::Column>& columns, bool isUnique);

    const AttachedTable& table() const { return m_table; }

    struct Range {
        std::optional<double> from, to;

        friend bool operator==(const Range&, const Range&) = default;
        bool isEmpty() const
        {
            return std::isnan(from.value_or(0)) || std::isnan(to.value_or(0)) || (from && to && *from > *to);
        }
    };
    using Properties = std::span<const RowId>;

    /// Time, and a column each; or time, place among the properties, and value. By time; the same time may come again.
    std::string rows(Properties properties, const Range& range) const;
    /// Whether there is any row, as a number.
    std::string anyRow() const;
    /// The first and last time, as an index may tell them; not finite where that is no time.
    std::string quickExtent() const;
    /// Count of records, first and last time.
    std::string extent(Properties properties, const Range& range) const;
    /// Count of rows, at most so many.
    std::string countUpTo(std::size_t most, const Range& range) const;
    /// Successive stretches of so many seconds; none without records is answered.
    struct Stretches {
        double start = 0, seconds = 1;
    };
    enum class First { Wanted, NotWanted };
    /// First and last time and count of records of each stretch, with count, least, greatest and sum of the values of
    /// each property, and where that is wanted its value at the first time.
    std::string stretches(Properties properties, const Range& range, const Stretches& of, First first) const;
    /// Count, least, greatest, sum.
    std::string statistics(RowId property, const Range& range) const;

private:
    const TableServer::Column* columnOf(RowId property) const;
    std::string condition(Properties properties, const Range& range) const;
    std::string nameIn(Properties properties) const;
    std::string valueOf(RowId property) const;  // a double or NULL
    std::string records(Properties properties, const Range& range) const;
    static std::string valueName(std::size_t place);

    std::shared_ptr<const TableDatabase> m_database;
    AttachedTable m_table;
    bool m_isUnique;
    std::string m_name, m_seconds;  // of the table; of the time column
    TableServer::Column m_time, m_value, m_texts;
    std::map<RowId, TableServer::Column> m_columns;  // of a table with a column each
};

}  // namespace plotix
