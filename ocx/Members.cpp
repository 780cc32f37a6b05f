#include "ocx/Members.h"

#include <algorithm>
#include <array>
#include <limits>

#include "com/ComBorder.h"
#include "com/Variant.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

namespace {

using Control = _Ctr_OrgPriseCharge;

struct Procedure {
  DISPID id;
  HRESULT (STDMETHODCALLTYPE Control::*call)();
};

struct Check {
  DISPID id;
  HRESULT (STDMETHODCALLTYPE Control::*call)(VARIANT_BOOL*);
};

constexpr std::array kProcedures{
    Procedure{3, &Control::Affiche_Bareme},
    Procedure{4, &Control::AfficherZonesBareme},
    Procedure{5, &Control::AfficherZonesTaux},
    Procedure{6, &Control::AfficherZonesAbat},
    Procedure{7, &Control::Creer_Donnees},
    Procedure{8, &Control::Impression_ModifAccord},
    Procedure{9, &Control::Init},
    Procedure{10, &Control::Afficher_Ong1},
    Procedure{11, &Control::Afficher_Ong2},
    Procedure{12, &Control::Afficher_Ong3},
    Procedure{13, &Control::Afficher_Ong4},
    Procedure{14, &Control::Afficher_Ong5},
    Procedure{15, &Control::Afficher_Ong6},
    Procedure{16, &Control::Afficher_Donnees},
    Procedure{17, &Control::MasquerZonesTaux},
    Procedure{18, &Control::MasquerZonesAbat},
    Procedure{19, &Control::Remplir_OrgPriseChg},
    Procedure{20, &Control::Remplir_ParamsPoss},
    Procedure{21, &Control::Long_ListeParam},
    Procedure{22, &Control::Remplir_PiecesPoss},
    Procedure{23, &Control::Remplir_StatOrgChg},
    Procedure{24, &Control::Ecrire_Donnees},
    Procedure{25, &Control::Ecrire_Ong1},
    Procedure{26, &Control::Ecrire_Ong2},
    Procedure{27, &Control::Ecrire_Ong3},
    Procedure{28, &Control::Ecrire_Ong4},
    Procedure{29, &Control::Ecrire_Ong5},
    Procedure{30, &Control::Ecrire_Ong6},
    Procedure{38, &Control::Vider_Donnees},
    Procedure{40, &Control::Recup_Accord},
    Procedure{41, &Control::Recup_AccordTauxRemb},
    Procedure{42, &Control::Tri2},
    Procedure{43, &Control::TriBareme},
    Procedure{44, &Control::TriAbat},
    Procedure{45, &Control::Remplir_Entite},
    Procedure{46, &Control::Remplir_Liste_Activite},
    Procedure{47, &Control::Passage_A_Droite},
    Procedure{48, &Control::Passage_A_Gauche},
    Procedure{49, &Control::Passage_A_Droite_Tri},
    Procedure{50, &Control::Passage_A_Gauche_Tri},
    Procedure{52, &Control::EffaceEltLists},
    Procedure{53, &Control::DoubleClickTauxRemb},
    Procedure{54, &Control::DoubleClickAbat},
    Procedure{55, &Control::RechercheAccord},
};

constexpr std::array kChecks{
    Check{33, &Control::Verif_Ong1}, Check{34, &Control::Verif_Ong3},
    Check{35, &Control::Verif_Ong4}, Check{36, &Control::Verif_Ong2},
    Check{37, &Control::Verif_Ong5}, Check{39, &Control::Verif_Ong6},
};

template <class Table>
auto entryOf(const Table& table, DISPID id) {
  return std::find_if(table.begin(), table.end(),
                      [id](const auto& entry) { return entry.id == id; });
}

struct Call {
  DISPID member;
  WORD how;
  DISPPARAMS* parameters;
  VARIANT* result;
  EXCEPINFO* exception;
  UINT* wrongArgument;
};

bool isPut(const Call& call) {
  return (call.how & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
}

void give(const Call& call, com::Variant value) {
  if (call.result != nullptr) *call.result = value.release();
}

void expectArguments(const Call& call, UINT count) {
  if (call.parameters->cArgs != count) {
    throw com::Error(DISP_E_BADPARAMCOUNT, "the number of arguments");
  }
  const UINT named = isPut(call) ? 1 : 0;
  if (call.parameters->cNamedArgs > named) throw com::Error(DISP_E_NONAMEDARGS, "named arguments");
}

VARIANT& onlyArgument(const Call& call) {
  expectArguments(call, 1);
  return call.parameters->rgvarg[0];
}

// Reads the only argument with one of the conversions of com/Variant.h.
template <class Read>
auto readArgument(const Call& call, Read read) {
  VARIANT& argument = onlyArgument(call);
  try {
    return read(argument);
  } catch (const com::Error&) {
    if (call.wrongArgument != nullptr) *call.wrongArgument = 0;
    throw;
  }
}

void describe(EXCEPINFO& exception, HRESULT failure) {
  exception = EXCEPINFO{};
  exception.scode = failure;
  ComPtr<IErrorInfo> info;
  if (GetErrorInfo(0, &info) == S_OK) {
    info->GetSource(&exception.bstrSource);
    info->GetDescription(&exception.bstrDescription);
  }
}

HRESULT ended(const Call& call, HRESULT result) {
  if (SUCCEEDED(result) || call.exception == nullptr) return result;
  describe(*call.exception, result);
  return DISP_E_EXCEPTION;
}

HRESULT callSortir(Control& control, const Call& call) {
  if (isPut(call)) {
    const bool leave = readArgument(call, com::booleanOf);
    return ended(call, control.put_W_Sortir(leave ? VARIANT_TRUE : VARIANT_FALSE));
  }
  expectArguments(call, 0);
  VARIANT_BOOL leave = VARIANT_FALSE;
  const HRESULT result = control.get_W_Sortir(&leave);
  give(call, com::Variant::ofBoolean(leave != VARIANT_FALSE));
  return ended(call, result);
}

HRESULT callObject(Control& control, const Call& call) {
  if (!isPut(call)) return DISP_E_MEMBERNOTFOUND;
  const ComPtr<IDispatch> object = readArgument(call, com::objectOf);
  switch (call.member) {
    case kDroits:
      return ended(call, control.putref_DroitsUtilisateur(object.Get()));
    case kClient:
      return ended(call, control.putref_TheClient(object.Get()));
    default:
      return ended(call, control.putref_TheDatabase(object.Get()));
  }
}

HRESULT callAjoutLists(Control& control, const Call& call) {
  const long number = readArgument(call, com::numberOf);
  if (number < std::numeric_limits<short>::min() || number > std::numeric_limits<short>::max()) {
    return DISP_E_OVERFLOW;
  }
  auto index = static_cast<short>(number);
  const HRESULT result = control.AjoutLists(&index);
  if (SUCCEEDED(result)) com::writeBack(onlyArgument(call), com::Variant::ofShort(index));
  return ended(call, result);
}

HRESULT callCheck(Control& control, const Check& check, const Call& call) {
  expectArguments(call, 0);
  VARIANT_BOOL accepted = VARIANT_FALSE;
  const HRESULT result = (control.*check.call)(&accepted);
  give(call, com::Variant::ofBoolean(accepted != VARIANT_FALSE));
  return ended(call, result);
}

HRESULT callMethod(Control& control, const Call& call) {
  if ((call.how & DISPATCH_METHOD) == 0) return DISP_E_MEMBERNOTFOUND;
  if (call.member == kAjoutLists) return callAjoutLists(control, call);
  if (const auto check = entryOf(kChecks, call.member); check != kChecks.end()) {
    return callCheck(control, *check, call);
  }
  const auto procedure = entryOf(kProcedures, call.member);
  if (procedure == kProcedures.end()) return DISP_E_MEMBERNOTFOUND;
  expectArguments(call, 0);
  return ended(call, (control.*procedure->call)());
}

}  // namespace

HRESULT invokeMember(_Ctr_OrgPriseCharge& control, DISPID member, WORD how, DISPPARAMS* parameters,
                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) {
  if (parameters == nullptr) return E_INVALIDARG;
  if (result != nullptr) VariantInit(result);
  SetErrorInfo(0, nullptr);
  const Call call{member, how, parameters, result, exception, wrongArgument};
  switch (member) {
    case kSortir:
      return callSortir(control, call);
    case kDroits:
    case kClient:
    case kDatabase:
      return callObject(control, call);
    default:
      return callMethod(control, call);
  }
}

}  // namespace ocx
