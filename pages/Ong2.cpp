#include "pages/Ong2.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "agreements/ActiveAgreements.h"
#include "pages/BillingPeriod.h"
#include "pages/FixedList.h"
#include "pages/HoursRule.h"
#include "pages/MovedLines.h"
#include "screen/Messages.h"
#include "store/Amounts.h"
#include "store/CodeTable.h"
#include "store/Layouts.h"
#include "store/Request.h"

namespace pages {

namespace attribut = store::orgprisecharge;

namespace {

constexpr std::string_view kContacter =
    "\r\nMerci de contacter VALDRIS si votre volonté est de changer le mode de gestion de cet "
    "organisme.";

using Plafonds = std::array<std::pair<std::string_view, toolkit::OptionButton*>, 3>;

Plafonds plafonds(screen::Regles& regles) {
  return {{{"1", &regles.Opt_PlafMensRepOrgChg},
           {"2", &regles.Opt_PlafMensOrgChg},
           {"3", &regles.Opt_PlafGlobalOrgChg}}};
}

// A line a label; its item data is the label's position in the table, from 1.
std::vector<toolkit::ListItem> labels(const store::Record& table) {
  const store::DynamicArray& fields = table.fields();
  std::vector<toolkit::ListItem> lines;
  for (int i = 1; i <= fields.DCount(store::tables::Libelles); ++i) {
    lines.push_back({std::string(fields.get(store::tables::Libelles, i)), i});
  }
  return lines;
}

bool drapeau(std::string_view attribute) { return store::wholeNumber(attribute) != 0; }

const char* chiffre(const toolkit::CheckBox& box) { return box.value() ? "1" : "0"; }

}  // namespace

Ong2::Ong2(PageContext context)
    : Onglet(context, &screen::EditSession::ErreurOng2),
      regles_(context.screen.regles),
      debit_(context, {regles_.Txt_DebitOrgChg, regles_.Cbo_DebitOrgChg, kSansEntiteDebit,
                       kSansEntiteDebit}),
      credit_(context, {regles_.Txt_CreditOrgChg, regles_.Cbo_CreditOrgChg, kSansEntiteCreditNumero,
                        kSansEntiteCredit}),
      produitAide_(context, {regles_.Txt_CpteProdAide, regles_.Cbo_CpteProdAide, kSansEntiteCompte,
                             kSansEntiteCompte, AccountPair::Classe::Sept}) {}

void Ong2::lier(const screen::Handlers& handlers) {
  regles_.Opt_TypePrincipalOrgChg.onClick =
      handlers.on(*this, &Ong2::Opt_TypePrincipalOrgChg_Click);
  regles_.Opt_TypeComplOrgChg.onClick = handlers.on(*this, &Ong2::Opt_TypeComplOrgChg_Click);
  regles_.Cac_DemAccordOrgChg.onClick = handlers.on(*this, &Ong2::Cac_DemAccordOrgChg_Click);
  regles_.Cac_IncidCompta.onClick = handlers.on(*this, &Ong2::Cac_IncidCompta_Click);
  regles_.Cbo_PeriodFactOrgChg.onLostFocus =
      handlers.on(*this, &Ong2::Cbo_PeriodFactOrgChg_LostFocus);
  regles_.Cbo_RenouvOrgChg.onLostFocus = handlers.on(*this, &Ong2::Cbo_RenouvOrgChg_LostFocus);
  regles_.Cbo_StatsOrgChg.onChange = handlers.on(*this, &Ong2::Cbo_StatsOrgChg_Change);
  regles_.Cbo_StatsOrgChg.onLostFocus = handlers.on(*this, &Ong2::Cbo_StatsOrgChg_LostFocus);
  const auto ajouter = handlers.on(*this, &Ong2::Lst_PiecePossibleOrgChg_DblClick);
  const auto retirer = handlers.on(*this, &Ong2::Lst_PieceRenouOrgChg_DblClick);
  regles_.Lst_PiecePossibleOrgChg.onDblClick = ajouter;
  regles_.Cmd_DroiteRenouv.onClick = ajouter;
  regles_.Lst_PieceRenouOrgChg.onDblClick = retirer;
  regles_.Cmd_GaucheRenouv.onClick = retirer;
  for (AccountPair* pair : {&debit_, &credit_, &produitAide_}) pair->lier(handlers);
}

void Ong2::Remplir_PiecesPoss() {
  regles_.Lst_PiecePossibleOrgChg.setItems(labels(*context_.session.piecesRenouv));
}

void Ong2::Remplir_StatOrgChg() {
  const screen::Quiet quiet(context_.session);
  toolkit::ComboBox& combo = regles_.Cbo_StatsOrgChg;
  const std::string shown = combo.text();
  combo.setItems(labels(*context_.session.statOrgChg));
  combo.setText(shown);
}

// --- Showing

void Ong2::Afficher_Ong2() {
  const screen::Quiet quiet(context_.session);
  commencer();
  store::DynamicArray& record = context_.session.RecOrgChg->fields();
  regles_.Opt_TypePrincipalOrgChg.setValue(record.get(attribut::TypeOrgChg) == "P");
  regles_.Opt_TypeComplOrgChg.setValue(record.get(attribut::TypeOrgChg) == "C");
  montrerTypeDuBareme();
  montrerHeures();
  for (const auto& [code, option] : plafonds(regles_)) {
    option->setValue(record.get(attribut::PlafondOrg) == code);
  }
  const long renouvellement = store::wholeNumber(record.get(attribut::RenouvOrgChg));
  if (renouvellement >= 0 && renouvellement < regles_.Cbo_RenouvOrgChg.listCount()) {
    regles_.Cbo_RenouvOrgChg.setListIndex(static_cast<int>(renouvellement));
  }
  montrerPieces(record);
  montrerOptions(record);
  montrerComptes(record);
  regles_.Cbo_PeriodFactOrgChg.setListIndex(
      lignePeriodeFact(record.get(attribut::PeriodFactOrgChg)));
  regles_.Cbo_StatsOrgChg.setText(
      store::labelOfCode(context_.session.statOrgChg->fields(), record.get(attribut::StatsOrgChg)));
}

void Ong2::montrerPieces(const store::DynamicArray& record) {
  const store::DynamicArray& table = context_.session.piecesRenouv->fields();
  std::vector<toolkit::ListItem> lines;
  std::string_view left = record.get(attribut::PieceRenouOrgChg);
  while (!left.empty()) {
    const int position = store::positionOfCode(table, store::takeValue(left));
    if (position == 0) continue;
    std::string label(table.get(store::tables::Libelles, position));
    if (!label.empty()) lines.push_back({std::move(label), position});
  }
  regles_.Lst_PieceRenouOrgChg.setItems(std::move(lines));
}

void Ong2::montrerOptions(store::DynamicArray& record) {
  regles_.Cac_DemAccordOrgChg.setValue(drapeau(record.get(attribut::DemAccordOrgChg)));
  regles_.Cac_LettresInfo.setValue(record.get(attribut::LettresInfo) == "1");
  const bool anticipable =
      regles_.Cac_DemAccordOrgChg.value() && regles_.Opt_TypePrincipalOrgChg.value();
  regles_.Cac_FactAnticip.setEnabled(anticipable);
  regles_.Cac_FactAnticip.setValue(anticipable && record.get(attribut::FactAnticip) == "1");
  if (record.get(attribut::IncidCompta).empty()) record.set(attribut::IncidCompta, "0");
  regles_.Cac_IncidCompta.setValue(drapeau(record.get(attribut::IncidCompta)));
}

void Ong2::montrerComptes(const store::DynamicArray& record) {
  ouvrirComptes();
  if (!context_.session.OptionCompteur) return viderComptes();
  const std::string_view entite = record.get(attribut::Entite);
  debit_.montrer(record.get(attribut::DebitOrgChg), entite);
  credit_.montrer(record.get(attribut::CreditOrgChg), entite);
  produitAide_.montrer(record.get(attribut::CpteProdAide), entite);
}

void Ong2::annoncer() {
  if (!context_.session.OptionCompteur) return;
  const store::DynamicArray& record = context_.session.RecOrgChg->fields();
  AccountPair::annoncer(context_, record.get(attribut::Entite),
                        {record.get(attribut::DebitOrgChg), record.get(attribut::CreditOrgChg),
                         record.get(attribut::CpteProdAide)});
}

void Ong2::relireComptes() {
  AccountPair::annoncer(context_, context_.session.entiteCourante,
                        {debit_.compte(), credit_.compte(), produitAide_.compte()});
  for (AccountPair* pair : {&debit_, &credit_, &produitAide_}) pair->relire();
}

// What a record need not say anything of.
void Ong2::commencer() {
  context_.session.statistiqueVidee = false;
  regles_.Cdr_PlafondOrg.setEnabled(true);
  for (toolkit::ComboBox* combo :
       {&regles_.Cbo_PeriodFactOrgChg, &regles_.Cbo_RenouvOrgChg, &regles_.Cbo_StatsOrgChg}) {
    combo->setListIndex(-1);
    combo->setText("");
  }
  regles_.Lst_PiecePossibleOrgChg.selectNone();
}

void Ong2::viderComptes() {
  for (AccountPair* pair : {&debit_, &credit_, &produitAide_}) pair->vider();
}

void Ong2::vider() {
  const screen::Quiet quiet(context_.session);
  commencer();
  for (toolkit::OptionButton* option :
       {&regles_.Opt_TypePrincipalOrgChg, &regles_.Opt_TypeComplOrgChg,
        &regles_.Opt_PlafMensRepOrgChg, &regles_.Opt_PlafMensOrgChg,
        &regles_.Opt_PlafGlobalOrgChg}) {
    option->setValue(false);
  }
  montrerTypeDuBareme();
  regles_.Lst_PieceRenouOrgChg.clear();
  for (toolkit::CheckBox* box : {&regles_.Cac_DemAccordOrgChg, &regles_.Cac_FactAnticip,
                                 &regles_.Cac_LettresInfo, &regles_.Cac_IncidCompta}) {
    box->setValue(false);
  }
  regles_.Cac_FactAnticip.setEnabled(false);
  viderComptes();
  ouvrirComptes();
}

// The scale's page names who takes part.
void Ong2::montrerTypeDuBareme() {
  context_.screen.participation.Cdr_ParticipBenef.setCaption(regles_.Opt_TypeComplOrgChg.value()
                                                                 ? "Participation organisme"
                                                                 : "Participation bénéficiaire");
}

void Ong2::montrerHeures() {
  ouvrirHeures(context_.screen.activites, regles_.Opt_TypePrincipalOrgChg.value());
}

// --- Writing

void Ong2::Ecrire_Ong2() {
  context_.session.ErreurOng2 = false;
  if (context_.session.modeVerif && !Verif_Ong2()) return;
  ecrireTypeEtPlafond();
  if (context_.session.ErreurOng2) return;
  store::DynamicArray& record = context_.session.RecOrgChg->fields();
  const int renouvellement = regles_.Cbo_RenouvOrgChg.items().find(regles_.Cbo_RenouvOrgChg.text());
  if (renouvellement >= 0)
    ecrireAttribut(record, attribut::RenouvOrgChg, std::to_string(renouvellement));
  ecrirePieces(record);
  ecrireComptes(record);
  ecrireAttribut(record, attribut::IncidCompta, chiffre(regles_.Cac_IncidCompta));
  ecrireAttribut(record, attribut::LettresInfo, regles_.Cac_LettresInfo.value() ? "1" : "");
  ecrireAttribut(record, attribut::FactAnticip, chiffre(regles_.Cac_FactAnticip));
}

void Ong2::ecrireTypeEtPlafond() {
  store::DynamicArray& record = context_.session.RecOrgChg->fields();
  if (regles_.Opt_TypePrincipalOrgChg.value()) ecrireAttribut(record, attribut::TypeOrgChg, "P");
  if (regles_.Opt_TypeComplOrgChg.value()) ecrireAttribut(record, attribut::TypeOrgChg, "C");
  if (changementRefuse(attribut::TypeOrgChg,
                       "La modification du type d'organisme n'est pas possible car il existe des "
                       "accords actifs pour cet organisme.")) {
    return;
  }
  for (const auto& [code, option] : plafonds(regles_)) {
    if (option->value()) ecrireAttribut(record, attribut::PlafondOrg, code);
  }
  changementRefuse(attribut::PlafondOrg,
                   "La modification de la gestion du plafond des droits à consommer n'est pas "
                   "possible car il existe des accords actifs pour cet organisme.");
}

// Has the attribute changed since it was read, while agreements rely on it? Then it has said so.
bool Ong2::changementRefuse(int attribute, std::string_view message) {
  screen::EditSession& session = context_.session;
  const std::string_view before = session.AncienOrgChg.get(attribute);
  if (before.empty() || before == session.RecOrgChg->fields().get(attribute)) return false;
  agreements::RechercheAccord(session);
  if (!store::anySelected(session.accordsActifs)) return false;
  screen::informer(context_.desktop, std::string(message) + std::string(kContacter));
  session.ErreurOng2 = true;
  return true;
}

// By position, not by label: two documents may have the same.
void Ong2::ecrirePieces(store::DynamicArray& record) {
  const store::DynamicArray& table = context_.session.piecesRenouv->fields();
  std::string codes;
  for (const toolkit::ListItem& line : regles_.Lst_PieceRenouOrgChg.items().all()) {
    if (line.text.empty()) continue;
    const std::string_view code = table.get(store::tables::Codes, static_cast<int>(line.data));
    if (code.empty()) continue;
    if (!codes.empty()) codes += store::kValueMark;
    codes += code;
  }
  ecrireAttribut(record, attribut::PieceRenouOrgChg, codes);
}

void Ong2::ecrireComptes(store::DynamicArray& record) {
  if (!context_.session.OptionCompteur) return;
  ecrireAttribut(record, attribut::DebitOrgChg, debit_.compte());
  ecrireAttribut(record, attribut::CreditOrgChg, credit_.compte());
  ecrireAttribut(record, attribut::CpteProdAide, produitAide_.compte());
}

// --- Checking

bool Ong2::Verif_Ong2() {
  context_.session.ErreurOng2 = false;
  if (regles_.Cbo_PeriodFactOrgChg.text().empty()) {
    return refuser("La période de facturation est obligatoire.", screen::kRegles,
                   regles_.Cbo_PeriodFactOrgChg);
  }
  if (regles_.Cbo_RenouvOrgChg.text().empty()) {
    return refuser("Le déclenchement du renouvellement est obligatoire.", screen::kRegles,
                   regles_.Cbo_RenouvOrgChg);
  }
  if (!comptesOuverts()) return true;
  if (regles_.Txt_DebitOrgChg.text().empty()) {
    return refuser("Le compte comptable DEBIT est obligatoire.", screen::kRegles,
                   regles_.Txt_DebitOrgChg);
  }
  if (regles_.Txt_CreditOrgChg.text().empty()) {
    return refuser("Le compte comptable CREDIT est obligatoire.", screen::kRegles,
                   regles_.Txt_CreditOrgChg);
  }
  return true;
}

// --- Handlers

void Ong2::Opt_TypePrincipalOrgChg_Click() {
  context_.screen.priseEnCharge.Cdr_AttribOrgChg.setEnabled(true);
  regles_.Cdr_PlafondOrg.setEnabled(true);
  montrerTypeDuBareme();
  context_.screen.participation.Opt_GestPartMont.setValue(true);
  context_.screen.activites.Cdr_GestionExclu.setEnabled(true);
  reglerSemaine(context_.screen.activites);
  regles_.Cac_FactAnticip.setEnabled(regles_.Cac_DemAccordOrgChg.value());
}

void Ong2::Opt_TypeComplOrgChg_Click() {
  montrerTypeDuBareme();
  screen::Activites& activites = context_.screen.activites;
  const bool complementaire = regles_.Opt_TypeComplOrgChg.value();
  activites.Cdr_GestionExclu.setEnabled(!complementaire);
  if (complementaire) activites.Opt_Totalite.setValue(true);
  reglerSemaine(activites);
  regles_.Cac_FactAnticip.setValue(false);
  regles_.Cac_FactAnticip.setEnabled(false);
}

void Ong2::Cac_DemAccordOrgChg_Click() {
  const bool anticipable =
      regles_.Cac_DemAccordOrgChg.value() && regles_.Opt_TypePrincipalOrgChg.value();
  if (!anticipable) regles_.Cac_FactAnticip.setValue(false);
  regles_.Cac_FactAnticip.setEnabled(anticipable);
}

void Ong2::Cac_IncidCompta_Click() {
  ouvrirComptes();
  if (!regles_.Cac_IncidCompta.value()) return;
  const screen::Quiet quiet(context_.session);
  viderComptes();
}

bool Ong2::comptesOuverts() const {
  return context_.session.OptionCompteur && !regles_.Cac_IncidCompta.value();
}

void Ong2::ouvrirComptes() {
  const bool open = comptesOuverts();
  for (toolkit::Label* label :
       {&regles_.Etq_DebitOrgChg, &regles_.Etq_CreditOrgChg, &regles_.Etq_CpteProdAide}) {
    label->setEnabled(open);
  }
  for (AccountPair* pair : {&debit_, &credit_, &produitAide_}) pair->setEnabled(open);
}

void Ong2::Cbo_PeriodFactOrgChg_LostFocus() {
  quitterListeFixe(context_.desktop, regles_.Cbo_PeriodFactOrgChg,
                   "La période de facturation saisie n'existe pas, veuillez la ressaisir.");
}

void Ong2::Cbo_RenouvOrgChg_LostFocus() {
  quitterListeFixe(context_.desktop, regles_.Cbo_RenouvOrgChg,
                   "Le déclenchement du renouvellement saisi n'existe pas, veuillez le ressaisir.");
}

void Ong2::Cbo_StatsOrgChg_Change() {
  context_.session.statistiqueVidee = regles_.Cbo_StatsOrgChg.text().empty();
}

// A text that goes because it is no line is not the user's wish to have no category.
void Ong2::Cbo_StatsOrgChg_LostFocus() {
  const screen::Quiet quiet(context_.session);
  quitterListeFixe(context_.desktop, regles_.Cbo_StatsOrgChg);
}

void Ong2::Lst_PiecePossibleOrgChg_DblClick() {
  if (!screen::droitsComplets(context_.session)) return;
  ajouterSelection(regles_.Lst_PiecePossibleOrgChg, regles_.Lst_PieceRenouOrgChg);
}

void Ong2::Lst_PieceRenouOrgChg_DblClick() {
  if (!screen::droitsComplets(context_.session)) return;
  retirerSelection(regles_.Lst_PieceRenouOrgChg);
}

}  // namespace pages
