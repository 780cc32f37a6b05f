#include "control/Rights.h"

#include <initializer_list>

#include "control/Errors.h"
#include "toolkit/Trap.h"

namespace control {

void exigerDroitsComplets(const screen::EditSession& session) {
  if (!session.DroitOrgChg) throw NotReady("DroitsUtilisateur has not been given");
  if (!screen::droitsComplets(session)) throw AccessDenied();
}

namespace {

void montrerBoutons(screen::Screen& screen, bool visible) {
  screen::CommandBar& bar = screen.bar;
  screen::PriseEnCharge& prise = screen.priseEnCharge;
  screen::Participation& part = screen.participation;
  for (toolkit::CommandButton* button :
       {&prise.Cmd_AjoutAbat, &bar.Cmd_Ajouter, &part.Cmd_AjoutPart, &prise.Cmd_AjoutTaux,
        &part.Cmd_NouveauBareme, &bar.Cmd_OK, &prise.Cmd_OKAbat, &part.Cmd_OKPart,
        &prise.Cmd_OKTaux, &prise.Cmd_SuppAbat, &part.Cmd_SuppPart, &bar.Cmd_Supprimer,
        &prise.Cmd_SuppTaux}) {
    button->setVisible(visible);
  }
}

void fermerChamps(toolkit::Container& container, bool readOnly) {
  for (toolkit::Control* child : container.children()) {
    switch (child->kind()) {
      case toolkit::Kind::TextBox:
      case toolkit::Kind::ComboBox:
      case toolkit::Kind::OptionButton:
      case toolkit::Kind::CheckBox:
        child->setReadOnly(readOnly);
        break;
      default:
        if (child->isContainer()) fermerChamps(static_cast<toolkit::Container&>(*child), readOnly);
    }
  }
}

// What would change a list, or the number of copies. The bars of the tables are for reading.
void fermerFleches(screen::Screen& screen, bool readOnly) {
  screen::Bordereau& slip = screen.bordereau;
  for (toolkit::Control* control : std::initializer_list<toolkit::Control*>{
           &screen.regles.Cmd_DroiteRenouv, &screen.regles.Cmd_GaucheRenouv, &slip.Cmd_DroiteBord,
           &slip.Cmd_GaucheBord, &slip.Cmd_HautBord, &slip.Cmd_BasBord, &slip.Cmd_DroiteTri,
           &slip.Cmd_GaucheTri, &slip.Bdh_NbExemp, &screen.activites.Cmd_PasseDroit,
           &screen.activites.Cmd_PasseGauche}) {
    control->setReadOnly(readOnly);
  }
}

}  // namespace

// What only the rights have taken away comes back with them.
void Appliquer_Droits(Context& context) {
  const bool consultation = !screen::droitsComplets(context.session);
  if (consultation == context.session.consultation) return;
  context.session.consultation = consultation;
  montrerBoutons(context.screen, !consultation);
  fermerChamps(context.screen.Ong_OrgPriseChg, consultation);
  fermerFleches(context.screen, consultation);
  context.screen.bar.Etq_Consultation.setVisible(consultation);
}

void avantModification(Context& context, const toolkit::Control& control) {
  const toolkit::Control* around = &control;
  while (around && around != &context.screen.Ong_OrgPriseChg) around = around->parent();
  if (!around || (context.session.droitsRelus && !control.readOnly())) return;
  context.session.droitsRelus = true;
  relireDroits(context);
}

void relireDroits(Context& context) {
  toolkit::quietly("Appliquer_Droits", [&] { Appliquer_Droits(context); });
}

}  // namespace control
