// The control as a COM object: what its container, a script and the host's code call.
#pragma once

#include <objsafe.h>
#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>
#include <wrl/client.h>

#include <memory>

#include "com/ComBorder.h"
#include "com/Module.h"
#include "control/Ctr_OrgPriseCharge.h"
#include "ocx/InPlace.h"
#include "ocx/Lifetime.h"
#include "ocx/PostedCall.h"
#include "ocx/PropertySinks.h"
#include "ocx/Saved.h"
#include "ocx/TessalineTypes.h"
#include "store/Database.h"
#include "toolkit/Desktop.h"

namespace ocx {

class ControlObject final : public _Ctr_OrgPriseCharge,
                            public IOleObject,
                            public IOleControl,
                            public IOleInPlaceObject,
                            public IOleInPlaceActiveObject,
                            public IViewObject2,
                            public IPersistStreamInit,
                            public IPersistPropertyBag,
                            public IPersistStorage,
                            public IProvideClassInfo2,
                            public IConnectionPointContainer,
                            public ISupportErrorInfo,
                            public IObjectSafety,
                            private Lifetime {
 public:
  // The new object has one reference, the caller's.
  static ControlObject* make() { return new ControlObject; }

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    return com::comBorder([&] { return query(wanted, object); });
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return com::comBorder<ULONG>([&] { return addReference(); });
  }
  ULONG STDMETHODCALLTYPE Release() override {
    return com::comBorder<ULONG>([&] { return releaseReference(); });
  }

