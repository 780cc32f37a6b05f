#include "ocx/Notices.h"

#include <olectl.h>

#include <algorithm>
#include <exception>
#include <utility>

#include "ocx/Members.h"
#include "toolkit/Trace.h"

namespace ocx {

namespace {

com::Variant text(std::string_view utf8) { return com::Variant::ofText(com::wide(utf8)); }

template <class... Values>
std::vector<com::Variant> list(Values... values) {
  std::vector<com::Variant> all;
  (all.push_back(std::move(values)), ...);
  return all;
}

// What has happened stands, whether the host can be told or not.
template <class Deed>
void attempt(const Deed& deed) noexcept {
  try {
    deed();
  } catch (const std::exception& failure) {
    toolkit::trace("Notices", failure);
  }
}

}  // namespace

void Notices::sortirChanged(bool leave) noexcept {
  attempt([&] {
    drop(What::Sortir);  // one that has been taken back meanwhile
    if (leave) noteEvent(What::Sortir, {});
    if (points_.properties().empty()) return;
    drop(What::SortirChanged);
    note({What::SortirChanged, {}});
  });
}

void Notices::enregistre(const std::string& code, bool creation) noexcept {
  attempt(
      [&] { noteEvent(What::Enregistre, list(com::Variant::ofBoolean(creation), text(code))); });
}

void Notices::supprime(const std::string& code) noexcept {
  attempt([&] { noteEvent(What::Supprime, list(text(code))); });
}

void Notices::echec(std::string_view procedure, const store::StoreError& failure) noexcept {
  attempt([&] {
    noteEvent(What::Echec,
              list(text(failure.what()), com::Variant::ofNumber(static_cast<long>(failure.code())),
                   text(procedure)));
  });
}

void Notices::noteEvent(What what, std::vector<com::Variant> arguments) {
  if (!points_.events().empty()) note({what, std::move(arguments)});
}

void Notices::note(Notice notice) {
  if (deaf_) return;
  noted_.push_back(std::move(notice));
  if (frozen_ == 0) posted_.post();
}

void Notices::drop(What what) {
  std::erase_if(noted_, [what](const Notice& notice) { return notice.what == what; });
}

void Notices::freeze(bool frozen) {
  frozen_ = std::max(0, frozen_ + (frozen ? 1 : -1));
  if (frozen_ == 0 && !noted_.empty()) posted_.post();
}

void Notices::forget() {
  noted_.clear();
  deaf_ = true;
}

bool Notices::tell() {
  if (whole_.entries() > 0) return false;
  const Lifetime::Entry entry(whole_);
  if (frozen_ > 0 || noted_.empty()) return true;
  const Notice next = std::move(noted_.front());
  noted_.pop_front();
  if (!noted_.empty()) posted_.post();  // told or not, the next one waits for no sink
  tell(next);
  return true;
}

void Notices::tell(const Notice& notice) {
  if (notice.what == What::SortirChanged) {
    points_.properties().tell<IPropertyNotifySink>(
        [](IPropertyNotifySink& sink) { sink.OnChanged(kSortir); });
    return;
  }
  std::vector<VARIANT> arguments;
  arguments.reserve(notice.arguments.size());
  for (const com::Variant& argument : notice.arguments) arguments.push_back(argument.get());
  points_.events().tell<IDispatch>([&](IDispatch& sink) {
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    sink.Invoke(static_cast<DISPID>(notice.what), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                &parameters, nullptr, nullptr, nullptr);
  });
}

}  // namespace ocx
