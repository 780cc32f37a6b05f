#include "pages/RowLetters.h"

namespace pages {

RowLetters::RowLetters(toolkit::CommandButton& ok, toolkit::CommandButton& annuler,
                       toolkit::CommandButton& supprimer, std::vector<toolkit::Control*> lenders)
    : captions_{{&ok, "O&K"}, {&annuler, "Annu&ler"}, {&supprimer, "Suppri&mer"}},
      lenders_(std::move(lenders)) {}

void RowLetters::take() {
  lent_.clear();
  for (toolkit::Control* control : lenders_) {
    lent_.push_back({control, control->caption()});
    control->setCaption(toolkit::withoutMnemonic(control->caption()));
  }
  for (const auto& [button, caption] : captions_) button->setCaption(caption);
}

void RowLetters::giveBack() {
  for (const auto& [button, caption] : captions_) {
    button->setCaption(toolkit::withoutMnemonic(caption));
  }
  for (const Lent& lent : lent_) {
    const bool asLent = lent.control->caption() == toolkit::withoutMnemonic(lent.caption);
    if (asLent) lent.control->setCaption(lent.caption);
  }
  lent_.clear();
}

}  // namespace pages
