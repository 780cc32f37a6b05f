#include "storecom/RightsObject.h"

#include "storecom/Classes.h"

namespace storecom {

namespace {

// As in the type library.
enum RightsMember : DISPID { kEntry = 0, kSetLevel = 1 };
enum RightsEntryMember : DISPID { kLevel = 0 };

}  // namespace

RightsObject::RightsObject() : Automation(kRightsDispatch), levels_(std::make_shared<Levels>()) {}

int RightsObject::mostArguments(DISPID member, bool isPut) const {
  if (isPut || (member != kEntry && member != kSetLevel)) return -1;
  return member == kEntry ? 1 : 2;
}

com::Variant RightsObject::call(DISPID member, const Arguments& arguments) {
  std::string name = arguments.text(0);
  if (member == kSetLevel) {
    (*levels_)[name] = arguments.wholeNumber(1);
    return {};
  }
  return com::Variant::ofObject(make<RightsEntryObject>(levels_, std::move(name)).Get());
}

RightsEntryObject::RightsEntryObject(std::shared_ptr<const Levels> levels, std::string name)
    : Automation(kRightsEntryDispatch), levels_(std::move(levels)), name_(std::move(name)) {}

int RightsEntryObject::mostArguments(DISPID member, bool isPut) const {
  return member == kLevel && !isPut ? 0 : -1;
}

com::Variant RightsEntryObject::call(DISPID, const Arguments&) {
  const auto found = levels_->find(name_);
  return com::Variant::ofNumber(found == levels_->end() ? 0 : found->second);
}

}  // namespace storecom
