// The control's members as late-bound callers see them.
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "com/Variant.h"
#include "tests/windows/registration/FakeObject.h"
#include "tests/windows/registration/Library.h"

namespace {

using Microsoft::WRL::ComPtr;

class Members : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(library_.loaded());
    control_ = library_.create();
    ASSERT_NE(control_, nullptr);
  }

  DISPID idOf(const wchar_t* name) {
    std::wstring copy(name);
    LPOLESTR names = copy.data();
    DISPID id = DISPID_UNKNOWN;
    control_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
    return id;
  }

  // What the type library describes, in its order.
  void forEachFunction(const std::function<void(ITypeInfo&, const FUNCDESC&)>& visit) {
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(control_->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    const UINT functions = attributes->cFuncs;
    info->ReleaseTypeAttr(attributes);
    for (UINT at = 0; at < functions; ++at) {
      FUNCDESC* function = nullptr;
      ASSERT_EQ(info->GetFuncDesc(at, &function), S_OK);
      visit(*info.Get(), *function);
      info->ReleaseFuncDesc(function);
    }
  }

  HRESULT call(const wchar_t* name, WORD how, std::vector<VARIANT> arguments = {}) {
    DISPID named = DISPID_PROPERTYPUT;
    const bool puts = (how & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    DISPPARAMS parameters{arguments.data(), puts ? &named : nullptr,
                          static_cast<UINT>(arguments.size()), puts ? 1U : 0U};
    exception_ = EXCEPINFO{};
    const HRESULT result = control_->Invoke(idOf(name), IID_NULL, LOCALE_USER_DEFAULT, how,
                                            &parameters, result_.out(), &exception_, nullptr);
    description_ = com::viewOf(exception_.bstrDescription);
    SysFreeString(exception_.bstrDescription);
    SysFreeString(exception_.bstrSource);
    return result;
  }

  Library library_;
  ComPtr<_Ctr_OrgPriseCharge> control_;
  com::Variant result_;
  EXCEPINFO exception_{};
  std::wstring description_;
};

TEST_F(Members, HaveStableNumbers) {
  const wchar_t* const names[] = {L"W_Sortir",
                                  L"DroitsUtilisateur",
                                  L"Affiche_Bareme",
                                  L"AfficherZonesBareme",
                                  L"AfficherZonesTaux",
                                  L"AfficherZonesAbat",
                                  L"Creer_Donnees",
                                  L"Impression_ModifAccord",
                                  L"Init",
                                  L"Afficher_Ong1",
                                  L"Afficher_Ong2",
                                  L"Afficher_Ong3",
                                  L"Afficher_Ong4",
                                  L"Afficher_Ong5",
                                  L"Afficher_Ong6",
                                  L"Afficher_Donnees",
                                  L"MasquerZonesTaux",
                                  L"MasquerZonesAbat",
                                  L"Remplir_OrgPriseChg",
                                  L"Remplir_ParamsPoss",
                                  L"Long_ListeParam",
                                  L"Remplir_PiecesPoss",
                                  L"Remplir_StatOrgChg",
                                  L"Ecrire_Donnees",
                                  L"Ecrire_Ong1",
                                  L"Ecrire_Ong2",
                                  L"Ecrire_Ong3",
                                  L"Ecrire_Ong4",
                                  L"Ecrire_Ong5",
                                  L"Ecrire_Ong6",
                                  L"TheClient",
                                  L"TheDatabase",
                                  L"Verif_Ong1",
                                  L"Verif_Ong3",
                                  L"Verif_Ong4",
                                  L"Verif_Ong2",
                                  L"Verif_Ong5",
                                  L"Vider_Donnees",
                                  L"Verif_Ong6",
                                  L"Recup_Accord",
                                  L"Recup_AccordTauxRemb",
                                  L"Tri2",
                                  L"TriBareme",
                                  L"TriAbat",
                                  L"Remplir_Entite",
                                  L"Remplir_Liste_Activite",
                                  L"Passage_A_Droite",
                                  L"Passage_A_Gauche",
                                  L"Passage_A_Droite_Tri",
                                  L"Passage_A_Gauche_Tri",
                                  L"AjoutLists",
                                  L"EffaceEltLists",
                                  L"DoubleClickTauxRemb",
                                  L"DoubleClickAbat",
                                  L"RechercheAccord"};
  DISPID expected = 0;
  for (const wchar_t* name : names) {
    EXPECT_EQ(idOf(name), ++expected) << testing::PrintToString(std::wstring(name));
  }
}

// A host compiled against the vtable finds each member at its place in the published order.
TEST_F(Members, StandInTheirPublishedOrder) {
  DISPID last = 0;
  int members = 0;
  forEachFunction([&](ITypeInfo&, const FUNCDESC& function) {
    if (function.memid <= 0 || function.memid >= 1000) return;
    EXPECT_GE(function.memid, last);
    last = function.memid;
    ++members;
  });
  EXPECT_EQ(last, 55);
  EXPECT_EQ(members, 59);  // get and let of W_Sortir, put and putref of three objects
}

TEST_F(Members, SortirIsReadAndAssigned) {
  EXPECT_EQ(call(L"W_Sortir", DISPATCH_PROPERTYGET), S_OK);
  EXPECT_EQ(result_.get().vt, VT_BOOL);
  EXPECT_FALSE(com::booleanOf(result_.get()));
  EXPECT_EQ(call(L"W_Sortir", DISPATCH_PROPERTYPUT, {com::Variant::ofNumber(1).get()}), S_OK);
  EXPECT_EQ(call(L"W_Sortir", DISPATCH_METHOD | DISPATCH_PROPERTYGET), S_OK);
  EXPECT_TRUE(com::booleanOf(result_.get()));
}

TEST_F(Members, ObjectsAreTakenByPutAndByPutReference) {
  const ComPtr<FakeObject> object = FakeObject::make();
  const com::Variant argument = com::Variant::ofObject(object.Get());
  VARIANT wrapped;
  VariantInit(&wrapped);
  wrapped.vt = VT_BYREF | VT_VARIANT;
  wrapped.pvarVal = const_cast<VARIANT*>(&argument.get());
  for (const WORD how : {WORD{DISPATCH_PROPERTYPUT}, WORD{DISPATCH_PROPERTYPUTREF}}) {
    EXPECT_EQ(call(L"TheClient", how, {argument.get()}), S_OK);
    EXPECT_EQ(call(L"TheClient", how, {wrapped}), S_OK);
    EXPECT_EQ(call(L"TheDatabase", how, {argument.get()}), S_OK);
  }
  EXPECT_EQ(call(L"TheDatabase", DISPATCH_PROPERTYPUT, {com::Variant::ofNumber(3).get()}),
            DISP_E_TYPEMISMATCH);
  EXPECT_EQ(call(L"TheDatabase", DISPATCH_PROPERTYGET), DISP_E_MEMBERNOTFOUND);
}

TEST_F(Members, RightsAreAskedForTheirEntryAtOnce) {
  const ComPtr<FakeObject> rights = FakeObject::make();
  rights->gives(L"", FakeObject::make());
  EXPECT_EQ(control_->putref_DroitsUtilisateur(rights.Get()), S_OK);
  EXPECT_EQ(rights->journal, std::vector<std::wstring>{L"(CONSULTATIONORGCHARGE)"});
  rights->on(L"", [](const FakeCall&) { return static_cast<HRESULT>(0x80040005U); });
  EXPECT_EQ(control_->putref_DroitsUtilisateur(rights.Get()), static_cast<HRESULT>(0x80040005U));
}

TEST_F(Members, OfThePagesWaitForInit) {
  for (const wchar_t* name : {L"Affiche_Bareme",
                              L"AfficherZonesBareme",
                              L"AfficherZonesTaux",
                              L"AfficherZonesAbat",
                              L"MasquerZonesTaux",
                              L"MasquerZonesAbat",
                              L"Tri2",
                              L"TriBareme",
                              L"TriAbat",
                              L"EffaceEltLists",
                              L"DoubleClickTauxRemb",
                              L"DoubleClickAbat",
                              L"Afficher_Ong3",
                              L"Afficher_Ong4",
                              L"Ecrire_Ong3",
                              L"Ecrire_Ong4",
                              L"Verif_Ong3",
                              L"Verif_Ong4",
                              L"Afficher_Ong1",
                              L"Afficher_Ong2",
                              L"Afficher_Ong5",
                              L"Afficher_Ong6",
                              L"Ecrire_Ong1",
                              L"Ecrire_Ong2",
                              L"Ecrire_Ong5",
                              L"Ecrire_Ong6",
                              L"Verif_Ong1",
                              L"Verif_Ong2",
                              L"Verif_Ong5",
                              L"Verif_Ong6",
                              L"Remplir_ParamsPoss",
                              L"Long_ListeParam",
                              L"Remplir_PiecesPoss",
                              L"Remplir_StatOrgChg",
                              L"Remplir_Entite",
                              L"Remplir_Liste_Activite",
                              L"Passage_A_Droite",
                              L"Passage_A_Gauche",
                              L"Passage_A_Droite_Tri",
                              L"Passage_A_Gauche_Tri",
                              L"RechercheAccord",
                              L"Impression_ModifAccord",
                              L"Recup_Accord",
                              L"Recup_AccordTauxRemb"}) {
    EXPECT_EQ(call(name, DISPATCH_METHOD), DISP_E_EXCEPTION);
    EXPECT_EQ(exception_.scode, E_UNEXPECTED) << testing::PrintToString(std::wstring(name));
    EXPECT_EQ(description_, L"Init has not succeeded")
        << testing::PrintToString(std::wstring(name));
  }
}

// Through the vtable too, and never with an answer that was not asked for.
TEST_F(Members, ThatCheckAPageNeedAPlaceForTheAnswer) {
  EXPECT_EQ(control_->Verif_Ong2(nullptr), E_POINTER);
  EXPECT_EQ(control_->Verif_Ong5(nullptr), E_POINTER);
  EXPECT_EQ(control_->Verif_Ong6(nullptr), E_POINTER);
  VARIANT_BOOL accepted = VARIANT_TRUE;
  EXPECT_EQ(control_->Verif_Ong6(&accepted), E_UNEXPECTED);
  EXPECT_EQ(accepted, VARIANT_FALSE);
}

// Scripts hand every variable over as a reference to a variant.
TEST_F(Members, AjoutListsTakesAnyNumberByReference) {
  com::Variant number = com::Variant::ofShort(2);
  VARIANT reference;
  VariantInit(&reference);
  reference.vt = VT_BYREF | VT_VARIANT;
  reference.pvarVal = number.out();
  *reference.pvarVal = com::Variant::ofNumber(2).release();
  const HRESULT result = call(L"AjoutLists", DISPATCH_METHOD, {reference});
  EXPECT_EQ(result, DISP_E_EXCEPTION);
  EXPECT_EQ(exception_.scode, E_UNEXPECTED);
  EXPECT_EQ(com::numberOf(number.get()), 2);
  EXPECT_EQ(call(L"AjoutLists", DISPATCH_METHOD, {com::Variant::ofNumber(40000).get()}),
            DISP_E_OVERFLOW);
  EXPECT_EQ(call(L"AjoutLists", DISPATCH_METHOD, {com::Variant::ofText(L"deux").get()}),
            DISP_E_TYPEMISMATCH);
  EXPECT_EQ(control_->AjoutLists(nullptr), E_POINTER);
}

TEST_F(Members, RefuseAWrongNumberOfArguments) {
  EXPECT_EQ(call(L"Init", DISPATCH_METHOD, {com::Variant::ofNumber(1).get()}),
            DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(call(L"AjoutLists", DISPATCH_METHOD), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(call(L"Personne", DISPATCH_METHOD), DISP_E_MEMBERNOTFOUND);
}

TEST_F(Members, AProcedureIsNoPropertyToBeRead) {
  for (const wchar_t* name : {L"Init", L"Verif_Ong1", L"AjoutLists", L"Vider_Donnees"}) {
    EXPECT_EQ(call(name, DISPATCH_PROPERTYGET), DISP_E_MEMBERNOTFOUND)
        << testing::PrintToString(std::wstring(name));
  }
  // A language that does not tell the two apart asks for either.
  EXPECT_EQ(call(L"Verif_Ong1", DISPATCH_METHOD | DISPATCH_PROPERTYGET), DISP_E_EXCEPTION);
}

TEST_F(Members, TheReservedInterfaceIsNone) {
  DISPPARAMS none{};
  EXPECT_EQ(control_->Invoke(1, IID_IUnknown, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                             result_.out(), nullptr, nullptr),
            DISP_E_UNKNOWNINTERFACE);
  wchar_t name[] = L"Init";
  LPOLESTR names = name;
  DISPID id = 0;
  EXPECT_EQ(control_->GetIDsOfNames(IID_IUnknown, &names, 1, LOCALE_USER_DEFAULT, &id),
            DISP_E_UNKNOWNINTERFACE);
}

TEST_F(Members, NowhereToPutAnAnswerIsRefused) {
  wchar_t name[] = L"Init";
  LPOLESTR names = name;
  EXPECT_EQ(control_->GetTypeInfoCount(nullptr), E_POINTER);
  EXPECT_EQ(control_->GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr), E_POINTER);
  EXPECT_EQ(control_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, nullptr), E_POINTER);
  EXPECT_EQ(control_->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, nullptr,
                             nullptr, nullptr, nullptr),
            E_INVALIDARG);
}

