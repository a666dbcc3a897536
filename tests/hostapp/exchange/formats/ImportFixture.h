#pragma once

#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/exchange/formats/FileExchange.h"
#include "tests/hostapp/exchange/FindingPrinter.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace plotix {

/// A file of measurements in a folder of its own, and how it is to be read.
class MeasurementFileTest : public testing::Test {
protected:
    QString write(const QByteArray& text)
    {
        const QString path = m_folder.filePath(QStringLiteral("data.csv"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return path;
    }

    ImportOptions m_options;
    QTemporaryDir m_folder;
};

/// Imports such files into one site and reads back what its first agent has.
class ImportFixture : public MeasurementFileTest {
protected:
    using Numbers = std::vector<std::optional<double>>;

    ImportSummary import(const QByteArray& text) { return importFile(write(text), site(), m_options); }

    /// Why an import failed, which it must.
    std::optional<ImportFinding> failure(const QByteArray& text)
    {
        return findingOf([&] { import(text); });
    }

    QString site() const { return m_folder.filePath(QStringLiteral("site.plotix")); }

    std::vector<double> times()
    {
        const RecordBlock block = read();
        return {block.times.span().begin(), block.times.span().end()};
    }

    Numbers values(const QString& key)
    {
        const RecordBlock block = read();
        Numbers numbers;
        for (std::size_t index = 0; index < m_keys.size(); ++index)
            if (m_keys[index] == key)
                for (std::size_t row = 0; row < block.times.size(); ++row)
                    numbers.push_back(block.columns[index].validity.isValid(row)
                                          ? std::optional(block.columns[index].values[row])
                                          : std::nullopt);
        return numbers;
    }

    /// As they are stored, valid or not.
    std::vector<double> stored(const QString& key)
    {
        const RecordBlock block = read();
        const auto found = std::find(m_keys.begin(), m_keys.end(), key);
        if (found == m_keys.end())
            return {};
        const auto values = block.columns[static_cast<std::size_t>(found - m_keys.begin())].values.span();
        return {values.begin(), values.end()};
    }

private:
    RecordBlock read()
    {
        const auto document = SiteDocument::open(site());
        const auto agent = document->agents().front();
        std::vector<RowId> ids;
        m_keys.clear();
        for (const auto& property : agent->siteProperties()) {
            ids.push_back(property->description().id);
            m_keys.push_back(property->propertyName());
        }
        return plotix::recordsOfSite(site())->read(agent->id(), ids, {}, {}).value();
    }

    std::vector<QString> m_keys;
};

}  // namespace plotix
