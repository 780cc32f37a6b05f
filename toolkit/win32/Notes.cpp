#include "toolkit/win32/Notes.h"

#include <utility>

#include "toolkit/win32/ControlPeer.h"
#include "toolkit/win32/Scoped.h"

namespace toolkit::win32 {

void Notes::add(std::shared_ptr<ControlPeer> peer, Merge merge, std::function<void()> tell) {
  if (merge == Merge::Yes && !waiting_.empty() && waiting_.back().peer == peer &&
      waiting_.back().merge == Merge::Yes) {
    waiting_.back().tell = std::move(tell);
    return;
  }
  waiting_.push_back({std::move(peer), merge, std::move(tell)});
}

void Notes::deliver() {
  if (delivering_) return;
  const Scoped delivering(delivering_);
  while (!waiting_.empty()) {
    const Note note = std::move(waiting_.front());
    waiting_.pop_front();
    if (note.peer->attached()) note.tell();
  }
}

}  // namespace toolkit::win32
