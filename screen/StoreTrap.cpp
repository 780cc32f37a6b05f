#include "screen/StoreTrap.h"

#include "store/StoreError.h"
#include "toolkit/Trap.h"

namespace screen {
namespace {

constexpr const char* kModifieeAilleurs =
    "La fiche a été modifiée, créée ou supprimée par quelqu'un d'autre depuis sa lecture. Rien n'a "
    "été enregistré : saisissez à nouveau le code pour voir la fiche telle qu'elle est.";

// What the user can do something about is told in the user's words.
store::StoreError told(const store::StoreError& failure) {
  if (failure.code() != store::kChanged) return failure;
  return {failure.code(), kModifieeAilleurs, failure.member()};
}

void announcing(EditSession& session, std::string_view procedure,
                const std::function<void()>& handler) {
  try {
    handler();
  } catch (const store::StoreError& failure) {
    if (session.annonces.echec) session.annonces.echec(procedure, told(failure));
    throw;
  }
}

}  // namespace

bool quietly(EditSession& session, std::string_view procedure,
             const std::function<void()>& handler) {
  const auto deed = [&] { announcing(session, procedure, handler); };
  return toolkit::quietly(procedure, std::ref(deed));
}

bool resumeNext(EditSession& session, std::string_view procedure,
                std::initializer_list<std::function<void()>> steps) {
  bool all = true;
  for (const std::function<void()>& step : steps) all = quietly(session, procedure, step) && all;
  return all;
}

void tracing(EditSession& session, std::string_view procedure,
             const std::function<void()>& handler) {
  toolkit::tracing(procedure, [&] { announcing(session, procedure, handler); });
}

}  // namespace screen
