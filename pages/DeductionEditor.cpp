#include "pages/DeductionEditor.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "pages/Columns.h"
#include "pages/NumberZone.h"
#include "pages/ShownAttribute.h"
#include "screen/Messages.h"
#include "store/Conversions.h"
#include "store/Layouts.h"
#include "toolkit/Trap.h"

namespace pages {

namespace attribut = store::orgprisecharge;

namespace {

constexpr std::array<int, 3> kAttributs{attribut::DebAbatHOrgChg, attribut::FinAbatHOrgChg,
                                        attribut::PourcentAbatOrgChg};

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
  parts.verrouilles = {&prise.Cdr_AttribOrgChg, &prise.Cdr_TauxOrgChg};
  return parts;
}

}  // namespace

DeductionEditor::DeductionEditor(PageContext context)
    : context_(context),
      prise_(context.screen.priseEnCharge),
      editor_(context, parts(context.screen.priseEnCharge)) {}

void DeductionEditor::lier(const screen::Handlers& handlers) {
  editor_.lier(handlers);
  for (toolkit::ListBox* list :
       {&prise_.Lst_DebAbatHOrgChg, &prise_.Lst_FinAbatHOrgChg, &prise_.Lst_PourcentAbatOrgChg}) {
    list->onDblClick =
        handlers.on([this] { toolkit::quietly("DoubleClickAbat", [this] { DoubleClickAbat(); }); });
  }
  prise_.Cmd_AjoutAbat.onClick = handlers.on(*this, &DeductionEditor::Cmd_AjoutAbat_Click);
  prise_.Cmd_OKAbat.onClick = handlers.on(*this, &DeductionEditor::Cmd_OKAbat_Click);
  prise_.Cmd_AnnulerAbat.onClick = handlers.on(*this, &DeductionEditor::Cmd_AnnulerAbat_Click);
  prise_.Cmd_SuppAbat.onClick = handlers.on(*this, &DeductionEditor::Cmd_SuppAbat_Click);
  for (toolkit::TextBox* zone :
       {&prise_.Txt_DebAbatHOrgChg, &prise_.Txt_FinAbatHOrgChg, &prise_.Txt_PourcentAbatOrgChg}) {
    lierZoneDeNombre(handlers, *zone);
  }
}

// --- Showing and writing

void DeductionEditor::afficher(const store::DynamicArray& record) {
  const auto count = static_cast<std::size_t>(record.DCount(attribut::DebAbatHOrgChg));
  std::vector<ListEditor::Row> rows(count, ListEditor::Row(kAttributs.size()));
  for (std::size_t i = 0; i < kAttributs.size(); ++i) {
    montrerColonne(rows, i, record, kAttributs[i], centiemesMontres);
  }
  editor_.remplir(std::move(rows));
}

void DeductionEditor::ecrire(store::DynamicArray& record) const {
  const int count = editor_.lignesRemplies();
  for (std::size_t i = 0; i < kAttributs.size(); ++i) {
    ecrireAttribut(record, kAttributs[i],
                   valeurs(record, kAttributs[i], editor_.colonne(i, count), centiemesMontres,
                           centiemesEcrits, "0"));
  }
}

void DeductionEditor::effacer(store::DynamicArray& record) {
  for (const int attribute : kAttributs) ecrireAttribut(record, attribute, "");
}

void DeductionEditor::vider() {
  editor_.fermer();
  editor_.remplir({});
}

void DeductionEditor::TriAbat() {
  store::DynamicArray& deductions = record();
  std::vector<int> order(static_cast<std::size_t>(deductions.DCount(attribut::DebAbatHOrgChg)));
  std::iota(order.begin(), order.end(), 1);
  std::vector<long> starts;
  starts.reserve(order.size());
  for (const int value : order) {
    starts.push_back(store::wholeNumber(deductions.get(attribut::DebAbatHOrgChg, value)));
  }
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
    return starts[static_cast<std::size_t>(a - 1)] < starts[static_cast<std::size_t>(b - 1)];
  });
  for (const int attribute : kAttributs) {
    store::DynamicArray placed;
    int value = 0;
    for (const int from : order) placed.set(1, ++value, deductions.get(attribute, from));
    ecrireAttribut(deductions, attribute, placed.get(1));
  }
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
  prise_.Txt_DebAbatHOrgChg.setText(store::editable(shown[0]));
  prise_.Txt_FinAbatHOrgChg.setText(store::editable(shown[1]));
  prise_.Txt_PourcentAbatOrgChg.setText(store::editable(shown[2]));
  prise_.Txt_DebAbatHOrgChg.setFocus();
}

// --- Confirming

void DeductionEditor::Cmd_OKAbat_Click() {
  toolkit::quietly("Cmd_OKAbat_Click", [this] {
    if (!saisieAcceptee() || !sansChevauchement()) return;
    poser(editor_.enAjout() ? record().DCount(attribut::DebAbatHOrgChg) : editor_.editee());
    TriAbat();
    AfficherZonesAbat();
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
    return refuser("Le pourcentage doit être inférieur à 100.", prise_.Txt_PourcentAbatOrgChg);
  }
  if (end.empty() || percentage.empty()) {
    return refuser("La tranche d'heures de fin ainsi que le pourcentage sont obligatoires.",
                   prise_.Txt_FinAbatHOrgChg);
  }
  if (simplePrecision(end) < simplePrecision(start)) {
    return refuser(
        "La tranche d'heures de fin doit être supérieure à la tranche d'heures de début.",
        prise_.Txt_FinAbatHOrgChg);
  }
  return true;
}

// Only the end of an existing range is looked at; the row left out is the one selected among the
// rates.
bool DeductionEditor::sansChevauchement() {
  const float start = simplePrecision(prise_.Txt_DebAbatHOrgChg.text());
  const float end = simplePrecision(prise_.Txt_FinAbatHOrgChg.text());
  for (int row = 0; row < editor_.lignes(); ++row) {
    const float other = simplePrecision(prise_.Lst_FinAbatHOrgChg.list(row));
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
  const std::array<const toolkit::TextBox*, 3> zones{
      &prise_.Txt_DebAbatHOrgChg, &prise_.Txt_FinAbatHOrgChg, &prise_.Txt_PourcentAbatOrgChg};
  for (std::size_t i = 0; i < kAttributs.size(); ++i) {
    std::string value = centiemesEcrits(zones[i]->text());
    if (value.empty()) value = "0";
    record().set(kAttributs[i], row + 1, value);
  }
}

bool DeductionEditor::refuser(std::string_view message, toolkit::Control& field) {
  screen::avertir(context_.desktop, message);
  field.setFocus();
  return false;
}

// --- Cancelling and deleting

void DeductionEditor::Cmd_AnnulerAbat_Click() {
  if (editor_.enAjout() &&
      !screen::confirmer(context_.desktop, "Etes-vous sûr de vouloir quitter cette création ?")) {
    return;
  }
  AfficherZonesAbat();
}

void DeductionEditor::Cmd_SuppAbat_Click() {
  const int row = editor_.editee();
  if (row < 0) {
    AfficherZonesAbat();
    return;
  }
  if (!screen::confirmer(context_.desktop, "Etes-vous sûr de vouloir supprimer cette ligne ?")) {
    return;
  }
  for (const int attribute : kAttributs) record().Delete(attribute, row + 1);
  AfficherZonesAbat();
  editor_.retirer(row);
}

store::DynamicArray& DeductionEditor::record() { return context_.session.RecOrgChg->fields(); }

}  // namespace pages
