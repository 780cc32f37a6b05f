#include "tests/windows/container/Rules.h"

#include <algorithm>

namespace container {

namespace {

std::string nameOf(Bar bar) { return bar == Bar::Frame ? "Frame" : "Document"; }
std::string nameOf(bool value) { return value ? "TRUE" : "FALSE"; }

}  // namespace

Rules::Rules(const Offer& offer) : offer_(offer), thread_(GetCurrentThreadId()) {}

void Rules::violation(const std::string& text) { violations_.push_back(text); }

void Rules::require(bool holds, const std::string& text) {
  if (!holds) violation(text);
}

void Rules::called(const std::string& call) {
  calls_.push_back(call);
  require(GetCurrentThreadId() == thread_, call + " from another thread");
  require(connected_, call + " after Close, or without a site");
}

void Rules::canInPlaceActivate() {
  called("CanInPlaceActivate");
  require(!inPlace_, "CanInPlaceActivate while in-place active");
  asked_ = true;
}

void Rules::windowContext() {
  called("GetWindowContext");
  require(asked_, "GetWindowContext before CanInPlaceActivate");
}

void Rules::onInPlaceActivate() {
  called("OnInPlaceActivate");
  require(asked_, "OnInPlaceActivate before CanInPlaceActivate");
  require(!inPlace_, "OnInPlaceActivate twice");
  inPlace_ = true;
}

void Rules::onUIActivate() {
  called("OnUIActivate");
  require(inPlace_, "OnUIActivate before OnInPlaceActivate");
  require(!uiActive_, "OnUIActivate twice");
  uiActive_ = true;
}

void Rules::setActiveObject(Bar bar, bool set) {
  const std::string call = nameOf(bar) + ".SetActiveObject";
  called(call + (set ? "" : "(null)"));
  bool& active = activeObject_[static_cast<int>(bar)];
  if (set) {
    require(uiActive_, call + " before OnUIActivate");
    require(!focused_, call + " after OnFocus(TRUE)");
    require(!borderSpace_, call + " after SetBorderSpace(null)");
  } else {
    require(uiActive_, call + "(null) while not UI active");
    require(!focused_, call + "(null) before OnFocus(FALSE)");
    borderSpace_ = false;
  }
  active = set;
}

void Rules::setBorderSpace(Bar bar, bool null) {
  const std::string call = nameOf(bar) + ".SetBorderSpace";
  called(call + (null ? "(null)" : ""));
  require(null, call + " asks for space that the control does not need");
  if (bar == Bar::Document) {
    require(uiActive_, call + " while not UI active");
    return;
  }
  require(activeObject_[static_cast<int>(Bar::Frame)], call + " before SetActiveObject");
  require(!offer_.document || activeObject_[static_cast<int>(Bar::Document)],
          call + " before the document's SetActiveObject");
  borderSpace_ = true;
}

void Rules::onFocus(bool got) {
  const std::string call = "OnFocus(" + nameOf(got) + ")";
  called(call);
  require(got != focused_, call + " twice");
  require(!got || uiActive_, call + " before OnUIActivate");
  require(!got || !offer_.frame || borderSpace_, call + " before SetBorderSpace(null)");
  focused_ = got;
}

void Rules::onUIDeactivate() {
  called("OnUIDeactivate");
  require(uiActive_, "OnUIDeactivate while not UI active");
  require(!focused_, "OnUIDeactivate before OnFocus(FALSE)");
  require(!activeObject_[0] && !activeObject_[1], "OnUIDeactivate before SetActiveObject(null)");
  uiActive_ = false;
  borderSpace_ = false;
}

void Rules::onInPlaceDeactivate() {
  called("OnInPlaceDeactivate");
  require(inPlace_, "OnInPlaceDeactivate while not in-place active");
  require(!uiActive_, "OnInPlaceDeactivate before OnUIDeactivate");
  inPlace_ = false;
  asked_ = false;
}

void Rules::enableModeless(bool enable) {
  const std::string call = "EnableModeless(" + nameOf(enable) + ")";
  if (enable && modalDepth_ > 0)
    calls_.push_back(call);  // gives back what was taken, even after Close
  else
    called(call);
  modalDepth_ += enable ? -1 : 1;
  if (modalDepth_ >= 0) return;
  violation(call + " without an EnableModeless(FALSE) before it");
  modalDepth_ = 0;
}

void Rules::onControlInfoChanged() {
  called("OnControlInfoChanged");
  require(!insideHostCall("GetControlInfo"), "OnControlInfoChanged from within GetControlInfo");
}

void Rules::onChanged(DISPID property) {
  const std::string call = "OnChanged(" + std::to_string(property) + ")";
  called(call);
  requireRest(call);
}

void Rules::onEvent(const std::string& name) {
  called(name);
  requireRest(name);
}

// Nothing of the control may be running.
void Rules::requireRest(const std::string& call) {
  require(hostCalls_.empty(),
          call + " from within " + (hostCalls_.empty() ? "" : hostCalls_.back()));
  require(modalDepth_ == 0, call + " while a box is open");
}

void Rules::onPosRectChange() {
  called("OnPosRectChange");
  require(inPlace_, "OnPosRectChange while not in-place active");
}

void Rules::overReleased(const std::string& object) {
  violation(object + " released more often than it was held");
}

void Rules::connected() { connected_ = true; }

void Rules::disconnected() {
  require(!focused_, "Close without OnFocus(FALSE)");
  require(!uiActive_, "Close without OnUIDeactivate");
  require(!inPlace_, "Close without OnInPlaceDeactivate");
  connected_ = false;
}

void Rules::ended() {
  require(modalDepth_ == 0, "EnableModeless(FALSE) without an EnableModeless(TRUE) after it");
  require(!inPlace_, "released while in-place active");
}

bool Rules::insideHostCall(const std::string& name) const {
  return std::find(hostCalls_.begin(), hostCalls_.end(), name) != hostCalls_.end();
}

std::string Rules::report() const {
  std::string all;
  for (const std::string& text : violations_) all += text + "\n";
  return all;
}

Rules::HostCall::HostCall(Rules& rules, std::string name) : rules_(rules) {
  rules_.hostCalls_.push_back(std::move(name));
}

Rules::HostCall::~HostCall() { rules_.hostCalls_.pop_back(); }

}  // namespace container
