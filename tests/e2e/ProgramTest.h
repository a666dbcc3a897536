#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

/// Runs the built program as a user does, in an empty folder of its own. The program is found beside the tests, in the
/// build folder that the environment names.
namespace plotix {

class ProgramTest : public testing::Test {
protected:
    void SetUp() override;

    /// Answers the exit status; -1 when the program did not end by itself.
    int run(const QStringList& arguments);

    /// As run, and the output as JSON; an empty object when the program failed.
    QJsonObject runForJson(const QStringList& arguments);

    QString path(const QString& name) const { return m_folder.filePath(name); }
    QByteArray contents(const QString& name) const;
    void write(const QString& name, const QByteArray& text) const;

    /// A file of real measurements that may lie beside the project; empty when it does not.
    static QString measurements(const QString& name);

    /// Without the lines that the platform's libraries write by themselves.
    const QByteArray& error() const { return m_error; }
    const QByteArray& output() const { return m_output; }

private:
    QTemporaryDir m_folder;
    QString m_program;
    QByteArray m_output, m_error;
};

/// Skips the test where the measurements are absent.
#define PLOTIX_MEASUREMENTS(variable, name)                                                                            \
    const QString variable = measurements(QStringLiteral(name));                                                       \
    if (variable.isEmpty())                                                                                            \
    GTEST_SKIP() << name " is not there"

}  // namespace plotix
