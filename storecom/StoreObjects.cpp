#include "storecom/StoreObjects.h"

#include <string>
#include <vector>

#include "storecom/Classes.h"
#include "storecom/DynamicArrayObject.h"
#include "stores/Stores.h"

namespace storecom {

namespace {

// As in the type library.
enum ClientMember : DISPID { kOpenDatabase = 1, kCreateDatabase = 2 };
enum DatabaseMember : DISPID { kOpenFile = 1, kExecuteSentence = 2, kNewDynamicArray = 3 };
enum FileMember : DISPID {
  kReadRecord = 1,
  kDeleteRecord = 2,
  kAnnounceRecords = 3,
  kAnnounceAll = 4
};

template <class Object, class... Values>
com::Variant object(Values&&... values) {
  return com::Variant::ofObject(make<Object>(std::forward<Values>(values)...).Get());
}

std::vector<std::string> attributesOf(const store::DynamicArray& list) {
  std::vector<std::string> attributes;
  for (int i = 1; i <= list.DCount(); ++i) attributes.emplace_back(list.get(i));
  return attributes;
}

}  // namespace

ClientObject::ClientObject() : Automation(kClientDispatch) {}

int ClientObject::mostArguments(DISPID member, bool isPut) const {
  if (isPut || (member != kOpenDatabase && member != kCreateDatabase)) return -1;
  return member == kOpenDatabase ? 2 : 1;
}

com::Variant ClientObject::call(DISPID member, const Arguments& arguments) {
  if (member == kCreateDatabase) return object<DatabaseObject>(stores::create(arguments.text(0)));
  const bool readOnly = arguments.has(1) && arguments.boolean(1);
  return object<DatabaseObject>(stores::open(arguments.text(0), readOnly));
}

DatabaseObject::DatabaseObject(std::shared_ptr<store::Database> database)
    : Automation(kDatabaseDispatch), database_(std::move(database)) {}

int DatabaseObject::mostArguments(DISPID member, bool isPut) const {
  if (isPut || member < kOpenFile || member > kNewDynamicArray) return -1;
  return member == kNewDynamicArray ? 0 : 1;
}

com::Variant DatabaseObject::call(DISPID member, const Arguments& arguments) {
  switch (member) {
    case kOpenFile:
      return object<FileObject>(
          std::shared_ptr<store::File>(database_->OpenFile(arguments.text(0))));
    case kExecuteSentence:
      return object<DynamicArrayObject>(database_->ExecuteSentence(arguments.record(0)));
    default:
      return object<DynamicArrayObject>(store::NewDynamicArray());
  }
}

FileObject::FileObject(std::shared_ptr<store::File> file)
    : Automation(kFileDispatch), file_(std::move(file)) {}

int FileObject::mostArguments(DISPID member, bool isPut) const {
  if (isPut || member < kReadRecord || member > kAnnounceAll) return -1;
  return member == kAnnounceAll ? 0 : 1;
}

com::Variant FileObject::call(DISPID member, const Arguments& arguments) {
  switch (member) {
    case kReadRecord:
      return object<DynamicArrayObject>(file_->ReadRecord(arguments.record(0)), file_);
    case kDeleteRecord:
      return com::Variant::ofNumber(file_->DeleteRecord(arguments.record(0)));
    case kAnnounceRecords:
      file_->announce(attributesOf(store::DynamicArray(arguments.record(0))));
      return {};
    default:
      file_->announceAll();
      return {};
  }
}

}  // namespace storecom
