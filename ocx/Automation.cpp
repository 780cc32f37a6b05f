#include "ocx/Automation.h"

#include <utility>

#include "ocx/HostRights.h"
#include "ocx/HostStore.h"
#include "ocx/TypeLibrary.h"
#include "toolkit/ControlClosed.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

HRESULT Automation::giveTypeInfo(UINT index, ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  if (typeInfo_ == nullptr) typeInfo_ = interfaceInfo();
  return giveObject(info, typeInfo_.Get());
}

HRESULT Automation::giveIds(REFIID reserved, LPOLESTR* names, UINT count, DISPID* ids) {
  if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (names == nullptr || ids == nullptr) return E_POINTER;
  ComPtr<ITypeInfo> info;
  giveTypeInfo(0, &info);
  return DispGetIDsOfNames(info.Get(), names, count, ids);
}

void Automation::callControl(const std::function<void()>& call) {
  try {
    call();
  } catch (const control::Busy& failure) {
    throw com::Error(HRESULT_FROM_WIN32(ERROR_BUSY), failure.what());
  } catch (const control::AccessDenied& failure) {
    throw com::Error(E_ACCESSDENIED, failure.what());
  } catch (const control::NotReady& failure) {
    throw com::Error(E_UNEXPECTED, failure.what());
  } catch (const toolkit::ControlClosed&) {
    throw com::Error(E_ABORT, "the control was closed meanwhile");
  }
}

HRESULT Automation::keepRights(IDispatch* object) {
  callControl([&] { control_.setDroitsUtilisateur(rightsOf(object)); });
  return S_OK;
}

HRESULT Automation::keepClient(IDispatch* object) {
  const auto release = [](void* client) { static_cast<IDispatch*>(client)->Release(); };
  std::shared_ptr<void> client;
  if (object != nullptr) {
    object->AddRef();
    client = {object, release};
  }
  callControl([&] { control_.setTheClient(std::move(client)); });
  return S_OK;
}

HRESULT Automation::keepDatabase(IDispatch* object) {
  std::shared_ptr<store::Database> database = database_.lock();
  if (database == nullptr || !isDatabaseOf(*database, object)) database = databaseOf(object);
  callControl([&] { control_.setTheDatabase(database); });
  database_ = database;
  return S_OK;
}

HRESULT Automation::insertRate(short* index) {
  if (index == nullptr) return E_POINTER;
  callControl([&] { control_.AjoutLists(*index); });
  return S_OK;
}

HRESULT Automation::verify(VARIANT_BOOL* accepted, bool (Control::*check)()) {
  if (accepted == nullptr) return E_POINTER;
  *accepted = VARIANT_FALSE;
  callControl([&] { *accepted = truth((control_.*check)()); });
  return S_OK;
}

}  // namespace ocx
