// How long a control lives: as long as somebody outside refers to it, or a call of it runs.
#pragma once

#include <ole2.h>

#include <memory>

#include "ocx/Theme.h"

namespace ocx {

class Lifetime {
 public:
  Lifetime() = default;
  Lifetime(const Lifetime&) = delete;
  Lifetime& operator=(const Lifetime&) = delete;

  // One call from outside, by COM or by Windows, until it has unwound; the host's theme with it.
  class Entry {
   public:
    explicit Entry(Lifetime& object) : object_(object) { ++object_.entries_; }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;
    ~Entry() { object_.left(); }

   private:
    Lifetime& object_;
    Theme theme_;
  };

  long entries() const { return entries_; }

  ULONG addReference() { return ++references_; }
  // The last one takes windows and site down; the object goes when no entry runs any more.
  ULONG releaseReference();
  // IUnknown::QueryInterface of every part.
  HRESULT query(REFIID wanted, void** object);
  // The pointer of one interface, of the right type behind the void, without a reference; null when
  // the control has no such interface.
  virtual void* find(REFIID wanted) = 0;

 protected:
  virtual ~Lifetime() = default;

  // An entry for a caller that cannot name it; ended with the last copy.
  std::shared_ptr<void> heldEntry() { return std::make_shared<Entry>(*this); }

  virtual void abandoned() noexcept = 0;  // nobody outside refers to it
  virtual void idle() noexcept = 0;       // the outermost entry is about to end

 private:
  void left() noexcept;

  ULONG references_ = 1;
  long entries_ = 0;
  bool ending_ = false;
};

}  // namespace ocx
