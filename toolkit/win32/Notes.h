// What the user did to standard windows, until it is told to their objects.
#pragma once

#include <deque>
#include <functional>
#include <memory>

namespace toolkit::win32 {

class ControlPeer;

// A window's own procedure is no place to run handlers in: what it tells is noted, and delivered
// from a posted message, or before the next key or press is looked at.
class Notes {
 public:
  // A mergeable note replaces the peer's own one before it, being newer.
  enum class Merge { Yes, No };

  void add(std::shared_ptr<ControlPeer> peer, Merge merge, std::function<void()> tell);
  // One after the other; those of a peer that has gone meanwhile are dropped. Does nothing while it
  // runs already.
  void deliver();
  void clear() { waiting_.clear(); }

 private:
  struct Note {
    std::shared_ptr<ControlPeer> peer;
    Merge merge;
    std::function<void()> tell;
  };

  std::deque<Note> waiting_;
  bool delivering_ = false;
};

}  // namespace toolkit::win32
