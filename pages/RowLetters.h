#pragma once

#include <string>
#include <utility>
#include <vector>

#include "toolkit/Buttons.h"

namespace pages {

// The mnemonics of an open row's buttons. Three editors and a bar with the same captions have not
// letters enough: a closed editor has none on these buttons, and an open one takes those of other
// captions on its page, which go without meanwhile. So no letter is ever seen twice.
class RowLetters {
 public:
  RowLetters(toolkit::CommandButton& ok, toolkit::CommandButton& annuler,
             toolkit::CommandButton& supprimer, std::vector<toolkit::Control*> lenders);

  void take();
  // A caption that has become another one meanwhile stays.
  void giveBack();

 private:
  struct Lent {
    toolkit::Control* control;
    std::string caption;
  };

  std::vector<std::pair<toolkit::CommandButton*, const char*>> captions_;
  std::vector<toolkit::Control*> lenders_;
  std::vector<Lent> lent_;
};

}  // namespace pages