// Each member has a text of its own for those who browse the library; nothing else of it is
// English.
TEST_F(Members, AreExplainedInFrench) {
  int members = 0;
  forEachFunction([&](ITypeInfo& info, const FUNCDESC& function) {
    const DISPID id = function.memid;
    const WORD flags = function.wFuncFlags;
    if (id < 1 || id > 55) return;
    ++members;
    BSTR help = nullptr;
    ASSERT_EQ(info.GetDocumentation(id, nullptr, &help, nullptr, nullptr), S_OK);
    EXPECT_FALSE(com::viewOf(help).empty()) << id;
    if (id == 1) {
      EXPECT_EQ(std::wstring(com::viewOf(help)),
                L"Vrai d\u00E8s que l'utilisateur a demand\u00E9 \u00E0 sortir");
      EXPECT_NE(flags & FUNCFLAG_FNONBROWSABLE, 0);
    } else {
      EXPECT_EQ(flags & FUNCFLAG_FNONBROWSABLE, 0) << id;
    }
    SysFreeString(help);
  });
  EXPECT_GT(members, 0);
}

TEST_F(Members, InitWithoutItsObjectsIsAFailureWithAText) {
  EXPECT_EQ(control_->Init(), E_UNEXPECTED);
  EXPECT_EQ(call(L"Init", DISPATCH_METHOD), DISP_E_EXCEPTION);
  EXPECT_EQ(exception_.scode, E_UNEXPECTED);
  EXPECT_FALSE(description_.empty());
}

TEST_F(Members, AFailureOfTheStoreKeepsItsCode) {
  const ComPtr<FakeObject> entry = FakeObject::make();
  entry->on(L"Level", [](const FakeCall& made) {
    *made.result = com::Variant::ofNumber(2).release();
    return S_OK;
  });
  const ComPtr<FakeObject> rights = FakeObject::make();
  rights->gives(L"", entry);
  const ComPtr<FakeObject> database = FakeObject::make();
  database->on(L"OpenFile", [](const FakeCall&) { return static_cast<HRESULT>(0x80040001U); });
  ASSERT_EQ(control_->putref_DroitsUtilisateur(rights.Get()), S_OK);
  ASSERT_EQ(control_->putref_TheClient(database.Get()), S_OK);
  ASSERT_EQ(control_->putref_TheDatabase(database.Get()), S_OK);
  EXPECT_EQ(control_->Init(), static_cast<HRESULT>(0x80040001U));
  EXPECT_EQ(call(L"Init", DISPATCH_METHOD), DISP_E_EXCEPTION);
  EXPECT_EQ(exception_.scode, static_cast<SCODE>(0x80040001U));
  EXPECT_NE(description_.find(L"OpenFile"), std::wstring::npos);
}

}  // namespace
