#include "storecom/DynamicArrayObject.h"

#include "com/ComBorder.h"
#include "storecom/Classes.h"

namespace storecom {

namespace {

// As in the type library.
enum Member : DISPID {
  kValue = 0,
  kDBWrite = 1,
  kStatus = 2,
  kDCount = 3,
  kInsert = 4,
  kDelete = 5
};

// A mark would become part of the array's own structure.
std::string without(std::string_view marks, std::string text) {
  if (text.find_first_of(marks) != std::string::npos) {
    throw store::StoreError(store::kBadValue, "a text holds one of the store's marks");
  }
  return text;
}

constexpr std::string_view kBothMarks{"\xFE\xFD", 2};
constexpr std::string_view kAttributeMarks{"\xFE", 1};

}  // namespace

DynamicArrayObject::DynamicArrayObject(store::DynamicArray fields)
    : Automation(kDynamicArrayDispatch), scratch_(std::move(fields)) {}

DynamicArrayObject::DynamicArrayObject(std::unique_ptr<store::Record> record,
                                       std::shared_ptr<store::File> file)
    : Automation(kDynamicArrayDispatch),
      file_(std::move(file)),
      record_(std::move(record)),
      missing_(!record_->found()) {}

store::DynamicArray& DynamicArrayObject::fields() {
  return record_ != nullptr ? record_->fields() : scratch_;
}

int DynamicArrayObject::mostArguments(DISPID member, bool isPut) const {
  switch (member) {
    case kValue:
      return 2;
    case kDBWrite:
    case kStatus:
      return isPut ? -1 : 0;
    case kDCount:
      return isPut ? -1 : 1;
    case kInsert:
      return isPut ? 2 : -1;
    case kDelete:
      return isPut ? -1 : 2;
    default:
      return -1;
  }
}

com::Variant DynamicArrayObject::call(DISPID member, const Arguments& arguments) {
  switch (member) {
    case kValue:
      return com::Variant::ofText(com::wide(value(arguments)));
    case kDBWrite:
      write();
      return {};
    case kStatus:
      return com::Variant::ofNumber(missing_ ? static_cast<long>(store::kRecordNotFound) : 0L);
    case kDCount:
      return com::Variant::ofNumber(count(arguments));
    default:
      fields().Delete(arguments.number(0), arguments.number(1));
      return {};
  }
}

void DynamicArrayObject::put(DISPID member, const Arguments& arguments) {
  if (member == kValue) {
    setValue(arguments);
  } else {
    fields().Insert(arguments.number(0), arguments.number(1),
                    without(kBothMarks, arguments.assigned()));
  }
}

std::string DynamicArrayObject::value(const Arguments& arguments) {
  if (arguments.has(1)) return std::string(fields().get(arguments.number(0), arguments.number(1)));
  return arguments.has(0) ? std::string(fields().get(arguments.number(0))) : fields().text();
}

int DynamicArrayObject::count(const Arguments& arguments) {
  return arguments.has(0) ? fields().DCount(arguments.number(0)) : fields().DCount();
}

void DynamicArrayObject::setValue(const Arguments& arguments) {
  if (arguments.has(1)) {
    fields().set(arguments.number(0), arguments.number(1),
                 without(kBothMarks, arguments.assigned()));
  } else if (arguments.has(0)) {
    fields().set(arguments.number(0), without(kAttributeMarks, arguments.assigned()));
  } else {
    fields().setText(arguments.assigned());
  }
}

void DynamicArrayObject::write() {
  if (record_ == nullptr) {
    throw store::StoreError(store::kFailed, "the array was not read from a file");
  }
  record_->DBWrite();
  missing_ = false;
}

}  // namespace storecom
