#include "host/Events.h"

#include <ocidl.h>
#include <olectl.h>

#include <array>
#include <cstdio>

#include "com/ComBorder.h"
#include "com/Variant.h"

namespace host {

using com::comBorder;
using Microsoft::WRL::ComPtr;

namespace {

enum Event : DISPID { kSortir = 1, kEnregistre = 2, kSupprime = 3, kEchec = 4 };

// By its position in the declaration; a call has its arguments last to first.
const VARIANT& argument(const DISPPARAMS& given, UINT position) {
  if (position >= given.cArgs) throw com::Error(DISP_E_BADPARAMCOUNT, "an event's arguments");
  return given.rgvarg[given.cArgs - 1 - position];
}

std::wstring inHexadecimal(long number) {
  std::array<wchar_t, 16> text{};
  std::swprintf(text.data(), text.size(), L"0x%08lX", static_cast<unsigned long>(number));
  return text.data();
}

std::wstring described(DISPID event, const DISPPARAMS& given) {
  switch (event) {
    case kSortir:
      return L"Sortie demandée";
    case kEnregistre: {
      const std::wstring code = com::textOf(argument(given, 0));
      return com::booleanOf(argument(given, 1))
                 ? L"Nouvel organisme enregistré sous le code " + code
                 : L"Organisme " + code + L" enregistré";
    }
    case kSupprime:
      return L"Organisme " + com::textOf(argument(given, 0)) + L" supprimé";
    case kEchec:
      return L"Échec de la base dans " + com::textOf(argument(given, 0)) + L" (" +
             inHexadecimal(com::numberOf(argument(given, 1))) + L") : " +
             com::textOf(argument(given, 2));
    default:
      throw com::Error(DISP_E_MEMBERNOTFOUND, "an event that is not known");
  }
}

// Somebody else has changed the record: the control has words for it that the user can be shown.
bool isForTheUser(DISPID event, const DISPPARAMS& given) {
  constexpr auto kChanged = static_cast<long>(0x80040006);
  return event == kEchec && com::numberOf(argument(given, 1)) == kChanged;
}

}  // namespace

void Events::connect(IUnknown& control) {
  ComPtr<IProvideClassInfo2> information;
  ComPtr<IConnectionPointContainer> points;
  if (FAILED(control.QueryInterface(IID_PPV_ARGS(&information))) ||
      FAILED(information->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source_)) ||
      FAILED(control.QueryInterface(IID_PPV_ARGS(&points))) ||
      FAILED(points->FindConnectionPoint(source_, &point_))) {
    return;
  }
  if (FAILED(point_->Advise(this, &cookie_))) point_.Reset();
}

void Events::disconnect() {
  if (point_ != nullptr) point_->Unadvise(cookie_);
  point_.Reset();
}

HRESULT Events::QueryInterface(REFIID iid, void** object) {
  return comBorder([&]() -> HRESULT {
    if (object == nullptr) return E_POINTER;
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == source_;
    *object = known ? static_cast<IDispatch*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  });
}

ULONG Events::AddRef() { return ++references_; }

ULONG Events::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT Events::Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*, EXCEPINFO*,
                       UINT*) {
  return comBorder([&]() -> HRESULT {
    if (given == nullptr) return E_INVALIDARG;
    told_(described(event, *given));
    if (isForTheUser(event, *given)) warned_(com::textOf(argument(*given, 2)));
    return S_OK;
  });
}

}  // namespace host
