#include "control/CommandBar.h"

#include <memory>
#include <utility>

#include "control/NewRecord.h"
#include "control/States.h"
#include "screen/BusyScreen.h"
#include "screen/Messages.h"
#include "screen/StoreTrap.h"
#include "store/Request.h"

namespace control {
namespace {

std::string_view sansMarquesFinales(std::string_view record) {
  constexpr char kMarques[] = {store::kAttributeMark, store::kValueMark};
  return record.substr(0, record.find_last_not_of(std::string_view(kMarques, 2)) + 1);
}

}  // namespace

CommandBar::CommandBar(Context& context, RecordView& view, AcronymList& list, Save& save,
                       std::function<void(bool)> setSortir)
    : context_(context), view_(view), list_(list), save_(save), setSortir_(std::move(setSortir)) {}

void CommandBar::Cmd_Ajouter_Click() {
  screen::tracing(context_.session, "Cmd_Ajouter_Click", [this] { ajouter(); });
}

void CommandBar::ajouter() {
  screen::EditSession& session = context_.session;
  if (!screen::droitsComplets(session)) return;
  {
    const screen::Quiet quiet(session);
    view_.Vider_Donnees();
    context_.screen.Ong_OrgPriseChg.setTab(screen::kCoordonnees);
    session.commencer(std::make_unique<NewRecord>());
    applyState(context_.screen, State::Creating);
    valeursParDefaut();
  }
  context_.screen.bar.Txt_SigleOrgChg.setFocus();
}

void CommandBar::valeursParDefaut() {
  context_.screen.participation.Cmd_AjoutPart.setEnabled(true);
  context_.screen.participation.Cmd_NouveauBareme.setEnabled(true);
  context_.screen.participation.Txt_DatBaremCours.setEnabled(false);
  context_.screen.regles.Cbo_PeriodFactOrgChg.setListIndex(0);
  context_.screen.regles.Cbo_RenouvOrgChg.setListIndex(0);
  context_.screen.activites.Opt_Totalite.setValue(true);
}

void CommandBar::Cmd_Annuler_Click() {
  screen::EditSession& session = context_.session;
  if (session.EnCreation &&
      !screen::confirmer(context_.desktop, "Etes-vous sûr de vouloir quitter cette création ?")) {
    return;
  }
  {
    const screen::BusyScreen busy(context_.desktop, context_.surface);
    view_.effacerBareme();
    session.propagationSuspendue = false;
    view_.Vider_Donnees();
    list_.montrerListeComplete();
    context_.desktop.doEvents();
  }
  context_.screen.bar.Txt_CodOrgChg.setFocus();
}

void CommandBar::Cmd_Supprimer_Click() {
  screen::tracing(context_.session, "Cmd_Supprimer_Click", [this] { supprimer(); });
}

void CommandBar::supprimer() {
  screen::EditSession& session = context_.session;
  if (!screen::droitsComplets(session) || session.codeEnMain.empty()) return;
  if (!screen::confirmer(context_.desktop,
                         "Etes-vous sûr de vouloir supprimer cet organisme de prise en charge ?") ||
      refusParFichier("ACCORD",
                      "Des accords sont créés pour cet organisme. Suppression impossible.") ||
      refusParFichier(
          "DEMANDACC",
          "Des demandes d'accords sont créées pour cet organisme. Suppression impossible.")) {
    return;
  }
  if (!screen::droitsComplets(session)) return;  // any more, after a question
  session.files.orgPriseCharge->DeleteRecord(session.codeEnMain);
  if (session.annonces.supprime) session.annonces.supprime(session.codeEnMain);
  // Cleared before the list is read again: should that fail, a deleted body must not stay in hand.
  view_.Vider_Donnees();
  context_.screen.bar.Txt_CodOrgChg.setFocus();
  list_.lister();
}

// Is the body in hand named in that file? Then it has said so.
bool CommandBar::refusParFichier(const std::string& file, std::string_view message) {
  const store::DynamicArray found = store::select(
      *context_.session.TheDatabase,
      "SSELECT " + file + " AVEC 1 = " + store::quoted(context_.session.codeEnMain), file, "0");
  if (!store::anySelected(found)) return false;
  screen::avertir(context_.desktop, message);
  return true;
}

void CommandBar::Cmd_Sortir_Click() {
  screen::tracing(context_.session, "Cmd_Sortir_Click", [this] { sortir(); });
}

void CommandBar::sortir() {
  const screen::EditSession& session = context_.session;
  if (!session.pret || session.codeEnMain.empty() || !screen::droitsComplets(session)) {
    setSortir_(true);
    return;
  }
  if (!view_.ecrirePages()) return;
  if (!modifie()) {
    setSortir_(true);
    return;
  }
  switch (context_.desktop.messageBox(
      "Voulez-vous enregistrer les modifications apportées à cet article ?", screen::kTitre,
      toolkit::Buttons::YesNoCancel, toolkit::Icon::Question)) {
    case toolkit::Answer::Yes:
      enregistrerEtSortir();
      break;
    case toolkit::Answer::No:
      setSortir_(true);
      break;
    default:
      setSortir_(false);
      break;
  }
}

bool CommandBar::modifie() {
  const screen::EditSession& session = context_.session;
  const std::string text = session.RecOrgChg->fields().text();
  const std::string_view now = sansMarquesFinales(text);
  return now != sansMarquesFinales(session.ImageOrgChg) &&
         now != sansMarquesFinales(session.imageNormalisee);
}

void CommandBar::enregistrerEtSortir() {
  screen::EditSession& session = context_.session;
  if (!screen::droitsComplets(session)) return;  // any more, after the question
  const screen::Held checking(session.modeVerif, true);
  screen::signalerEchec(context_.desktop, [this] { save_.Ecrire_Donnees(); });
  view_.effacerErreurs();
  if (!session.codeEnMain.empty()) return;
  view_.effacerBareme();
  setSortir_(true);
}

}  // namespace control
