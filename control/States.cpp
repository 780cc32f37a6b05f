#include "control/States.h"

#include <initializer_list>

#include "pages/AcronymField.h"

namespace control {

State stateOf(const screen::EditSession& session) {
  if (session.EnCreation) return State::Creating;
  return session.RecOrgChg ? State::Existing : State::Empty;
}

void applyState(screen::Screen& screen, State state) {
  const bool empty = state == State::Empty;
  const bool existing = state == State::Existing;
  const bool creating = state == State::Creating;
  screen::CommandBar& bar = screen.bar;
  bar.Txt_CodOrgChg.setEnabled(!creating);
  bar.Cmd_Ajouter.setEnabled(empty);
  bar.Cmd_Supprimer.setEnabled(existing);
  bar.Cmd_OK.setEnabled(!empty);
  bar.Cmd_Annuler.setEnabled(!empty);
  bar.Cmd_Sortir.setEnabled(!creating);
  bar.Cbo_SigleOrgChg.setEnabled(!creating);
  bar.Txt_SigleOrgChg.setEnabled(!empty);
  if (creating) {
    pages::montrerSaisieSigle(bar);
  } else {
    pages::montrerRechercheSigle(bar);
  }
  // Without a record in hand the pages take no input.
  screen.Ong_OrgPriseChg.setEnabled(!empty);
}

void applyReady(screen::Screen& screen, bool ready) {
  screen::CommandBar& bar = screen.bar;
  for (toolkit::Control* control : std::initializer_list<toolkit::Control*>{
           &bar.Etq_CodOrgChg, &bar.Txt_CodOrgChg, &bar.Etq_RechercheSigle, &bar.Cbo_SigleOrgChg,
           &bar.Cmd_Ajouter}) {
    control->setPale(!ready);
  }
}

}  // namespace control
