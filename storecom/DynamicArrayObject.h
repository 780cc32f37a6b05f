// A dynamic array outside: a record that was read, an answer, or a scratch array.
#pragma once

#include <memory>
#include <string>

#include "store/Database.h"
#include "storecom/Automation.h"

namespace storecom {

// Text comes and goes with the marks as the characters U+00FE and U+00FD. Positions below 1 are
// E_INVALIDARG. A value that holds a mark, or an attribute that holds an attribute mark, is refused
// with store::kBadValue.
class DynamicArrayObject final : public Automation {
 public:
  // Of no file.
  explicit DynamicArrayObject(store::DynamicArray fields);
  // The file of the record is kept alive with it.
  DynamicArrayObject(std::unique_ptr<store::Record> record, std::shared_ptr<store::File> file);

 private:
  int mostArguments(DISPID member, bool isPut) const override;
  com::Variant call(DISPID member, const Arguments& arguments) override;
  void put(DISPID member, const Arguments& arguments) override;

  store::DynamicArray& fields();
  std::string value(const Arguments& arguments);
  int count(const Arguments& arguments);
  void setValue(const Arguments& arguments);
  void write();

  std::shared_ptr<store::File> file_;
  std::unique_ptr<store::Record> record_;  // null for an array of no file
  store::DynamicArray scratch_;
  bool missing_ = false;  // no record had the identifier when it was read
};

}  // namespace storecom
