#pragma once

#include "records/store/RecordStore.h"
#include "records/store/RecordsInMemory.h"

/// Writing records in memory: the writing half of MemoryRecordStore. What is made *shares* the records. Any thread.
namespace plotix {

inline constexpr int kWritersPatience = 3000;  ///< milliseconds, unless told otherwise

/// Makes a store of these records, to read what there was before.
using StoreOfRecords = std::function<std::shared_ptr<RecordStore>(std::shared_ptr<RecordsInMemory> records)>;

std::unique_ptr<RecordTransaction> transactionOn(std::shared_ptr<RecordsInMemory> records, StoreOfRecords storeOf);
std::unique_ptr<RecordAppender> appenderTo(std::shared_ptr<RecordsInMemory> records, StoreOfRecords storeOf);

}  // namespace plotix
