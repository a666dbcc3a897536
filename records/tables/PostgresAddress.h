#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Addresses of PostgreSQL databases, and what the library says of them. Any thread.
namespace plotix {

/// The library's own words end in line breaks and begin with a severity.
QString readablePostgres(const char* message);

/// What an address says by words. A value.
struct PostgresAddress {
    /// Throws ReportableError for what is no address, and for a password in it, which it does not repeat. A user is
    /// asked as until the program ends.
    explicit PostgresAddress(const QString& text);

    QString title() const;    ///< for people, without a user
    QByteArray user() const;  ///< whom an address of this place named; empty: nobody

    QString kept;  ///< the address without a user
    QString host, port, database;
};

}  // namespace plotix
