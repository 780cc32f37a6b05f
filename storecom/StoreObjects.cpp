#include "storecom/StoreObjects.h"

#include "storecom/Classes.h"
#include "storecom/DynamicArrayObject.h"
#include "stores/Stores.h"

namespace storecom {

namespace {

// As in the type library.
enum ClientMember : DISPID { kOpenDatabase = 1 };
enum DatabaseMember : DISPID { kOpenFile = 1, kExecuteSentence = 2, kNewDynamicArray = 3 };
enum FileMember : DISPID { kReadRecord = 1, kDeleteRecord = 2 };

template <class Object, class... Values>
com::Variant object(Values&&... values) {
  return com::Variant::ofObject(make<Object>(std::forward<Values>(values)...).Get());
}

}  // namespace

ClientObject::ClientObject() : Automation(kClientDispatch) {}

int ClientObject::mostArguments(DISPID member, bool isPut) const {
  return member == kOpenDatabase && !isPut ? 2 : -1;
}

com::Variant ClientObject::call(DISPID, const Arguments& arguments) {
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
  return !isPut && (member == kReadRecord || member == kDeleteRecord) ? 1 : -1;
}

com::Variant FileObject::call(DISPID member, const Arguments& arguments) {
  const std::string id = arguments.record(0);
  if (member == kReadRecord) return object<DynamicArrayObject>(file_->ReadRecord(id), file_);
  return com::Variant::ofNumber(file_->DeleteRecord(id));
}

}  // namespace storecom
