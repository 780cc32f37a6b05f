// What a control may call on its container, and when. Every call is kept in order; what breaks a
// rule is kept as a violation, in words.
#pragma once

#include <oaidl.h>
#include <windows.h>

#include <string>
#include <vector>

namespace container {

// The two windows around a control that hold bars and an active object.
enum class Bar { Frame, Document };

// What the container offers; a control need not call what is not there.
struct Offer {
  bool frame = true;
  bool document = false;
  bool controlSite = true;
};

class Rules {
 public:
  explicit Rules(const Offer& offer);

  // --- what the control calls ---

  // Any call; those below note themselves.
  void called(const std::string& call);
  void canInPlaceActivate();
  void windowContext();
  void onInPlaceActivate();
  void onUIActivate();
  void setActiveObject(Bar bar, bool set);
  void setBorderSpace(Bar bar, bool null);
  void onFocus(bool got);
  void onUIDeactivate();
  void onInPlaceDeactivate();
  void enableModeless(bool enable);
  void onControlInfoChanged();
  void onChanged(DISPID property);
  void onEvent(const std::string& name);
  void onPosRectChange();
  // A reference to one of the container's objects was given back that nobody held.
  void overReleased(const std::string& object);

  // --- what the container does ---

  // A call of the container into the control, for as long as it lasts.
  class HostCall {
   public:
    HostCall(Rules& rules, std::string name);
    HostCall(const HostCall&) = delete;
    HostCall& operator=(const HostCall&) = delete;
    ~HostCall();

   private:
    Rules& rules_;
  };
  // The control has been given a site: it may call.
  void connected();
  // Close has returned, or the site has been taken away: from now on nothing but the second half of
  // a pair of EnableModeless may be called.
  void disconnected();
  // The control has been released; what is still open is a violation.
  void ended();
  void violation(const std::string& text);

  bool inPlaceActive() const { return inPlace_; }
  bool uiActive() const { return uiActive_; }
  bool focused() const { return focused_; }
  int modalDepth() const { return modalDepth_; }

  const std::vector<std::string>& calls() const { return calls_; }
  const std::vector<std::string>& violations() const { return violations_; }
  // The violations, one a line; empty when there is none.
  std::string report() const;

 private:
  void require(bool holds, const std::string& text);
  void requireRest(const std::string& call);
  bool insideHostCall(const std::string& name) const;

  Offer offer_;
  DWORD thread_;
  bool connected_ = false;
  bool asked_ = false;  // CanInPlaceActivate since the last deactivation
  bool inPlace_ = false;
  bool uiActive_ = false;
  bool activeObject_[2] = {false, false};
  bool borderSpace_ = false;
  bool focused_ = false;
  int modalDepth_ = 0;
  std::vector<std::string> hostCalls_;
  std::vector<std::string> calls_;
  std::vector<std::string> violations_;
};

}  // namespace container
