#include "pages/Ong1.h"

#include "pages/AcronymField.h"
#include "screen/Messages.h"
#include "store/Layouts.h"

namespace pages {

namespace attribut = store::orgprisecharge;

Ong1::Ong1(PageContext context, AddressPort& adresse)
    : Onglet(context, &screen::EditSession::ErreurOng1),
      adresse_(adresse),
      fields_{
          {&context.screen.bar.Txt_SigleOrgChg, attribut::SigleOrgChg, {}},
          {&context.screen.coordonnees.Txt_RaisonOrgChg, attribut::RaisonOrgChg, {}},
          {&context.screen.coordonnees.Txt_InterlocDossOrgChg, attribut::InterlocDossOrgChg, {}},
          {&context.screen.coordonnees.Txt_InterlocFactOrgChg, attribut::InterlocFactOrgChg, {}}} {}

void Ong1::Afficher_Ong1() {
  const screen::Quiet quiet(context_.session);
  store::DynamicArray& record = context_.session.RecOrgChg->fields();
  for (Field& field : fields_) montrer(field, record.get(field.attribute));
  adresse_.afficher(record, store::adresse::Premier);
}

void Ong1::Ecrire_Ong1() {
  context_.session.ErreurOng1 = false;
  if (context_.session.modeVerif && !Verif_Ong1()) return;
  store::DynamicArray& record = context_.session.RecOrgChg->fields();
  for (const Field& field : fields_) {
    ecrireAttribut(record, field.attribute, field.shown.written(field.box->text()));
  }
  adresse_.ecrire(record, store::adresse::Premier);
}

bool Ong1::Verif_Ong1() {
  context_.session.ErreurOng1 = false;
  screen::CommandBar& bar = context_.screen.bar;
  if (bar.Txt_SigleOrgChg.text().empty()) {
    refuser("Le sigle de l'organisme de prise en charge est obligatoire.");
    context_.screen.Ong_OrgPriseChg.setTab(screen::kCoordonnees);
    // Of an existing body the acronym is unseen until it has to be entered.
    if (context_.session.RecOrgChg) montrerSaisieSigle(bar);
    bar.Txt_SigleOrgChg.setFocus();
    return false;
  }
  if (context_.screen.coordonnees.Txt_RaisonOrgChg.text().empty()) {
    return refuser("La raison sociale de l'organisme de prise en charge est obligatoire.",
                   screen::kCoordonnees, context_.screen.coordonnees.Txt_RaisonOrgChg);
  }
  return true;
}

void Ong1::vider() {
  const screen::Quiet quiet(context_.session);
  for (Field& field : fields_) montrer(field, "");
  adresse_.vider();
}

void Ong1::montrer(Field& field, std::string_view attribute) {
  field.box->renewText(attribute);
  field.shown.keep(attribute, field.box->text());
}

}  // namespace pages
