#pragma once

#include "hostapp/core/Localization.h"
#include "hostapp/window/importing/ImportDialog.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

#include <gtest/gtest.h>

namespace plotix {

/// The dialog on the screen, as a person finds and uses it.
class ImportDialogFixture : public testing::Test {
protected:
    ImportDialogFixture() { QCoreApplication::installTranslator(m_texts.get()); }

    QString write(const QByteArray& text, const QString& name = QStringLiteral("cellar.csv"))
    {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }
    void show(const QByteArray& text)
    {
        dialog = std::make_unique<ImportDialog>(QStringList{QStringLiteral("Station")});
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
        dialog->setFile(write(text));
        ASSERT_TRUE(waitForPreview());
    }
    /// Until nothing is read any more, and no change waits for being read.
    bool waitForPreview()
    {
        QTest::qWait(300);
        return QTest::qWaitFor([this] { return !howMany().contains(QStringLiteral("being read")); }, 10'000);
    }

    QString howMany() { return dialog->findChild<QLabel*>(QStringLiteral("howMany"))->text(); }
    QString problem()
    {
        const auto* label = dialog->findChild<QLabel*>(QStringLiteral("problem"));
        return label->isVisible() ? label->text() : QString();
    }
    QTableView& columns() { return *dialog->findChild<QTableView*>(QStringLiteral("columns")); }
    QTableView& rows() { return *dialog->findChild<QTableView*>(QStringLiteral("firstRows")); }
    QString column(int row, int part) { return columns().model()->index(row, part).data().toString(); }
    QString cell(int row, int number) { return rows().model()->index(row, number).data().toString(); }
    QLineEdit& field(const QString& name) { return *dialog->findChild<QLineEdit*>(name); }
    QPushButton* button(const QString& text)
    {
        for (QPushButton* one : dialog->findChildren<QPushButton*>())
            if (one->text().remove(QLatin1Char('&')) == text)
                return one;
        return nullptr;
    }
    bool canImport() { return button(QStringLiteral("Import"))->isEnabled(); }
    /// The choice field with an entry of that text.
    QComboBox* choice(const QString& entry)
    {
        for (QComboBox* box : dialog->findChildren<QComboBox*>())
            if (box->findText(entry) >= 0)
                return box;
        return nullptr;
    }
    void choose(const QString& entry)
    {
        QComboBox* box = choice(entry);
        ASSERT_NE(box, nullptr);
        box->setFocus();
        box->setCurrentIndex(box->findText(entry));
    }
    /// With the keyboard, as it would be typed into the cell.
    void typeIntoCell(int row, int part, const QString& text)
    {
        columns().setFocus();
        columns().setCurrentIndex(columns().model()->index(row, part));
        QTest::keyClick(&columns(), Qt::Key_F2);
        QWidget* editor = QApplication::focusWidget();
        ASSERT_NE(qobject_cast<QLineEdit*>(editor), nullptr);
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();  // the cell takes it afterwards
    }
    void tick(int row)
    {
        columns().setFocus();
        columns().setCurrentIndex(columns().model()->index(row, 0));
        QTest::keyClick(&columns(), Qt::Key_Space);
    }

    const std::unique_ptr<QTranslator> m_texts = textsOf(QStringLiteral("en"));  // which has the plurals
    QTemporaryDir m_folder;
    std::unique_ptr<ImportDialog> dialog;
};

}  // namespace plotix
