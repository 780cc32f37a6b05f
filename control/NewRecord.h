#pragma once

#include "store/Database.h"

namespace control {

// The record in hand of a body that has no code yet: it cannot be written.
class NewRecord : public store::Record {
 public:
  NewRecord() : Record(store::NewDynamicArray(), false) {}
  void DBWrite() override {
    throw store::StoreError(store::kFailed, "The funding body has no code yet.");
  }
};

}  // namespace control
