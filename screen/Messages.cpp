#include "screen/Messages.h"

#include "store/StoreError.h"

namespace screen {

using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

void avertir(toolkit::Desktop& desktop, std::string_view text) {
  desktop.messageBox(text, kTitre, Buttons::Ok, Icon::Exclamation);
}

void informer(toolkit::Desktop& desktop, std::string_view text) {
  desktop.messageBox(text, kTitre, Buttons::Ok, Icon::Information);
}

bool demander(toolkit::Desktop& desktop, std::string_view text, toolkit::Icon icon) {
  return desktop.messageBox(text, kTitre, Buttons::YesNo, icon) == Answer::Yes;
}

bool confirmer(toolkit::Desktop& desktop, std::string_view text) {
  desktop.beep();
  return desktop.messageBox(text, kTitre, Buttons::YesNo, Icon::Question, Answer::No) ==
         Answer::Yes;
}

void signalerEchec(toolkit::Desktop& desktop, const std::function<void()>& deed) {
  try {
    deed();
  } catch (const store::StoreError&) {
    desktop.beep();
    throw;
  }
}

void filtrerRecherche(toolkit::Desktop& desktop, char32_t& key) {
  if (key < 123) return;
  key = 0;
  avertir(desktop, kMinusculeAccentuee);
}

}  // namespace screen
