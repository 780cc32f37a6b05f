// The control's members as hosts and scripts call them.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include <functional>
#include <memory>

#include "control/Ctr_OrgPriseCharge.h"
#include "ocx/Answers.h"
#include "ocx/Members.h"
#include "ocx/Part.h"
#include "ocx/TessalineTypes.h"
#include "store/Database.h"

namespace ocx {

// Its own errors leave as their HRESULTs; what the host hands over is wrapped into the ports.
class Automation final : public Part<_Ctr_OrgPriseCharge> {
 public:
  Automation(Lifetime& whole, control::Ctr_OrgPriseCharge& control)
      : Part(whole), control_(control) {}
  ~Automation() = default;

  // IDispatch
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    return enter([&] { return give(count, 1U); });
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
    return enter([&] { return giveTypeInfo(index, info); });
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override {
    return enter([&] { return giveIds(reserved, names, count, ids); });
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID, WORD how,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* wrongArgument) override {
    return enter([&] {
      if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
      return invokeMember(*this, member, how, parameters, result, exception, wrongArgument);
    });
  }

  // _Ctr_OrgPriseCharge, in its order
  HRESULT STDMETHODCALLTYPE get_W_Sortir(VARIANT_BOOL* leave) override {
    return enter([&] { return give(leave, truth(control_.W_Sortir())); });
  }
  HRESULT STDMETHODCALLTYPE put_W_Sortir(VARIANT_BOOL leave) override {
    return member([&](Control& control) { control.setW_Sortir(leave != VARIANT_FALSE); });
  }
  HRESULT STDMETHODCALLTYPE put_DroitsUtilisateur(IDispatch* object) override {
    return enter([&] { return keepRights(object); });
  }
  HRESULT STDMETHODCALLTYPE putref_DroitsUtilisateur(IDispatch* object) override {
    return enter([&] { return keepRights(object); });
  }
  HRESULT STDMETHODCALLTYPE Affiche_Bareme() override {
    return member([](Control& control) { control.Affiche_Bareme(); });
  }
  HRESULT STDMETHODCALLTYPE AfficherZonesBareme() override {
    return member([](Control& control) { control.AfficherZonesBareme(); });
  }
  HRESULT STDMETHODCALLTYPE AfficherZonesTaux() override {
    return member([](Control& control) { control.AfficherZonesTaux(); });
  }
  HRESULT STDMETHODCALLTYPE AfficherZonesAbat() override {
    return member([](Control& control) { control.AfficherZonesAbat(); });
  }
  HRESULT STDMETHODCALLTYPE Creer_Donnees() override {
    return member([](Control& control) { control.Creer_Donnees(); });
  }
  HRESULT STDMETHODCALLTYPE Impression_ModifAccord() override {
    return member([](Control& control) { control.Impression_ModifAccord(); });
  }
  HRESULT STDMETHODCALLTYPE Init() override {
    return member([](Control& control) { control.Init(); });
  }
  HRESULT STDMETHODCALLTYPE Afficher_Ong1() override {
    return member([](Control& control) { control.Afficher_Ong1(); });
  }
  HRESULT STDMETHODCALLTYPE Afficher_Ong2() override {
    return member([](Control& control) { control.Afficher_Ong2(); });
  }
  HRESULT STDMETHODCALLTYPE Afficher_Ong3() override {
    return member([](Control& control) { control.Afficher_Ong3(); });
  }
  HRESULT STDMETHODCALLTYPE Afficher_Ong4() override {
    return member([](Control& control) { control.Afficher_Ong4(); });
  }
  HRESULT STDMETHODCALLTYPE Afficher_Ong5() override {
    return member([](Control& control) { control.Afficher_Ong5(); });
  }
  HRESULT STDMETHODCALLTYPE Afficher_Ong6() override {
    return member([](Control& control) { control.Afficher_Ong6(); });
  }
  HRESULT STDMETHODCALLTYPE Afficher_Donnees() override {
    return member([](Control& control) { control.Afficher_Donnees(); });
  }
  HRESULT STDMETHODCALLTYPE MasquerZonesTaux() override {
    return member([](Control& control) { control.MasquerZonesTaux(); });
  }
  HRESULT STDMETHODCALLTYPE MasquerZonesAbat() override {
    return member([](Control& control) { control.MasquerZonesAbat(); });
  }
  HRESULT STDMETHODCALLTYPE Remplir_OrgPriseChg() override {
    return member([](Control& control) { control.Remplir_OrgPriseChg(); });
  }
  HRESULT STDMETHODCALLTYPE Remplir_ParamsPoss() override {
    return member([](Control& control) { control.Remplir_ParamsPoss(); });
  }
  HRESULT STDMETHODCALLTYPE Long_ListeParam() override {
    return member([](Control& control) { control.Long_ListeParam(); });
  }
  HRESULT STDMETHODCALLTYPE Remplir_PiecesPoss() override {
    return member([](Control& control) { control.Remplir_PiecesPoss(); });
  }
  HRESULT STDMETHODCALLTYPE Remplir_StatOrgChg() override {
    return member([](Control& control) { control.Remplir_StatOrgChg(); });
  }
  HRESULT STDMETHODCALLTYPE Ecrire_Donnees() override {
    return member([](Control& control) { control.Ecrire_Donnees(); });
  }
  HRESULT STDMETHODCALLTYPE Ecrire_Ong1() override {
    return member([](Control& control) { control.Ecrire_Ong1(); });
  }
  HRESULT STDMETHODCALLTYPE Ecrire_Ong2() override {
    return member([](Control& control) { control.Ecrire_Ong2(); });
  }
  HRESULT STDMETHODCALLTYPE Ecrire_Ong3() override {
    return member([](Control& control) { control.Ecrire_Ong3(); });
  }
  HRESULT STDMETHODCALLTYPE Ecrire_Ong4() override {
    return member([](Control& control) { control.Ecrire_Ong4(); });
  }
  HRESULT STDMETHODCALLTYPE Ecrire_Ong5() override {
    return member([](Control& control) { control.Ecrire_Ong5(); });
  }
  HRESULT STDMETHODCALLTYPE Ecrire_Ong6() override {
    return member([](Control& control) { control.Ecrire_Ong6(); });
  }
  HRESULT STDMETHODCALLTYPE put_TheClient(IDispatch* object) override {
    return enter([&] { return keepClient(object); });
  }
  HRESULT STDMETHODCALLTYPE putref_TheClient(IDispatch* object) override {
    return enter([&] { return keepClient(object); });
  }
  HRESULT STDMETHODCALLTYPE put_TheDatabase(IDispatch* object) override {
    return enter([&] { return keepDatabase(object); });
  }
  HRESULT STDMETHODCALLTYPE putref_TheDatabase(IDispatch* object) override {
    return enter([&] { return keepDatabase(object); });
  }
  HRESULT STDMETHODCALLTYPE Verif_Ong1(VARIANT_BOOL* accepted) override {
    return enter([&] { return verify(accepted, &Control::Verif_Ong1); });
  }
  HRESULT STDMETHODCALLTYPE Verif_Ong3(VARIANT_BOOL* accepted) override {
    return enter([&] { return verify(accepted, &Control::Verif_Ong3); });
  }
  HRESULT STDMETHODCALLTYPE Verif_Ong4(VARIANT_BOOL* accepted) override {
    return enter([&] { return verify(accepted, &Control::Verif_Ong4); });
  }
  HRESULT STDMETHODCALLTYPE Verif_Ong2(VARIANT_BOOL* accepted) override {
    return enter([&] { return verify(accepted, &Control::Verif_Ong2); });
  }
  HRESULT STDMETHODCALLTYPE Verif_Ong5(VARIANT_BOOL* accepted) override {
    return enter([&] { return verify(accepted, &Control::Verif_Ong5); });
  }
  HRESULT STDMETHODCALLTYPE Vider_Donnees() override {
    return member([](Control& control) { control.Vider_Donnees(); });
  }
  HRESULT STDMETHODCALLTYPE Verif_Ong6(VARIANT_BOOL* accepted) override {
    return enter([&] { return verify(accepted, &Control::Verif_Ong6); });
  }
  HRESULT STDMETHODCALLTYPE Recup_Accord() override {
    return member([](Control& control) { control.Recup_Accord(); });
  }
  HRESULT STDMETHODCALLTYPE Recup_AccordTauxRemb() override {
    return member([](Control& control) { control.Recup_AccordTauxRemb(); });
  }
  HRESULT STDMETHODCALLTYPE Tri2() override {
    return member([](Control& control) { control.Tri2(); });
  }
  HRESULT STDMETHODCALLTYPE TriBareme() override {
    return member([](Control& control) { control.TriBareme(); });
  }
  HRESULT STDMETHODCALLTYPE TriAbat() override {
    return member([](Control& control) { control.TriAbat(); });
  }
  HRESULT STDMETHODCALLTYPE Remplir_Entite() override {
    return member([](Control& control) { control.Remplir_Entite(); });
  }
  HRESULT STDMETHODCALLTYPE Remplir_Liste_Activite() override {
    return member([](Control& control) { control.Remplir_Liste_Activite(); });
  }
  HRESULT STDMETHODCALLTYPE Passage_A_Droite() override {
    return member([](Control& control) { control.Passage_A_Droite(); });
  }
  HRESULT STDMETHODCALLTYPE Passage_A_Gauche() override {
    return member([](Control& control) { control.Passage_A_Gauche(); });
  }
  HRESULT STDMETHODCALLTYPE Passage_A_Droite_Tri() override {
    return member([](Control& control) { control.Passage_A_Droite_Tri(); });
  }
  HRESULT STDMETHODCALLTYPE Passage_A_Gauche_Tri() override {
    return member([](Control& control) { control.Passage_A_Gauche_Tri(); });
  }
  HRESULT STDMETHODCALLTYPE AjoutLists(short* index) override {
    return enter([&] { return insertRate(index); });
  }
  HRESULT STDMETHODCALLTYPE EffaceEltLists() override {
    return member([](Control& control) { control.EffaceEltLists(); });
  }
  HRESULT STDMETHODCALLTYPE DoubleClickTauxRemb() override {
    return member([](Control& control) { control.DoubleClickTauxRemb(); });
  }
  HRESULT STDMETHODCALLTYPE DoubleClickAbat() override {
    return member([](Control& control) { control.DoubleClickAbat(); });
  }
  HRESULT STDMETHODCALLTYPE RechercheAccord() override {
    return member([](Control& control) { control.RechercheAccord(); });
  }

 private:
  using Control = control::Ctr_OrgPriseCharge;

  // `enter` for a member of the control; its own errors get their HRESULTs.
  template <class Body>
  HRESULT member(const Body& body) noexcept {
    return enter([&] {
      callControl([&] { body(control_); });
      return S_OK;
    });
  }
  static void callControl(const std::function<void()>& call);

  HRESULT giveTypeInfo(UINT index, ITypeInfo** info);
  HRESULT giveIds(REFIID reserved, LPOLESTR* names, UINT count, DISPID* ids);
  HRESULT keepRights(IDispatch* object);
  HRESULT keepClient(IDispatch* object);
  HRESULT keepDatabase(IDispatch* object);
  HRESULT verify(VARIANT_BOOL* accepted, bool (Control::*check)());
  HRESULT insertRate(short* index);

  Control& control_;
  // What stands for the host's database while the control holds it.
  std::weak_ptr<store::Database> database_;
  Microsoft::WRL::ComPtr<ITypeInfo> typeInfo_;
};

}  // namespace ocx
