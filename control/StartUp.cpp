#include "control/StartUp.h"

#include "control/Errors.h"
#include "control/Rights.h"
#include "control/States.h"
#include "screen/BusyScreen.h"
#include "store/Counter.h"
#include "store/Layouts.h"

namespace control {

void StartUp::Init() {
  screen::EditSession& session = context_.session;
  if (!session.TheDatabase) throw NotReady("TheDatabase has not been given");
  if (!session.DroitOrgChg) throw NotReady("DroitsUtilisateur has not been given");
  Appliquer_Droits(context_);
  view_.Vider_Donnees();
  releaseStore();
  openStore();
  view_.Vider_Donnees();  // again: whether the accounts can be entered follows the counter record
  {
    const screen::BusyScreen busy(context_.desktop, context_.surface);
    session.tableauCompteur.reset();
    if (session.OptionCompteur) session.tableauCompteur = store::NewDynamicArray();
    context_.adresse.setTheDatabase(session.TheDatabase);
    context_.adresse.setReglage(1, true);
    context_.adresse.setReglage(2, true);
    context_.adresse.setReglage(3, false);
    context_.adresse.initialiser();
    context_.screen.Ong_OrgPriseChg.setTab(screen::kCoordonnees);
    remplirListes();
    session.enregistrementEnCours = false;
    context_.desktop.doEvents();
    session.pret = true;
    applyReady(context_.screen, true);
  }
  context_.screen.bar.Txt_CodOrgChg.setFocus();
}

void StartUp::openStore() {
  screen::EditSession& session = context_.session;
  store::Database& database = *session.TheDatabase;
  screen::StoreFiles& files = session.files;
  files.orgPriseCharge = database.OpenFile(store::orgprisecharge::kFile);
  files.paramBordOrgChg = database.OpenFile(store::parambordorgchg::kFile);
  files.compteur = database.OpenFile(store::compteur::kFile);
  files.tables = database.OpenFile(store::tables::kFile);
  files.activites = database.OpenFile(store::activites::kFile);
  files.association = database.OpenFile(store::association::kFile);
  files.planComptable = database.OpenFile(store::plancomptable::kFile);
  files.periodesPaie = database.OpenFile(store::periodespaie::kFile);
  files.accord = database.OpenFile(store::accord::kFile);
  files.tables->announce(
      {std::string(store::tables::kPiecesRenouv), std::string(store::tables::kStatOrgChg)});
  files.compteur->announce({store::kCounterRecord});
  session.piecesRenouv = files.tables->ReadRecord(store::tables::kPiecesRenouv);
  session.statOrgChg = files.tables->ReadRecord(store::tables::kStatOrgChg);
  session.compteur999 = files.compteur->ReadRecord(store::kCounterRecord);
  session.OptionCompteur =
      !session.compteur999->fields().get(store::compteur::InterfaceComptable).empty();
}

void StartUp::remplirListes() {
  const screen::Held demarrage(context_.session.demarrage, true);
  ong5_.Remplir_ParamsPoss();
  list_.Remplir_OrgPriseChg();
  ong2_.Remplir_PiecesPoss();
  ong2_.Remplir_StatOrgChg();
}

void StartUp::releaseStore() {
  screen::EditSession& session = context_.session;
  screen::StoreFiles& files = session.files;
  session.pret = false;
  applyReady(context_.screen, false);
  session.AncienOrgChg = store::NewDynamicArray();
  context_.adresse.setTheDatabase(nullptr);
  files.accord.reset();
  session.piecesRenouv.reset();
  session.statOrgChg.reset();
  session.RecOrgChg.reset();
  session.compteur999.reset();
  session.tableauCompteur.reset();
  list_.oublier();
  session.accordsActifs = store::NewDynamicArray();
  files.compteur.reset();
  files.tables.reset();
  files.paramBordOrgChg.reset();
  files.orgPriseCharge.reset();
  files.association.reset();
  files.activites.reset();
  files.planComptable.reset();
  files.periodesPaie.reset();
}

void StartUp::UserControl_Terminate() {
  screen::EditSession& session = context_.session;
  session.TheClient.reset();
  releaseStore();
  session.TheDatabase.reset();
  session.DroitOrgChg.reset();
  session.DroitsUtilisateur.reset();
}

}  // namespace control