  // IDispatch
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    return enter([&] { return give(count, 1U); });
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
    return enter([&] { return giveTypeInfo(index, info); });
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override {
    return enter([&] { return giveIds(names, count, ids); });
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD how, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception,
                                   UINT* wrongArgument) override {
    return enter([&] { return invoke(member, how, parameters, result, exception, wrongArgument); });
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

  // IOleObject
  HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override {
    return enter([&] { return setClientSite(site); });
  }
  HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override {
    return enter([&] { return giveObject(site, place_.site()); });
  }
  HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override {
    return enter([] { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE Close(DWORD save) override {
    return enter([&] { return close(save); });
  }
  HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override {
    return enter([] { return E_NOTIMPL; });
  }
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** moniker) override {
    return enter([&] { return give<IMoniker*>(moniker, nullptr, E_NOTIMPL); });
  }
  HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override {
    return enter([] { return E_NOTIMPL; });
  }
  HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject** data) override {
    return enter([&] { return give<IDataObject*>(data, nullptr, E_NOTIMPL); });
  }
  HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, MSG* message, IOleClientSite*, LONG, HWND,
                                   LPCRECT) override {
    return enter([&] { return doVerb(verb, message); });
  }
  HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB** verbs) override {
    return enter([&] { return give<IEnumOLEVERB*>(verbs, nullptr, OLEOBJ_E_NOVERBS); });
  }
  HRESULT STDMETHODCALLTYPE Update() override {
    return enter([] { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE IsUpToDate() override {
    return enter([] { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* type) override {
    return enter([&] { return give(type, __uuidof(Ctr_OrgPriseCharge)); });
  }
  HRESULT STDMETHODCALLTYPE GetUserType(DWORD, LPOLESTR* name) override {
    return enter([&] { return giveUserType(name); });
  }
  HRESULT STDMETHODCALLTYPE SetExtent(DWORD aspect, SIZEL* extent) override {
    return enter([&] { return setExtent(aspect, extent); });
  }
  HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, SIZEL* extent) override {
    return enter([&] { return giveExtent(aspect, extent); });
  }
  HRESULT STDMETHODCALLTYPE Advise(IAdviseSink* sink, DWORD* cookie) override {
    return enter([&] { return advise(sink, cookie); });
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    return enter([&] { return unadvise(cookie); });
  }
  HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA** sinks) override {
    return enter([&] { return enumerateAdvise(sinks); });
  }
  HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* status) override {
    return enter([&] { return giveMiscStatus(aspect, status); });
  }
  HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override {
    return enter([] { return E_NOTIMPL; });
  }

  // IOleControl
  HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* information) override {
    return enter([&] { return giveControlInfo(information); });
  }
  HRESULT STDMETHODCALLTYPE OnMnemonic(MSG* message) override {
    return enter([&] { return mnemonic(message); });
  }
  HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID) override {
    return enter([&] { return ambientsChanged(); });
  }
  HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL freeze) override {
    return enter([&] { return freezeEvents(freeze != FALSE); });
  }

  // IOleWindow
  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
    return enter([&] { return giveWindow(window); });
  }
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override {
    return enter([] { return E_NOTIMPL; });
  }

  // IOleInPlaceObject
  HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override {
    return enter([&] { return done([&] { place_.deactivate(); }); });
  }
  HRESULT STDMETHODCALLTYPE UIDeactivate() override {
    return enter([&] { return done([&] { place_.deactivateUi(); }); });
  }
  HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT place, LPCRECT clip) override {
    return enter([&] { return setObjectRects(place, clip); });
  }
  HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override {
    return enter([] { return INPLACE_E_NOTUNDOABLE; });
  }

  // IOleInPlaceActiveObject
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message) override {
    return enter([&] { return message == nullptr ? E_POINTER : place_.translate(*message); });
  }
  HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override {
    return enter([] { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override {
    return enter([] { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override {
    return enter([] { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override {
    return enter([] { return S_OK; });
  }

  // IViewObject2
  HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC context,
                                 LPCRECTL bounds, LPCRECTL, BOOL(CALLBACK*)(ULONG_PTR),
                                 ULONG_PTR) override {
    return enter([&] { return draw(aspect, context, bounds); });
  }
  HRESULT STDMETHODCALLTYPE GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC,
                                        LOGPALETTE** colors) override {
    return enter([&] { return give<LOGPALETTE*>(colors, nullptr, S_FALSE); });
  }
  HRESULT STDMETHODCALLTYPE Freeze(DWORD, LONG, void*, DWORD*) override {
    return enter([] { return E_NOTIMPL; });
  }
  HRESULT STDMETHODCALLTYPE Unfreeze(DWORD) override {
    return enter([] { return E_NOTIMPL; });
  }
  HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override {
    return enter([&] { return setViewAdvise(aspects, flags, sink); });
  }
  HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override {
    return enter([&] { return giveViewAdvise(aspects, flags, sink); });
  }
  HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, SIZEL* extent) override {
    return enter([&] { return giveExtent(aspect, extent); });
  }

  // IPersist, IPersistStreamInit, IPersistPropertyBag, IPersistStorage
  HRESULT STDMETHODCALLTYPE GetClassID(CLSID* type) override {
    return enter([&] { return give(type, __uuidof(Ctr_OrgPriseCharge)); });
  }
  HRESULT STDMETHODCALLTYPE IsDirty() override {
    return enter([&] { return dirty_ ? S_OK : S_FALSE; });
  }
  HRESULT STDMETHODCALLTYPE InitNew() override {
    return enter([&] { return initNew(); });
  }
  HRESULT STDMETHODCALLTYPE Load(IStream* stream) override {
    return enter([&] { return loadFrom(stream); });
  }
  HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL clearDirty) override {
    return enter([&] { return saveTo(stream, clearDirty != FALSE); });
  }
  HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) override {
    return enter([&] { return give(size, ULARGE_INTEGER{.QuadPart = kSavedBytes}); });
  }
  HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override {
    return enter([&] { return loadFrom(bag, log); });
  }
  HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clearDirty, BOOL) override {
    return enter([&] { return saveTo(bag, clearDirty != FALSE); });
  }
  HRESULT STDMETHODCALLTYPE InitNew(IStorage* storage) override {
    return enter([&] { return initNew(storage); });
  }
  HRESULT STDMETHODCALLTYPE Load(IStorage* storage) override {
    return enter([&] { return loadFrom(storage); });
  }
  HRESULT STDMETHODCALLTYPE Save(IStorage* storage, BOOL) override {
    return enter([&] { return saveTo(storage); });
  }
  HRESULT STDMETHODCALLTYPE SaveCompleted(IStorage*) override {
    return enter([&] { return saveCompleted(); });
  }
  HRESULT STDMETHODCALLTYPE HandsOffStorage() override {
    return enter([] { return S_OK; });
  }

  // IProvideClassInfo2
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override {
    return enter([&] { return giveClassInfo(info); });
  }
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD, GUID* events) override {
    return enter([&] { return give(events, GUID_NULL, E_INVALIDARG); });
  }

  // IConnectionPointContainer
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
    return enter([&] { return enumeratePoints(points); });
  }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID sink, IConnectionPoint** point) override {
    return enter([&] { return findPoint(sink, point); });
  }

  // ISupportErrorInfo
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID asked) override {
    return enter([&] { return asked == __uuidof(_Ctr_OrgPriseCharge) ? S_OK : S_FALSE; });
  }

  // IObjectSafety
  HRESULT STDMETHODCALLTYPE GetInterfaceSafetyOptions(REFIID asked, DWORD* supported,
                                                      DWORD* enabled) override {
    return enter([&] { return giveSafety(asked, supported, enabled); });
  }
  HRESULT STDMETHODCALLTYPE SetInterfaceSafetyOptions(REFIID asked, DWORD mask,
                                                      DWORD wanted) override {
    return enter([&] { return setSafety(asked, mask, wanted); });
  }

 private:
  using Control = control::Ctr_OrgPriseCharge;

  ControlObject();
  ~ControlObject() override;
  ControlObject(const ControlObject&) = delete;
  ControlObject& operator=(const ControlObject&) = delete;

  static VARIANT_BOOL truth(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }

  // The border, with a reference to the control and the host's theme until the call has unwound.
  template <class Body>
  HRESULT enter(const Body& body) noexcept {
    return com::comBorder([&] {
      const Entry entry(*this);
      return body();
    });
  }
  // The same for a member of the control; its own errors get their HRESULTs.
  template <class Body>
  HRESULT member(const Body& body) noexcept {
    return enter([&] {
      callControl([&] { body(control_); });
      return S_OK;
    });
  }
  static void callControl(const std::function<void()>& call);

  template <class Value>
  static HRESULT give(Value* out, Value value, HRESULT result = S_OK) {
    if (out == nullptr) return E_POINTER;
    *out = value;
    return result;
  }
  template <class Interface>
  static HRESULT giveObject(Interface** out, Interface* object) {
    if (out != nullptr && object != nullptr) object->AddRef();
    return give(out, object);
  }
  template <class Body>
  static HRESULT done(const Body& body) {
    body();
    return S_OK;
  }

  void abandoned() noexcept override;
  void idle() noexcept override;

  HRESULT query(REFIID wanted, void** object);
  void* find(REFIID wanted);

  HRESULT giveTypeInfo(UINT index, ITypeInfo** info);
  HRESULT giveIds(LPOLESTR* names, UINT count, DISPID* ids);
  HRESULT invoke(DISPID member, WORD how, DISPPARAMS* parameters, VARIANT* result,
                 EXCEPINFO* exception, UINT* wrongArgument);
  HRESULT keepRights(IDispatch* object);
  HRESULT keepClient(IDispatch* object);
  HRESULT keepDatabase(IDispatch* object);
  HRESULT verify(VARIANT_BOOL* accepted, bool (Control::*check)());
  HRESULT insertRate(short* index);

  HRESULT setClientSite(IOleClientSite* site);
  HRESULT close(DWORD save);
  HRESULT doVerb(LONG verb, const MSG* message);
  HRESULT giveUserType(LPOLESTR* name);
  HRESULT setExtent(DWORD aspect, const SIZEL* extent);
  HRESULT giveExtent(DWORD aspect, SIZEL* extent);
  HRESULT advise(IAdviseSink* sink, DWORD* cookie);
  HRESULT unadvise(DWORD cookie);
  HRESULT enumerateAdvise(IEnumSTATDATA** sinks);
  HRESULT giveMiscStatus(DWORD aspect, DWORD* status);

  HRESULT giveControlInfo(CONTROLINFO* information);
  HRESULT mnemonic(const MSG* message);
  HRESULT ambientsChanged();
  HRESULT freezeEvents(bool freeze);
  HRESULT giveWindow(HWND* window);
  HRESULT setObjectRects(const RECT* place, const RECT* clip);

  HRESULT draw(DWORD aspect, HDC context, const RECTL* bounds);
  HRESULT setViewAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink);
  HRESULT giveViewAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink);
  void viewChanged();

  HRESULT initNew();
  HRESULT initNew(IStorage* storage);
  HRESULT loadFrom(IStream* stream);
  HRESULT loadFrom(IPropertyBag* bag, IErrorLog* log);
  HRESULT loadFrom(IStorage* storage);
  HRESULT saveTo(IStream* stream, bool clearDirty);
  HRESULT saveTo(IPropertyBag* bag, bool clearDirty);
  HRESULT saveTo(IStorage* storage);
  HRESULT saveCompleted();

  HRESULT giveClassInfo(ITypeInfo** info);
  HRESULT enumeratePoints(IEnumConnectionPoints** points);
  HRESULT findPoint(REFIID sink, IConnectionPoint** point);
  HRESULT giveSafety(REFIID asked, DWORD* supported, DWORD* enabled);
  HRESULT setSafety(REFIID asked, DWORD mask, DWORD wanted);

  SIZEL naturalExtent() const;
  void noteSortir();
  bool tellSortir();

  com::Alive alive_;
  InPlace place_;
  std::unique_ptr<toolkit::Desktop> desktop_;
  Control control_;
  std::weak_ptr<store::Database>
      database_;  // what stands for the host's while the control holds it

  PropertySinks sinks_{*this};
  PostedCall sortirChanged_{[this] { return tellSortir(); }};
  Microsoft::WRL::ComPtr<IOleAdviseHolder> adviseHolder_;
  Microsoft::WRL::ComPtr<IAdviseSink> viewSink_;
  DWORD viewAspects_ = 0;
  DWORD viewFlags_ = 0;
  Microsoft::WRL::ComPtr<ITypeInfo> typeInfo_;
  Saved saved_;
  bool dirty_ = false;
  bool infoChanged_ = false;
  bool closeTold_ = false;  // since the last verb
  bool sortirPending_ = false;
  bool frozen_ = false;
  struct DestroyTable {
    void operator()(HACCEL table) const { DestroyAcceleratorTable(table); }
  };
  std::unique_ptr<std::remove_pointer_t<HACCEL>, DestroyTable> mnemonics_;
};

}  // namespace ocx
