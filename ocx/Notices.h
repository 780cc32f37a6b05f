// What the host is told when nothing of the control runs: the events, and changes of W_Sortir.
#pragma once

#include <ole2.h>

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "com/Variant.h"
#include "ocx/ConnectionPoints.h"
#include "ocx/Lifetime.h"
#include "ocx/PostedCall.h"
#include "store/StoreError.h"

namespace ocx {

// Noted as it happens, told one by one from the message loop, in the order of its happening. What
// nobody has connected for is not noted.
class Notices {
 public:
  Notices(Lifetime& whole, ConnectionPoints& points) : whole_(whole), points_(points) {}
  Notices(const Notices&) = delete;
  Notices& operator=(const Notices&) = delete;
  ~Notices() = default;

  void sortirChanged(bool leave) noexcept;
  void enregistre(const std::string& code, bool creation) noexcept;
  void supprime(const std::string& code) noexcept;
  void echec(std::string_view procedure, const store::StoreError& failure) noexcept;

  // IOleControl::FreezeEvents, which counts: what is noted meanwhile is told after the last thaw.
  void freeze(bool frozen);
  // The host lets the control go: it hears neither of what has been noted nor of what still is,
  // until the call that runs now has ended.
  void forget();
  void reopen() { deaf_ = false; }

 private:
  enum class What : DISPID {
    SortirChanged = 0,
    Sortir = 1,
    Enregistre = 2,
    Supprime = 3,
    Echec = 4
  };
  // The numbers but the first are those of the events.
  struct Notice {
    What what = What::Sortir;
    std::vector<com::Variant> arguments;  // last to first, as a call wants them
  };

  void note(Notice notice);
  void noteEvent(What what, std::vector<com::Variant> arguments);
  void drop(What what);
  bool tell();
  void tell(const Notice& notice);

  Lifetime& whole_;
  ConnectionPoints& points_;
  std::deque<Notice> noted_;
  int frozen_ = 0;
  bool deaf_ = false;
  PostedCall posted_{[this] { return tell(); }};
};

}  // namespace ocx
