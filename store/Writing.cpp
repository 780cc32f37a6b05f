#include "store/Writing.h"

namespace store {

bool isStored(File& file, std::string_view id, const DynamicArray& fields) {
  try {
    return file.ReadRecord(id)->fields().text() == fields.text();
  } catch (const StoreError&) {
    return false;
  }
}

void write(File& file, std::string_view id, Record& record) {
  try {
    record.DBWrite();
  } catch (const StoreError& failure) {
    if (failure.code() != kOutcomeUnknown || !isStored(file, id, record.fields())) throw;
  }
}

}  // namespace store
