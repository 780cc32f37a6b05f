#include "pages/Ong4.h"

#include "agreements/ActiveAgreements.h"
#include "pages/Columns.h"
#include "pages/NumberZone.h"
#include "screen/Messages.h"
#include "store/Amounts.h"
#include "store/Dates.h"
#include "store/Layouts.h"
#include "store/Request.h"

namespace pages {

namespace attribut = store::orgprisecharge;

namespace {

constexpr const char* kMontant = "Montant au";
constexpr const char* kPourcentage = "% au";

}  // namespace

Ong4::Ong4(PageContext context)
    : Onglet(context, &screen::EditSession::ErreurOng4),
      page_(context.screen.participation),
      bareme_(context),
      precedente_{&page_.Txt_DatBaremPrec, attribut::DatBaremPrec, {}},
      enCours_{&page_.Txt_DatBaremCours, attribut::DatBaremCours, {}} {}

void Ong4::lier(const screen::Handlers& handlers) {
  bareme_.lier(handlers);
  page_.Cmd_NouveauBareme.onClick = handlers.on(*this, &Ong4::Cmd_NouveauBareme_Click);
  page_.Opt_GestPartMont.onClick = handlers.on(*this, &Ong4::Opt_GestPartMont_Click);
  page_.Opt_GestPartPourc.onClick = handlers.on(*this, &Ong4::Opt_GestPartPourc_Click);
  page_.Txt_DatBaremCours.onKeyPress = handlers.key(*this, &Ong4::Txt_DatBaremCours_KeyPress);
  page_.Txt_DatBaremCours.onLostFocus = handlers.on(*this, &Ong4::Txt_DatBaremCours_LostFocus);
}

// --- Showing

void Ong4::Afficher_Ong4() {
  const screen::Quiet quiet(context_.session);
  bareme_.fermer();
  oublierBareme();
  const store::DynamicArray& record = context_.session.RecOrgChg->fields();
  page_.Opt_Quotient.setValue(record.get(attribut::Bareme) == "Q");
  page_.Opt_Ressource.setValue(record.get(attribut::Bareme) == "R");
  page_.Opt_GestPartMont.setValue(record.get(attribut::GestPartBenef) == "M");
  page_.Opt_GestPartPourc.setValue(record.get(attribut::GestPartBenef) == "%");
  page_.Etq_Montant.setCaption(page_.Opt_GestPartMont.value() ? kMontant : kPourcentage);
  page_.Cac_Abonnement.setValue(store::wholeNumber(record.get(attribut::Abonnement)) != 0);
  for (Date* date : {&precedente_, &enCours_}) {
    date->box->renewText(jourMontre(record.get(date->attribute)));
    date->box->setEnabled(false);
    date->shown.keep(record.get(date->attribute), date->box->text());
  }
  bareme_.afficher(record);
  bareme_.ouvrirAjout();
}

// A row that is open belongs to the rows that go.
void Ong4::Affiche_Bareme() {
  bareme_.AfficherZonesBareme();
  bareme_.afficher(context_.session.RecOrgChg->fields());
  bareme_.ouvrirAjout();
}

void Ong4::vider() {
  const screen::Quiet quiet(context_.session);
  bareme_.vider();
  oublierBareme();
  for (toolkit::OptionButton* option : {&page_.Opt_Quotient, &page_.Opt_Ressource,
                                        &page_.Opt_GestPartMont, &page_.Opt_GestPartPourc}) {
    option->setValue(false);
  }
  page_.Etq_Montant.setCaption(kMontant);
  page_.Cac_Abonnement.setValue(false);
  for (Date* date : {&precedente_, &enCours_}) {
    date->box->setText("");
    date->box->setEnabled(false);
    date->shown.keep("", "");
  }
  bareme_.ouvrirAjout();
}

// --- Writing

void Ong4::Ecrire_Ong4() {
  context_.session.ErreurOng4 = false;
  if (context_.session.modeVerif && !Verif_Ong4()) return;
  store::DynamicArray& record = context_.session.RecOrgChg->fields();
  bareme_.ecrire(record);
  for (const Date* date : {&precedente_, &enCours_}) {
    const std::string& text = date->box->text();
    ecrireAttribut(record, date->attribute,
                   date->shown.stands(text) ? date->shown.attribute() : jourEcrit(text));
  }
  if (page_.Opt_Quotient.value()) ecrireAttribut(record, attribut::Bareme, "Q");
  if (page_.Opt_Ressource.value()) ecrireAttribut(record, attribut::Bareme, "R");
  if (page_.Opt_GestPartMont.value()) ecrireAttribut(record, attribut::GestPartBenef, "M");
  if (page_.Opt_GestPartPourc.value()) ecrireAttribut(record, attribut::GestPartBenef, "%");
  ecrireAttribut(record, attribut::Abonnement, page_.Cac_Abonnement.value() ? "1" : "0");
}

// --- Checking

bool Ong4::Verif_Ong4() {
  context_.session.ErreurOng4 = false;
  bareme_.completer();
  if (!datesAcceptees() || !tranchesAcceptees()) return false;
  if (page_.Cac_Abonnement.value() && context_.screen.priseEnCharge.Cac_CoutGlobal.value()) {
    return refuser(
        "L'abonnement et le côut global (onglet 'Prise en charge') ne peuvent pas être activés en "
        "même temps.",
        screen::kParticipation, page_.Cac_Abonnement);
  }
  return modeInchange();
}

bool Ong4::datesAcceptees() {
  const std::string& current = page_.Txt_DatBaremCours.text();
  if (current.empty()) {
    if (page_.Lst_DebRevSeulOrgChg.list(0).empty()) return true;
    return refuserDate("La date du barème en cours est obligatoire.");
  }
  const auto day = store::dayOfText(current);
  if (!day) return refuserDate("La date du barème en cours est incorrecte, veuillez la ressaisir.");
  const std::string& previous = page_.Txt_DatBaremPrec.text();
  if (!previous.empty() && *day <= store::dayOfText(previous).value_or(0)) {
    return refuserDate(
        "La date du barème en cours doit être supérieure à la date de barème précédent.");
  }
  return true;
}

bool Ong4::tranchesAcceptees() {
  const int single = bareme_.ruptureSeul();
  if (single >= 0) {
    bareme_.choisir(single);
    return refuser("Il n'y a pas enchaînement dans les tranches de revenus des personnes seules.",
                   screen::kParticipation, ouverte(page_.Lst_DebRevSeulOrgChg));
  }
  const int household = bareme_.ruptureMenage();
  if (household >= 0) {
    bareme_.choisir(household);
    return refuser("Il n'y a pas enchaînement dans les tranches de revenus des ménages.",
                   screen::kParticipation, ouverte(page_.Lst_DebRevMenOrgChg));
  }
  return true;
}

// The mode stays while agreements rely on it.
bool Ong4::modeInchange() {
  screen::EditSession& session = context_.session;
  const std::string_view before = session.AncienOrgChg.get(attribut::GestPartBenef);
  const bool toAmount = before == "%" && page_.Opt_GestPartMont.value();
  const bool toPercentage = before == "M" && page_.Opt_GestPartPourc.value();
  if (!toAmount && !toPercentage) return true;
  agreements::RechercheAccord(session);
  if (!store::anySelected(session.accordsActifs)) return true;
  session.ErreurOng4 = true;
  screen::informer(
      context_.desktop,
      "La modification de la gestion de la participation bénéficiaire n'est pas possible car il "
      "existe des accords actifs pour cet organisme.\r\nMerci de contacter VALDRIS si votre "
      "volonté est de changer le mode de gestion de cet organisme.");
  context_.screen.Ong_OrgPriseChg.setTab(screen::kParticipation);
  (toAmount ? page_.Opt_GestPartMont : page_.Opt_GestPartPourc).setFocus();
  return false;
}

// Outside a new scale the date is closed, until it has to be entered.
bool Ong4::refuserDate(std::string_view message) {
  page_.Txt_DatBaremCours.setEnabled(true);
  return refuser(message, screen::kParticipation, page_.Txt_DatBaremCours);
}

// A new scale has closed the brackets; the row is selected in the participations too.
toolkit::ListBox& Ong4::ouverte(toolkit::ListBox& list) {
  return list.enabled() ? list : page_.Lst_BaremCoursOrgChg;
}

// --- Handlers

void Ong4::Cmd_NouveauBareme_Click() {
  if (context_.session.NouveauBareme) {
    annulerBareme();
    return;
  }
  if (screen::demander(context_.desktop, "Souhaitez-vous créer un nouveau barème ?",
                       toolkit::Icon::Question)) {
    commencerBareme();
  }
}

void Ong4::commencerBareme() {
  const std::string previous = page_.Txt_DatBaremPrec.text();
  const std::string current = page_.Txt_DatBaremCours.text();
  const bool existait = bareme_.existait() || !enCours_.shown.attribute().empty();
  copie_ = Copie{bareme_.commencerBareme(), previous, current};
  if (existait) page_.Txt_DatBaremPrec.setText(current);
  page_.Txt_DatBaremCours.setText("");
  page_.Txt_DatBaremCours.setEnabled(true);
  page_.Cmd_NouveauBareme.setCaption(screen::kAnnulerBareme);
  context_.session.NouveauBareme = true;
  bareme_.ouvrirAjout();
  page_.Txt_DatBaremCours.setFocus();
}

void Ong4::annulerBareme() {
  if (copie_) {
    bareme_.annulerBareme(copie_->bareme);
    page_.Txt_DatBaremPrec.setText(copie_->precedente);
    page_.Txt_DatBaremCours.setText(copie_->enCours);
  }
  page_.Txt_DatBaremCours.setEnabled(false);
  oublierBareme();
  bareme_.ouvrirAjout();
}

void Ong4::oublierBareme() {
  copie_.reset();
  context_.session.NouveauBareme = false;
  page_.Cmd_NouveauBareme.setCaption(screen::kNouveauBareme);
}

void Ong4::Opt_GestPartMont_Click() { page_.Etq_Montant.setCaption(kMontant); }

void Ong4::Opt_GestPartPourc_Click() { page_.Etq_Montant.setCaption(kPourcentage); }

void Ong4::Txt_DatBaremCours_KeyPress(char32_t& key) { filtrerDate(key); }

// A date that cannot be completed stays as typed: the check of the page tells of it.
void Ong4::Txt_DatBaremCours_LostFocus() {
  toolkit::TextBox& box = page_.Txt_DatBaremCours;
  const std::string completed = store::completeDate(box.text(), context_.desktop.today().year);
  if (!completed.empty()) box.setText(completed);
}

}  // namespace pages
