#pragma once

#include "records/store/TableServer.h"

#include <cmath>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// What is asked of a database with tables, and how its dialect of SQL says it. Everything comes as columns of doubles,
/// where a NaN is no value.
namespace plotix {

/// *Shared*; any thread. Throws ReportableError.
class TableDatabase {
public:
    virtual ~TableDatabase() = default;

    /// Rows of numbers, some at a time: successive ones, a span a column. Answers whether to go on.
    using Take = std::function<bool(std::span<const std::vector<double>> columns)>;
    /// The statement selects so many columns of doubles. False when `take` stopped it; the server then works on it no
    /// more. Begins anew with `begin` at another host.
    virtual bool select(const std::string& statement, std::size_t columns, const std::function<void()>& begin,
                        const Take& take) = 0;
    /// Rows of texts.
    virtual std::vector<QStringList> texts(const std::string& statement) = 0;
    virtual void closeIdle() = 0;

    virtual QString title() const = 0;
    virtual QString address() const = 0;  ///< without a user, who is kept in memory until the program ends
    virtual QStringList tables() = 0;
    virtual std::vector<TableServer::Column> columns(const QString& table) = 0;

    /// Whether no two rows can have the same of this column, as the database itself sees to it.
    virtual bool isUnique(const QString& /*table*/, const QString& /*column*/) { return false; }

    // The dialect. Names and texts of other people are quoted, whatever is in them.
    virtual std::string name(const QString& column) const = 0;
    virtual std::string tableName(const QString& table) const = 0;
    virtual std::string text(const QString& text) const = 0;
    /// Of a column of numbers: a double, NaN or NULL for none.
    virtual std::string number(const TableServer::Column& column) const = 0;
    /// A column of names as text.
    virtual std::string nameText(const TableServer::Column& column) const = 0;
    /// A double that is NULL.
    virtual std::string nothing() const = 0;
    /// Of such a double: NULL for NaN, so that sums and extremes pass it over.
    virtual std::string orNull(const std::string& number) const = 0;
    /// Of an expression that may be NULL: NaN instead.
    virtual std::string orNaN(const std::string& number) const = 0;
    /// An expression of a time column's type as seconds since 1970-01-01 UTC; not finite, or NULL, where it is none.
    virtual std::string seconds(const std::string& expression, const QString& type,
                                AttachedTable::TimeUnit unit) const = 0;
    /// True of all rows with from ≤ time ≤ to and of few others, said of the column itself: an index of the database's
    /// can serve it. Empty: cannot be said.
    virtual std::string about(const TableServer::Column& column, AttachedTable::TimeUnit unit,
                              std::optional<double> from, std::optional<double> to) const = 0;
    /// A finite number, of the same bits.
    virtual std::string literal(double value) const = 0;
    /// An aggregate: the value, or NaN, at the least time; times are different.
    virtual std::string atFirst(const std::string& value, const std::string& time) const = 0;
    virtual std::string real(const std::string& expression) const = 0;  ///< as a double
};

/// Whole numbers just outside of the times, for `about`; those far away are left out.
inline std::optional<long long> below(std::optional<double> time, double factor)
{
    return time && std::abs(*time) < 1e11 ? std::optional(static_cast<long long>(std::floor(*time * factor)) - 1)
                                          : std::nullopt;
}
inline std::optional<long long> above(std::optional<double> time, double factor)
{
    return time && std::abs(*time) < 1e11 ? std::optional(static_cast<long long>(std::ceil(*time * factor)) + 1)
                                          : std::nullopt;
}

/// "A AND B"; either may be empty.
inline std::string both(const std::string& one, const std::string& other)
{
    std::string all = one;
    if (!one.empty() && !other.empty())
        all += " AND ";
    all += other;
    return all;
}

std::shared_ptr<TableDatabase> clickHouseTables(const QString& address);
std::shared_ptr<TableDatabase> postgresTables(const QString& address);

}  // namespace plotix
