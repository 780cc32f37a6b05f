#include "pages/RateEditor.h"

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "pages/Columns.h"
#include "pages/NumberZone.h"
#include "screen/Messages.h"
#include "screen/StoreTrap.h"
#include "store/Amounts.h"
#include "store/Dates.h"
#include "store/Layouts.h"
#include "text/Utf8.h"

namespace pages {

namespace attribut = store::orgprisecharge;

namespace {

constexpr std::array<Colonne, 4> kColonnes{{
    {attribut::DateRembOrgChg, kJours, ""},
    {attribut::TxRembOrgChg, kCentiemes, ""},
    {attribut::TxRembMajOrgChg, kCentiemes, ""},
    {attribut::PrestServOrgChg, kCentiemes, ""},
}};

constexpr std::string_view kDateIllisible = "Erreur de saisie dans la date, veuillez la ressaisir.";

ListEditor::Parts parts(screen::PriseEnCharge& prise) {
  ListEditor::Parts parts;
  parts.onglet = screen::kPriseEnCharge;
  parts.listes = {&prise.Lst_DateRembOrgChg, &prise.Lst_TxRembOrgChg, &prise.Lst_TxRembMajOrgChg,
                  &prise.Lst_PrestServOrgChg};
  parts.zones = {&prise.Txt_DateRembOrgChg, &prise.Txt_TxRembOrgChg, &prise.Txt_TxRembMajOrgChg,
                 &prise.Txt_PrestServOrgChg};
  parts.barre = &prise.Bdv_TauxOrgChg;
  parts.elargis = {&prise.Lst_PrestServOrgChg};
  parts.ajouter = &prise.Cmd_AjoutTaux;
  parts.ok = &prise.Cmd_OKTaux;
  parts.annuler = &prise.Cmd_AnnulerTaux;
  parts.supprimer = &prise.Cmd_SuppTaux;
  parts.verrouilles = {&prise.Cdr_AttribOrgChg, &prise.Cdr_AbatOrgChg, &prise.Cmd_AjoutAbat,
                       &prise.Txt_CodeCptPrestationService, &prise.Cbo_CptPrestationService};
  parts.preteurs = {&prise.Opt_MontantOrgChg, &prise.Cac_CoutGlobal};
  return parts;
}

long jour(std::string_view shown) { return store::dayOfText(shown).value_or(0); }

}  // namespace

RateEditor::RateEditor(PageContext context)
    : context_(context),
      prise_(context.screen.priseEnCharge),
      editor_(context, parts(context.screen.priseEnCharge)) {}

void RateEditor::lier(const screen::Handlers& handlers) {
  editor_.lier(handlers, "DoubleClickTauxRemb", [this] { DoubleClickTauxRemb(); });
  prise_.Cmd_AjoutTaux.onClick = handlers.on(*this, &RateEditor::Cmd_AjoutTaux_Click);
  prise_.Cmd_OKTaux.onClick = handlers.on(*this, &RateEditor::Cmd_OKTaux_Click);
  prise_.Cmd_AnnulerTaux.onClick = handlers.on(*this, &RateEditor::Cmd_AnnulerTaux_Click);
  prise_.Cmd_SuppTaux.onClick = handlers.on(*this, &RateEditor::Cmd_SuppTaux_Click);
  prise_.Txt_DateRembOrgChg.onKeyPress =
      handlers.key(*this, &RateEditor::Txt_DateRembOrgChg_KeyPress);
  prise_.Txt_DateRembOrgChg.onLostFocus =
      handlers.on(*this, &RateEditor::Txt_DateRembOrgChg_LostFocus);
  editor_.lierNombres(handlers, 1);
}

// --- Showing and writing

void RateEditor::afficher(const store::DynamicArray& record) {
  colonnes_.montrer(editor_, record, kColonnes, record.DCount(attribut::DateRembOrgChg));
}

void RateEditor::ecrire(store::DynamicArray& record) const {
  colonnes_.ecrire(editor_, record, kColonnes, editor_.lignesRemplies());
}

void RateEditor::fermer() {
  editor_.fermer();
  context_.session.taux.W_AjoutTaux = false;
}

void RateEditor::vider() {
  fermer();
  editor_.remplir({});
}

void RateEditor::Tri2() {
  context_.desktop.setPointer(toolkit::Pointer::Hourglass);
  screen::quietly(context_.session, "Tri2", [this] {
    store::DynamicArray& rates = record();
    std::vector<long long> days = nombres(rates, attribut::DateRembOrgChg);
    for (long long& day : days) day = -day;  // the most recent first
    const std::vector<int> order = ordreCroissant(days);
    ordonnerColonnes(rates, kColonnes, order);
    editor_.ordonner(order);
    afficher(rates);
  });
  context_.desktop.setPointer(toolkit::Pointer::Normal);
}

// --- Modes

void RateEditor::MasquerZonesTaux() { editor_.ouvrirChoisie(); }

void RateEditor::AfficherZonesTaux() {
  editor_.quitter();
  context_.session.taux.W_AjoutTaux = false;
}

void RateEditor::Cmd_AjoutTaux_Click() {
  if (!editor_.ouvrir(-1)) return;
  prise_.Txt_DateRembOrgChg.setFocus();
  ++context_.session.taux.W_DerTauxModif;
  context_.session.taux.W_AjoutTaux = true;
}

// Rows that agreements rely on already are history.
void RateEditor::DoubleClickTauxRemb() {
  screen::EtatTaux& state = context_.session.taux;
  const int row = editor_.ligneChoisie();
  if (editor_.ouvert()) return;
  if (row < 0 || row > state.W_DerTauxModif || !screen::droitsComplets(context_.session)) return;
  if (row == state.W_DerTauxModif && state.W_TauxModifSupp) {
    screen::avertir(context_.desktop,
                    "Vous avez déjà supprimé le seul taux accessible en modification. Il ne vous "
                    "est plus possible de modifier un taux.");
    return;
  }
  const ListEditor::Row shown = editor_.ligne(row);
  if (!editor_.ouvrir(row)) return;
  if (!state.W_TauxModifie) state.W_TauxAvantModif = shown[0] + shown[1];
  editor_.proposer(shown);
  prise_.Txt_DateRembOrgChg.setFocus();
}

// --- Confirming

void RateEditor::Cmd_OKTaux_Click() {
  screen::quietly(context_.session, "Cmd_OKTaux_Click", [this] {
    const auto day = store::dayOfText(prise_.Txt_DateRembOrgChg.text());
    if (!day) {
      editor_.refuser(kDateIllisible, prise_.Txt_DateRembOrgChg);
      return;
    }
    if (!editor_.nombresLisibles() || !saisieAcceptee() || !datesAcceptees(*day)) return;
    const bool adding = editor_.enAjout();
    poser(adding ? record().DCount(attribut::DateRembOrgChg) : editor_.editee());
    screen::EtatTaux& state = context_.session.taux;
    const std::string shown = prise_.Txt_DateRembOrgChg.text() +
                              centiemesMontres(centiemesEcrits(prise_.Txt_TxRembOrgChg.text()));
    if (adding || shown != state.W_TauxAvantModif) state.W_TauxModifie = true;
    Tri2();
    editor_.quitterConfirmee();
    state.W_AjoutTaux = false;
  });
}

bool RateEditor::saisieAcceptee() {
  const std::string& date = prise_.Txt_DateRembOrgChg.text();
  const std::string& normal = prise_.Txt_TxRembOrgChg.text();
  const std::string& increased = prise_.Txt_TxRembMajOrgChg.text();
  const std::string& service = prise_.Txt_PrestServOrgChg.text();
  if (!increased.empty() && store::singlePrecision(normal) > store::singlePrecision(increased)) {
    return editor_.refuser("Le taux majoré doit être supérieur au taux normal.",
                           prise_.Txt_TxRembMajOrgChg);
  }
  if (!service.empty() && store::singlePrecision(normal) < store::singlePrecision(service)) {
    return editor_.refuser("Le taux prestation de service doit être inférieur au taux normal.",
                           prise_.Txt_PrestServOrgChg);
  }
  if (text::trim(date).empty()) {
    return editor_.refuser("La date est obligatoire.", prise_.Txt_DateRembOrgChg);
  }
  if (text::trim(normal).empty()) {
    return editor_.refuser("Le taux de remboursement est obligatoire.", prise_.Txt_TxRembOrgChg);
  }
  if (increased.empty()) {
    return editor_.refuser("Taux majoré obligatoire, veuillez le saisir.",
                           prise_.Txt_TxRembMajOrgChg);
  }
  if (service.empty()) {
    return editor_.refuser("Taux prestation de service obligatoire, veuillez le saisir.",
                           prise_.Txt_PrestServOrgChg);
  }
  return true;
}

// The row below an added one is the most recent. A row whose date has not changed keeps its place,
// whatever the order of the record.
bool RateEditor::datesAcceptees(long day) {
  const std::string& typed = prise_.Txt_DateRembOrgChg.text();
  for (int row = 0; !prise_.Lst_DateRembOrgChg.list(row).empty(); ++row) {
    if (row == editor_.editee() || prise_.Lst_DateRembOrgChg.list(row) != typed) continue;
    screen::avertir(context_.desktop,
                    "La date d'effet est déjà existante, l'ajout du taux de remboursement est "
                    "annulé.");
    AfficherZonesTaux();
    return false;
  }
  const int edited = editor_.editee();
  if (edited >= 0 && prise_.Lst_DateRembOrgChg.list(edited) == typed) return true;
  const std::string& older = prise_.Lst_DateRembOrgChg.list(edited + 1);
  if (!older.empty() && jour(older) > day) {
    return editor_.refuser("La date d'effet doit être postérieure à celles déjà saisies.",
                           prise_.Txt_DateRembOrgChg);
  }
  return true;
}

// The zones become the row's values; a rate left out is a blank until the page is written.
void RateEditor::poser(int row) {
  store::DynamicArray& rates = record();
  const ListEditor::Row typed = editor_.saisie();
  for (std::size_t i = 0; i < kColonnes.size(); ++i) {
    const int attribute = kColonnes[i].attribute;
    std::string value = valeurSaisie(kColonnes[i], rates.get(attribute, row + 1), typed[i]);
    if (value.empty()) value = " ";
    rates.set(attribute, row + 1, value);
  }
}

// --- Cancelling and deleting

void RateEditor::Cmd_AnnulerTaux_Click() {
  if (!editor_.abandonConfirme()) return;
  if (editor_.enAjout()) --context_.session.taux.W_DerTauxModif;
  AfficherZonesTaux();
}

void RateEditor::Cmd_SuppTaux_Click() {
  const int row = editor_.editee();
  if (row < 0) {
    AfficherZonesTaux();
    return;
  }
  if (!editor_.suppressionConfirmee()) return;
  for (const Colonne& column : kColonnes) record().Delete(column.attribute, row + 1);
  AfficherZonesTaux();
  editor_.retirer(row);
  screen::EtatTaux& state = context_.session.taux;
  if (state.W_DerTauxModif > 0) {
    --state.W_DerTauxModif;
  } else {
    state.W_TauxModifSupp = true;
  }
}

void RateEditor::AjoutLists(std::int16_t& indice) {
  if (text::trim(prise_.Txt_DateRembOrgChg.text()).empty()) {
    throw std::invalid_argument("a rate needs its date");
  }
  ListEditor::Row row = editor_.saisie();
  for (std::size_t i = 1; i < row.size(); ++i) row[i] = store::reformatted(row[i]);
  editor_.inserer(indice, row);
}

void RateEditor::EffaceEltLists() {
  const int row = editor_.ligneChoisie();
  if (row >= 0) editor_.retirer(row);
}

// --- Typing

void RateEditor::Txt_DateRembOrgChg_KeyPress(char32_t& key) { filtrerDate(key); }

void RateEditor::Txt_DateRembOrgChg_LostFocus() {
  toolkit::TextBox& zone = prise_.Txt_DateRembOrgChg;
  if (zone.text().empty() || editor_.renonce()) return;
  const std::string completed = store::completeDate(zone.text(), context_.desktop.today().year);
  if (completed.empty()) {
    editor_.refuser(kDateIllisible, zone);
    return;
  }
  zone.setText(completed);
}

store::DynamicArray& RateEditor::record() { return context_.session.RecOrgChg->fields(); }

}  // namespace pages
