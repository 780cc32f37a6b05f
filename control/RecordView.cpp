#include "control/RecordView.h"

#include <algorithm>
#include <utility>

#include "control/Rights.h"
#include "control/States.h"
#include "store/Layouts.h"

namespace control {

void RecordView::Afficher_Donnees() {
  if (context_.session.consultation) relireDroits(context_);
  const screen::Quiet quiet(context_.session);
  if (context_.session.RecOrgChg) {
    for (pages::Page* page : context_.pages) page->annoncer();
  }
  for (pages::Page* page : context_.pages) {
    if (context_.session.RecOrgChg) {
      page->afficher();
    } else {
      page->vider();
    }
  }
  montrerSigle();
  applyState(context_.screen, stateOf(context_.session));
}

void RecordView::Vider_Donnees() {
  screen::EditSession& session = context_.session;
  const screen::Quiet quiet(session);
  session.lacher();
  oublierAccords();
  for (pages::Page* page : context_.pages) page->vider();
  context_.screen.bar.Txt_CodOrgChg.setText("");
  context_.screen.bar.Cbo_SigleOrgChg.setText("");
  applyState(context_.screen, State::Empty);
}

// The choice of letters outlives the body.
void RecordView::oublierAccords() {
  screen::MiseAJourAccords& accords = context_.session.accords;
  const bool lettres = accords.lettresVoulues;
  accords = {};
  accords.lettresVoulues = lettres;
}

bool RecordView::ecrirePages() {
  effacerErreurs();
  for (pages::Page* page : context_.pages) {
    page->ecrire();
    if (pageRefusee()) return false;
  }
  // An attribute past the end that was filled and emptied again leaves no mark behind.
  context_.session.RecOrgChg->fields().dropEmptyEnd(context_.session.AncienOrgChg.DCount());
  return true;
}

bool RecordView::pageRefusee() const {
  const auto flags = screen::erreursDesOnglets(context_.session);
  return std::any_of(flags.begin(), flags.end(), [](const bool* flag) { return *flag; });
}

void RecordView::effacerErreurs() {
  for (bool* flag : screen::erreursDesOnglets(context_.session)) *flag = false;
}

std::string RecordView::texteEcrit() {
  // A body can be loaded in the middle of a save, by the list that the save refills.
  const screen::Held unchecked(context_.session.modeVerif, false);
  store::DynamicArray& fields = context_.session.RecOrgChg->fields();
  store::DynamicArray before = fields;
  ecrirePages();
  std::string written = fields.text();
  fields = std::move(before);
  effacerErreurs();
  return written;
}

void RecordView::effacerBareme() {
  context_.session.NouveauBareme = false;
  context_.screen.participation.Cmd_NouveauBareme.setCaption(screen::kNouveauBareme);
}

void RecordView::montrerSigle() {
  const screen::EditSession& session = context_.session;
  if (!session.RecOrgChg || session.EnCreation) return;
  const screen::Quiet quiet(context_.session);
  context_.screen.bar.Cbo_SigleOrgChg.setText(
      session.RecOrgChg->fields().get(store::orgprisecharge::SigleOrgChg));
}

void RecordView::montrerCode() {
  const screen::EditSession& session = context_.session;
  if (!session.RecOrgChg || session.EnCreation) return;
  const screen::Quiet quiet(context_.session);
  context_.screen.bar.Txt_CodOrgChg.setText(session.codeEnMain);
}

}  // namespace control
