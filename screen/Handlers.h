// Binds deeds to the events of child controls: the one place where they are kept quiet.
#pragma once

#include <functional>
#include <utility>

#include "screen/EditSession.h"

namespace screen {

class Handlers {
 public:
  // The session must outlive what is bound.
  explicit Handlers(const EditSession& session) : session_(session) {}

  // Runs the deed unless the control has not been started, or shows a record just now.
  template <class Part>
  std::function<void()> on(Part& part, void (Part::*deed)()) const {
    return [&session = session_, &part, deed] {
      if (active(session)) (part.*deed)();
    };
  }
  std::function<void()> on(std::function<void()> deed) const {
    return [&session = session_, deed = std::move(deed)] {
      if (active(session)) deed();
    };
  }
  template <class Part>
  std::function<void(char32_t&)> key(Part& part, void (Part::*deed)(char32_t&)) const {
    return [&session = session_, &part, deed](char32_t& key) {
      if (active(session)) (part.*deed)(key);
    };
  }

 private:
  static bool active(const EditSession& session) {
    return (session.pret || session.demarrage) && session.silence == 0;
  }

  const EditSession& session_;
};

}  // namespace screen
