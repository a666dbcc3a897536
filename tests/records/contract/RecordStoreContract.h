#pragma once

#include "tests/records/RecordsFixture.h"

// What every store of records must hold to. A suite derives from RecordStoreContract, writes down one promise a test,
// and ends with HELD_BY_EVERY_STORE: each test runs with each store of StoresUnderTest.cpp, the one in memory first.

/// A store, and the agents and properties it knows.
class StoreUnderTest {
public:
    virtual ~StoreUnderTest() = default;

    /// The store, opened anew where that can be done.
    virtual std::shared_ptr<plotix::RecordStore> opened() = 0;
    virtual plotix::RowId addAgent() = 0;
    virtual plotix::RowId addProperty(plotix::RowId agent) = 0;
};

struct StoreKind {
    const char* name;
    std::unique_ptr<StoreUnderTest> (*make)();

    friend void PrintTo(const StoreKind& kind, std::ostream* out) { *out << kind.name; }
};

const std::vector<StoreKind>& storesUnderTest();
/// With those that others write: a test stores by the way.
const std::vector<StoreKind>& storesReadUnderTest();

/// One of the stores, with an agent of two properties.
class StoreFixture : public RecordsFixture {
protected:
    explicit StoreFixture(const StoreKind& kind) : m_store(kind.make())
    {
        agent = addAgent();
        air = addProperty(agent);
        wind = addProperty(agent);
    }

    std::shared_ptr<plotix::RecordStore> opened() override { return m_store->opened(); }
    plotix::RowId addAgent() { return m_store->addAgent(); }
    plotix::RowId addProperty(plotix::RowId owner) { return m_store->addProperty(owner); }

private:
    std::unique_ptr<StoreUnderTest> m_store;
};

class RecordStoreContract : public StoreFixture, public testing::WithParamInterface<StoreKind> {
protected:
    RecordStoreContract() : StoreFixture(GetParam()) {}
};

/// Of suites that are about reading alone.
#define HELD_BY_EVERYTHING_READ(Suite)                                                                                 \
    INSTANTIATE_TEST_SUITE_P(Stores, Suite, testing::ValuesIn(storesReadUnderTest()),                                  \
                             [](const auto& kind) { return std::string(kind.param.name); })

#define HELD_BY_EVERY_STORE(Suite)                                                                                     \
    INSTANTIATE_TEST_SUITE_P(Stores, Suite, testing::ValuesIn(storesUnderTest()),                                      \
                             [](const auto& kind) { return std::string(kind.param.name); })
