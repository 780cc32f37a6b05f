#pragma once

#include "control/AcronymList.h"
#include "control/Context.h"
#include "control/RecordView.h"
#include "pages/Ong2.h"
#include "pages/Ong5.h"

namespace control {

// Start-up and shut-down.
class StartUp {
 public:
  StartUp(Context& context, RecordView& view, AcronymList& list, pages::Ong2& ong2,
          pages::Ong5& ong5)
      : context_(context), view_(view), list_(list), ong2_(ong2), ong5_(ong5) {}

  // What an earlier one has opened is released, once the rights have been read. Traps nothing;
  // pointer and surface come back when it fails.
  void Init();

  // Releases the records and files, in the fixed order.
  void releaseStore();
  // That, and what the host has given.
  void UserControl_Terminate();

 private:
  void openStore();
  void remplirListes();

  Context& context_;
  RecordView& view_;
  AcronymList& list_;
  pages::Ong2& ong2_;
  pages::Ong5& ong5_;
};

}  // namespace control
