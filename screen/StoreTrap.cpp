#include "screen/StoreTrap.h"

#include "store/StoreError.h"
#include "toolkit/Trap.h"

namespace screen {
namespace {

void announcing(EditSession& session, std::string_view procedure,
                const std::function<void()>& handler) {
  try {
    handler();
  } catch (const store::StoreError& failure) {
    if (session.annonces.echec) session.annonces.echec(procedure, failure);
    throw;
  }
}

}  // namespace

bool quietly(EditSession& session, std::string_view procedure,
             const std::function<void()>& handler) {
  return toolkit::quietly(procedure, [&] { announcing(session, procedure, handler); });
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
