#include "pages/DeductionEditor.h"

#include <array>
#include <string>
#include <vector>

#include "pages/Columns.h"
#include "pages/NumberZone.h"
#include "pages/ShownAttribute.h"
#include "screen/Messages.h"
#include "screen/StoreTrap.h"
#include "store/Amounts.h"
#include "store/Layouts.h"

namespace pages {

namespace attribut = store::orgprisecharge;

namespace {

constexpr std::array<Colonne, 3> kColonnes{{
    {attribut::DebAbatHOrgChg, kCentiemes, "0"},
    {attribut::FinAbatHOrgChg, kCentiemes, "0"},
    {attribut::PourcentAbatOrgChg, kCentiemes, "0"},
}};

ListEditor::Parts parts(screen::PriseEnCharge& prise) {
  ListEditor::Parts parts;
  parts.onglet = screen::kPriseEnCharge;
  parts.listes = {&prise.Lst_DebAbatHOrgChg, &prise.Lst_FinAbatHOrgChg,
                  &prise.Lst_PourcentAbatOrgChg};
  parts.zones = {&prise.Txt_DebAbatHOrgChg, &prise.Txt_FinAbatHOrgChg,
                 &prise.Txt_PourcentAbatOrgChg};
  parts.barre = &prise.Bdv_AbatOrgChg;
  parts.elargis = {&prise.Lst_PourcentAbatOrgChg, &prise.Txt_PourcentAbatOrgChg};
  parts.ajouter = &prise.Cmd_AjoutAbat;
  parts.ok = &prise.Cmd_OKAbat;
  parts.annuler = &prise.Cmd_AnnulerAbat;
  parts.supprimer = &prise.Cmd_SuppAbat;
  parts.verrouilles = {&prise.Cdr_AttribOrgChg, &prise.Cdr_TauxOrgChg,
                       &prise.Txt_CodeCptPrestationService, &prise.Cbo_CptPrestationService};
  parts.preteurs = {&prise.Opt_MontantOrgChg, &prise.Cac_CoutGlobal};
  return parts;
}

}  // namespace

DeductionEditor::DeductionEditor(PageContext context)
    : context_(context),
      prise_(context.screen.priseEnCharge),
      editor_(context, parts(context.screen.priseEnCharge)) {}

void DeductionEditor::lier(const screen::Handlers& handlers) {
  editor_.lier(handlers, "DoubleClickAbat", [this] { DoubleClickAbat(); });
  prise_.Cmd_AjoutAbat.onClick = handlers.on(*this, &DeductionEditor::Cmd_AjoutAbat_Click);
  prise_.Cmd_OKAbat.onClick = handlers.on(*this, &DeductionEditor::Cmd_OKAbat_Click);
  prise_.Cmd_AnnulerAbat.onClick = handlers.on(*this, &DeductionEditor::Cmd_AnnulerAbat_Click);
  prise_.Cmd_SuppAbat.onClick = handlers.on(*this, &DeductionEditor::Cmd_SuppAbat_Click);
  editor_.lierNombres(handlers, 0);
}

// --- Showing and writing

void DeductionEditor::afficher(const store::DynamicArray& record) {
  colonnes_.montrer(editor_, record, kColonnes, record.DCount(attribut::DebAbatHOrgChg));
}

void DeductionEditor::ecrire(store::DynamicArray& record) const {
  colonnes_.ecrire(editor_, record, kColonnes, editor_.lignesRemplies());
}

void DeductionEditor::effacer(store::DynamicArray& record) {
  for (const Colonne& column : kColonnes) ecrireAttribut(record, column.attribute, "");
}

void DeductionEditor::fermer() { editor_.fermer(); }

void DeductionEditor::vider() {
  fermer();
  editor_.remplir({});
}

// A slip without deductions takes them out of the record when the page is written, but not out of
// the lists, which are the source.
void DeductionEditor::reprendre() {
  if (record().get(attribut::DebAbatHOrgChg).empty()) ecrire(record());
}

void DeductionEditor::TriAbat() {
  reprendre();
  store::DynamicArray& deductions = record();
  const std::vector<int> order = ordreCroissant(nombres(deductions, attribut::DebAbatHOrgChg));
  ordonnerColonnes(deductions, kColonnes, order);
  editor_.ordonner(order);
  afficher(deductions);
}

// --- Modes

void DeductionEditor::MasquerZonesAbat() { editor_.ouvrirChoisie(); }

void DeductionEditor::AfficherZonesAbat() { editor_.quitter(); }

void DeductionEditor::Cmd_AjoutAbat_Click() {
  if (!editor_.ouvrir(-1)) return;
  prise_.Txt_DebAbatHOrgChg.setFocus();
}

void DeductionEditor::DoubleClickAbat() {
  const int row = editor_.ligneChoisie();
  if (editor_.ouvert() || row < 0 || !screen::droitsComplets(context_.session)) return;
  const ListEditor::Row shown = editor_.ligne(row);
  if (!editor_.ouvrir(row)) return;
  editor_.proposer(shown);
  prise_.Txt_DebAbatHOrgChg.setFocus();
}

// --- Confirming

void DeductionEditor::Cmd_OKAbat_Click() {
  screen::quietly(context_.session, "Cmd_OKAbat_Click", [this] {
    if (!editor_.nombresLisibles() || !saisieAcceptee() || !sansChevauchement()) return;
    reprendre();
    poser(editor_.enAjout() ? record().DCount(attribut::DebAbatHOrgChg) : editor_.editee());
    TriAbat();
    editor_.quitterConfirmee();
  });
}

bool DeductionEditor::saisieAcceptee() {
  const std::string& start = prise_.Txt_DebAbatHOrgChg.text();
  const std::string& end = prise_.Txt_FinAbatHOrgChg.text();
  const std::string& percentage = prise_.Txt_PourcentAbatOrgChg.text();
  if (start.empty() && end.empty() && percentage.empty()) {
    screen::informer(context_.desktop,
                     "Pour continuer, veuillez saisir les renseignements concernant l'abattement, "
                     "sinon cliquer sur Annuler.");
    prise_.Txt_DebAbatHOrgChg.setFocus();
    return false;
  }
  if (store::hundredths(percentage).value_or(0) / 100 > 100) {
    return editor_.refuser("Le pourcentage doit être inférieur à 100.",
                           prise_.Txt_PourcentAbatOrgChg);
  }
  if (end.empty() || percentage.empty()) {
    return editor_.refuser("La tranche d'heures de fin ainsi que le pourcentage sont obligatoires.",
                           prise_.Txt_FinAbatHOrgChg);
  }
  if (store::singlePrecision(end) < store::singlePrecision(start)) {
    return editor_.refuser(
        "La tranche d'heures de fin doit être supérieure à la tranche d'heures de début.",
        prise_.Txt_FinAbatHOrgChg);
  }
  return true;
}

// Only the end of an existing range is looked at; the row left out is the one selected among the
// rates.
bool DeductionEditor::sansChevauchement() {
  const float start = store::singlePrecision(prise_.Txt_DebAbatHOrgChg.text());
  const float end = store::singlePrecision(prise_.Txt_FinAbatHOrgChg.text());
  for (int row = 0; row < editor_.lignes(); ++row) {
    const float other = store::singlePrecision(prise_.Lst_FinAbatHOrgChg.list(row));
    const bool within = start < other && other < end;
    if (!within || row == prise_.Lst_DateRembOrgChg.listIndex()) continue;
    screen::avertir(context_.desktop,
                    "Il y a chevauchement dans les tranches d'heures, veuillez les ressaisir.");
    for (toolkit::TextBox* zone :
         {&prise_.Txt_DebAbatHOrgChg, &prise_.Txt_FinAbatHOrgChg, &prise_.Txt_PourcentAbatOrgChg}) {
      zone->setText("");
    }
    prise_.Txt_DebAbatHOrgChg.setFocus();
    return false;
  }
  return true;
}

// A range without a start begins at 0.
void DeductionEditor::poser(int row) {
  store::DynamicArray& deductions = record();
  const ListEditor::Row typed = editor_.saisie();
  for (std::size_t i = 0; i < kColonnes.size(); ++i) {
    const int attribute = kColonnes[i].attribute;
    std::string value = valeurSaisie(kColonnes[i], deductions.get(attribute, row + 1), typed[i]);
    if (value.empty()) value = "0";
    deductions.set(attribute, row + 1, value);
  }
}

// --- Cancelling and deleting

void DeductionEditor::Cmd_AnnulerAbat_Click() {
  if (!editor_.abandonConfirme()) return;
  AfficherZonesAbat();
}

void DeductionEditor::Cmd_SuppAbat_Click() {
  const int row = editor_.editee();
  if (row < 0) {
    AfficherZonesAbat();
    return;
  }
  if (!editor_.suppressionConfirmee()) return;
  for (const Colonne& column : kColonnes) record().Delete(column.attribute, row + 1);
  AfficherZonesAbat();
  editor_.retirer(row);
}

store::DynamicArray& DeductionEditor::record() { return context_.session.RecOrgChg->fields(); }

}  // namespace pages
