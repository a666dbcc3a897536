#pragma once

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <string>

/// A PostgreSQL server of this program's own, reached by a socket in a folder of its own. Started when it is first
/// asked for, ended with the program. The main thread starts it; as root, it runs as the user that its package has
/// made.
class PostgresForTests {
public:
    static PostgresForTests& running();
    ~PostgresForTests();

    /// `postgresql:///plant?host=…&user=…` of its one database.
    QString address() const;
    /// Throws what the server says where it refuses.
    void tell(const std::string& statement, const std::string& copied = {});

    void kill();  ///< as a machine that loses its power

private:
    PostgresForTests();
    QTemporaryDir m_folder;
    QProcess m_process;
};
