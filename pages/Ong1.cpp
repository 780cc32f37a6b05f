#include "pages/Ong1.h"

#include "pages/AcronymField.h"
#include "screen/Messages.h"
#include "store/Layouts.h"

namespace pages {

namespace attribut = store::orgprisecharge;

Ong1::Ong1(PageContext context, AddressPort& adresse) : context_(context), adresse_(adresse) {}

void Ong1::Afficher_Ong1() {
  const screen::Quiet quiet(context_.session);
  vider();
  store::DynamicArray& record = context_.session.RecOrgChg->fields();
  screen::Coordonnees& page = context_.screen.coordonnees;
  context_.screen.bar.Txt_SigleOrgChg.setText(record.get(attribut::SigleOrgChg));
  page.Txt_RaisonOrgChg.setText(record.get(attribut::RaisonOrgChg));
  adresse_.afficher(record, store::adresse::Premier);
  page.Txt_InterlocDossOrgChg.setText(record.get(attribut::InterlocDossOrgChg));
  page.Txt_InterlocFactOrgChg.setText(record.get(attribut::InterlocFactOrgChg));
}

void Ong1::Ecrire_Ong1() {
  context_.session.ErreurOng[screen::kCoordonnees] = false;
  if (context_.session.modeVerif && !Verif_Ong1()) return;
  store::DynamicArray& record = context_.session.RecOrgChg->fields();
  const screen::Coordonnees& page = context_.screen.coordonnees;
  record.set(attribut::SigleOrgChg, context_.screen.bar.Txt_SigleOrgChg.text());
  record.set(attribut::RaisonOrgChg, page.Txt_RaisonOrgChg.text());
  adresse_.ecrire(record, store::adresse::Premier);
  record.set(attribut::InterlocDossOrgChg, page.Txt_InterlocDossOrgChg.text());
  record.set(attribut::InterlocFactOrgChg, page.Txt_InterlocFactOrgChg.text());
}

bool Ong1::Verif_Ong1() {
  context_.session.ErreurOng[screen::kCoordonnees] = false;
  screen::CommandBar& bar = context_.screen.bar;
  if (bar.Txt_SigleOrgChg.text().empty()) {
    refuser("Le sigle de l'organisme de prise en charge est obligatoire.");
    // Of an existing body the acronym is unseen until it has to be entered.
    montrerSaisieSigle(bar);
    bar.Txt_SigleOrgChg.setFocus();
    return false;
  }
  if (context_.screen.coordonnees.Txt_RaisonOrgChg.text().empty()) {
    refuser("La raison sociale de l'organisme de prise en charge est obligatoire.");
    context_.screen.coordonnees.Txt_RaisonOrgChg.setFocus();
    return false;
  }
  return true;
}

void Ong1::vider() {
  const screen::Quiet quiet(context_.session);
  screen::Coordonnees& page = context_.screen.coordonnees;
  context_.screen.bar.Txt_SigleOrgChg.setText("");
  page.Txt_RaisonOrgChg.setText("");
  adresse_.vider();
  page.Txt_InterlocDossOrgChg.setText("");
  page.Txt_InterlocFactOrgChg.setText("");
}

void Ong1::refuser(std::string_view message) {
  context_.session.ErreurOng[screen::kCoordonnees] = true;
  screen::avertir(context_.desktop, message);
  context_.screen.Ong_OrgPriseChg.setTab(screen::kCoordonnees);
}

}  // namespace pages
