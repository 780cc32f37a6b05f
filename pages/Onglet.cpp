#include "pages/Onglet.h"

#include "screen/Messages.h"

namespace pages {

bool Onglet::refuser(std::string_view message) {
  context_.session.*erreur_ = true;
  screen::avertir(context_.desktop, message);
  return false;
}

bool Onglet::refuser(std::string_view message, int tab, toolkit::Control& field) {
  refuser(message);
  context_.screen.Ong_OrgPriseChg.setTab(tab);
  field.setFocus();
  return false;
}

}  // namespace pages
