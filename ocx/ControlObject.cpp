#include "ocx/ControlObject.h"

#include "ocx/PostedCall.h"
#include "toolkit/win32/Scale.h"
#include "toolkit/win32/SurfaceWindow.h"
#include "toolkit/win32/WindowsDesktop.h"

namespace ocx {

namespace {

constexpr int kTwipsPerInch = 1440;
constexpr int kHundredthsOfMillimetrePerInch = 2540;

LONG fromTwips(int twips) { return MulDiv(twips, kHundredthsOfMillimetrePerInch, kTwipsPerInch); }

SIZEL naturalExtent(toolkit::Surface& surface, const toolkit::win32::Ambience& look) {
  const toolkit::Extent least = surface.least();
  const toolkit::win32::Growth growth = toolkit::win32::growthOf(look);
  return {MulDiv(fromTwips(least.width), growth.across, 1000),
          MulDiv(fromTwips(least.height), growth.down, 1000)};
}

}  // namespace

IUnknown* ControlObject::make() { return &(new ControlObject)->automation_; }

ControlObject::ControlObject()
    : place_(placed_, [this] { return heldEntry(); }),
      desktop_(toolkit::win32::makeWindowsDesktop(place_)),
      control_(*desktop_),
      automation_(*this, control_),
      description_(*this),
      points_(*this),
      notices_(*this, points_),
      kept_(*this, [this] { return naturalExtent(control_.surface(), place_.ambients().look); }),
      view_(*this, control_.surface(), place_, kept_),
      placed_(*this, place_),
      embedded_(*this, place_, kept_, view_, notices_),
      hosted_(*this, control_.surface(), place_, view_, notices_) {
  place_.setSurface(control_.surface());
  kept_.setNaturalExtent();
  place_.onAmbients = [this] { kept_.followNaturalExtent(); };
  kept_.onSaved = [this] { embedded_.tellSaved(); };
  control_.surface().onInfoChanged = [this] { hosted_.noteInfoChanged(); };
  control_.onSortirChanged = [this] { notices_.sortirChanged(control_.W_Sortir()); };
  control_.onEnregistre = [this](const std::string& code, bool creation) {
    notices_.enregistre(code, creation);
  };
  control_.onSupprime = [this](const std::string& code) { notices_.supprime(code); };
  control_.onEchec = [this](std::string_view procedure, const store::StoreError& failure) {
    notices_.echec(procedure, failure);
  };
}

ControlObject::~ControlObject() {
  control_.onSortirChanged = nullptr;
  control_.onEnregistre = nullptr;
  control_.onSupprime = nullptr;
  control_.onEchec = nullptr;
  control_.surface().onInfoChanged = nullptr;
}

void ControlObject::abandoned() noexcept {
  com::comBorder([&] {
    notices_.forget();
    place_.setSite(nullptr);
    points_.clear();
    view_.forget();
    embedded_.forget();
    return S_OK;
  });
}

void ControlObject::idle() noexcept {
  com::comBorder([&] {
    place_.reopen();
    notices_.reopen();
    hosted_.tellInfoChanged();
    return S_OK;
  });
}

void* ControlObject::find(REFIID wanted) {
  struct Face {
    const IID* id;
    void* object;
  };
  const Face interfaces[] = {
      {&__uuidof(IUnknown), static_cast<_Ctr_OrgPriseCharge*>(&automation_)},
      {&__uuidof(IDispatch), static_cast<_Ctr_OrgPriseCharge*>(&automation_)},
      {&__uuidof(_Ctr_OrgPriseCharge), static_cast<_Ctr_OrgPriseCharge*>(&automation_)},
      {&__uuidof(IOleObject), static_cast<IOleObject*>(&embedded_)},
      {&__uuidof(IOleControl), static_cast<IOleControl*>(&hosted_)},
      {&__uuidof(IOleWindow), static_cast<IOleInPlaceObject*>(&placed_)},
      {&__uuidof(IOleInPlaceObject), static_cast<IOleInPlaceObject*>(&placed_)},
      {&__uuidof(IOleInPlaceActiveObject), static_cast<IOleInPlaceActiveObject*>(&placed_)},
      {&__uuidof(IViewObject), static_cast<IViewObject2*>(&view_)},
      {&__uuidof(IViewObject2), static_cast<IViewObject2*>(&view_)},
      {&__uuidof(IPersist), static_cast<IPersistStreamInit*>(&kept_)},
      {&__uuidof(IPersistStreamInit), static_cast<IPersistStreamInit*>(&kept_)},
      {&__uuidof(IPersistPropertyBag), static_cast<IPersistPropertyBag*>(&kept_)},
      {&__uuidof(IPersistStorage), static_cast<IPersistStorage*>(&kept_)},
      {&__uuidof(IProvideClassInfo), static_cast<IProvideClassInfo2*>(&description_)},
      {&__uuidof(IProvideClassInfo2), static_cast<IProvideClassInfo2*>(&description_)},
      {&__uuidof(IConnectionPointContainer), static_cast<IConnectionPointContainer*>(&points_)},
      {&__uuidof(ISupportErrorInfo), static_cast<ISupportErrorInfo*>(&description_)},
      {&IID_IObjectSafety, static_cast<IObjectSafety*>(&description_)},
  };
  for (const Face& face : interfaces) {
    if (*face.id == wanted) return face.object;
  }
  return nullptr;
}

}  // namespace ocx
