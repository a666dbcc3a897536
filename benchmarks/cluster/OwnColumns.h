#pragma once

#include "benchmarks/data/StationRecords.h"
#include "records/clickhouse/ServerConnection.h"

/// The station's records in a table as the server itself would have them: a column of doubles each, by time. One
/// thread.
namespace plotix_bench {

class OwnColumns {
public:
    explicit OwnColumns(const plotix::ServerAddress& address);

    void create();
    void store(const StationColumns& records);
    /// Of all records: times, and so many of the properties; in its Native format, straight into columns.
    std::vector<std::vector<double>> read(std::size_t properties);
    double bytes();

private:
    std::string m_table;
    plotix::ServerConnection m_server;
};

}  // namespace plotix_bench
