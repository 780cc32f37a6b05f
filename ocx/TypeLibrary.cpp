#include <initguid.h>

#include "ocx/TypeLibrary.h"

#include "com/ComBorder.h"
#include "com/Module.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

namespace {

ComPtr<ITypeInfo> infoOf(const GUID& type) {
  ComPtr<ITypeLib> library;
  com::check(LoadTypeLibEx(com::modulePath().c_str(), REGKIND_NONE, &library), "the type library");
  ComPtr<ITypeInfo> info;
  com::check(library->GetTypeInfoOfGuid(type, &info), "the type library's contents");
  return info;
}

}  // namespace

const GUID& libraryId() { return LIBID_Tessaline; }

ComPtr<ITypeInfo> interfaceInfo() { return infoOf(__uuidof(_Ctr_OrgPriseCharge)); }
ComPtr<ITypeInfo> classInfo() { return infoOf(__uuidof(Ctr_OrgPriseCharge)); }

}  // namespace ocx
