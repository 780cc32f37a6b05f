#include "pages/ScaleEditor.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "pages/Columns.h"
#include "pages/ShownAttribute.h"
#include "screen/StoreTrap.h"
#include "store/Amounts.h"
#include "store/Layouts.h"
#include "text/Utf8.h"

namespace pages {

namespace attribut = store::orgprisecharge;

namespace {

enum Rang : std::size_t { kDebSeul, kFinSeul, kDebMenage, kFinMenage, kPrecedent, kEnCours };

constexpr std::array<Colonne, 6> kColonnes{{
    {attribut::DebRevSeulOrgChg, kCentiemes, ""},
    {attribut::FinRevSeulOrgChg, kCentiemes, ""},
    {attribut::DebRevMenOrgChg, kCentiemes, ""},
    {attribut::FinRevMenOrgChg, kCentiemes, ""},
    {attribut::BaremPrecOrgChg, kCentiemes, ""},
    {attribut::BaremCoursOrgChg, kCentiemes, "0"},
}};

ListEditor::Parts parts(screen::Participation& page) {
  ListEditor::Parts parts;
  parts.onglet = screen::kParticipation;
  parts.listes = {&page.Lst_DebRevSeulOrgChg, &page.Lst_FinRevSeulOrgChg,
                  &page.Lst_DebRevMenOrgChg,  &page.Lst_FinRevMenOrgChg,
                  &page.Lst_BaremPrecOrgChg,  &page.Lst_BaremCoursOrgChg};
  parts.zones = {&page.Txt_DebRevSeulOrgChg,
                 &page.Txt_FinRevSeulOrgChg,
                 &page.Txt_DebRevMenOrgChg,
                 &page.Txt_FinRevMenOrgChg,
                 nullptr,
                 &page.Txt_BaremCoursOrgChg};
  parts.barre = &page.Bdv_Bareme;
  parts.elargis = {&page.Lst_BaremCoursOrgChg, &page.Txt_BaremCoursOrgChg};
  parts.ajouter = &page.Cmd_AjoutPart;
  parts.ok = &page.Cmd_OKPart;
  parts.annuler = &page.Cmd_AnnulerPart;
  parts.supprimer = &page.Cmd_SuppPart;
  parts.verrouilles = {&page.Cdr_Bareme, &page.Cdr_GestionParticipBenef, &page.Cac_Abonnement,
                       &page.Txt_DatBaremCours, &page.Cmd_NouveauBareme};
  parts.preteurs = {&page.Etq_PersSeule, &page.Cmd_NouveauBareme};
  return parts;
}

std::array<toolkit::ListBox*, 5> fermesParUnNouveauBareme(screen::Participation& page) {
  return {&page.Lst_DebRevSeulOrgChg, &page.Lst_FinRevSeulOrgChg, &page.Lst_DebRevMenOrgChg,
          &page.Lst_FinRevMenOrgChg, &page.Lst_BaremPrecOrgChg};
}

// Does a bracket start below its end? What is no number counts as 0.
bool croissante(std::string_view start, std::string_view end) {
  return store::hundredths(start).value_or(0) < store::hundredths(end).value_or(0);
}

// What a zone shows in its row: a blank counts as 0, as it does in the comparisons.
std::string cellule(const std::string& typed) {
  if (text::trim(typed).empty()) return store::twoDecimals(0);
  std::string shown = store::reformatted(typed);
  return shown.empty() ? typed : shown;
}

int rupture(const toolkit::ListBox& starts, const toolkit::ListBox& ends) {
  for (int row = 1; row < starts.listCount(); ++row) {
    if (starts.list(row) != ends.list(row - 1)) return row;
  }
  return -1;
}

}  // namespace

ScaleEditor::ScaleEditor(PageContext context)
    : context_(context),
      page_(context.screen.participation),
      editor_(context, parts(context.screen.participation)) {}

void ScaleEditor::lier(const screen::Handlers& handlers) {
  editor_.lier(handlers, "DoubleClickPart", [this] { modifier(); });
  page_.Cmd_AjoutPart.onClick = handlers.on(*this, &ScaleEditor::Cmd_AjoutPart_Click);
  page_.Cmd_OKPart.onClick = handlers.on(*this, &ScaleEditor::Cmd_OKPart_Click);
  page_.Cmd_AnnulerPart.onClick = handlers.on(*this, &ScaleEditor::Cmd_AnnulerPart_Click);
  page_.Cmd_SuppPart.onClick = handlers.on(*this, &ScaleEditor::Cmd_SuppPart_Click);
  editor_.lierNombres(handlers, 0);
}

// --- Showing and writing

void ScaleEditor::afficher(const store::DynamicArray& record) {
  int count = 0;
  for (const Colonne& column : kColonnes) count = std::max(count, record.DCount(column.attribute));
  colonnes_.montrer(editor_, record, kColonnes, count);
  lignes_.reset();
  existait_ = count > 0;
  premier_ = false;
}

// Rows may have moved since they were shown: each brings its own values.
void ScaleEditor::ecrire(store::DynamicArray& record) {
  for (std::size_t column = 0; column < kColonnes.size(); ++column) {
    if (colonnes_.inchangee(editor_, record, column, editor_.lignes())) continue;
    std::string written;
    written.reserve(record.get(kColonnes[column].attribute).size());
    int row = 0;
    for (const Ligne& ligne : lignes()) {
      if (row > 0) written += store::kValueMark;
      ajouterValeur(written, kColonnes[column], ligne.valeurs[column],
                    editor_.texte(row++, column));
    }
    ecrireAttribut(record, kColonnes[column].attribute, written);
  }
}

std::vector<ScaleEditor::Ligne>& ScaleEditor::lignes() {
  if (lignes_) return *lignes_;
  lignes_.emplace(static_cast<std::size_t>(colonnes_.lignes()));
  for (std::size_t column = 0; column < kColonnes.size() && !lignes_->empty(); ++column) {
    std::string_view left = colonnes_.attribut(column);
    for (Ligne& ligne : *lignes_) ligne.valeurs[column] = store::takeValue(left);
  }
  return *lignes_;
}

void ScaleEditor::fermer() {
  editor_.fermer();
  for (toolkit::ListBox* list : fermesParUnNouveauBareme(page_)) list->setEnabled(true);
  page_.Lst_BaremCoursOrgChg.setEnabled(true);
}

void ScaleEditor::vider() {
  fermer();
  editor_.remplir({});
  lignes_.emplace();
  existait_ = false;
}

void ScaleEditor::TriBareme() {
  const std::vector<ListEditor::Row> before = editor_.toutes();
  std::vector<long long> starts;
  starts.reserve(before.size());
  for (const ListEditor::Row& row : before) {
    starts.push_back(store::hundredths(row[kDebSeul]).value_or(0));
  }
  const std::vector<int> order = ordreCroissant(starts);
  std::vector<ListEditor::Row> rows;
  std::vector<Ligne> sorted;
  for (const int number : order) {
    const auto row = static_cast<std::size_t>(number - 1);
    rows.push_back(before[row]);
    sorted.push_back(lignes()[row]);
  }
  lignes_ = std::move(sorted);
  editor_.ordonner(order);
  editor_.remplir(std::move(rows));
}

// --- A new scale

ScaleEditor::Copie ScaleEditor::commencerBareme() {
  Copie copie{editor_.toutes(), lignes(), premier_};
  if (existait_) {
    std::vector<ListEditor::Row> rows = copie.rows;
    for (ListEditor::Row& row : rows) row[kPrecedent] = row[kEnCours];
    for (Ligne& ligne : lignes()) ligne.valeurs[kPrecedent] = ligne.valeurs[kEnCours];
    editor_.remplir(std::move(rows));
  }
  for (toolkit::ListBox* list : fermesParUnNouveauBareme(page_)) list->setEnabled(false);
  return copie;
}

void ScaleEditor::annulerBareme(const Copie& copie) {
  editor_.remplir(copie.rows);
  lignes_ = copie.lignes;
  premier_ = copie.premier;
}

void ScaleEditor::completer() {
  toolkit::ListBox& current = page_.Lst_BaremCoursOrgChg;
  for (int row = 0; row < current.listCount(); ++row) {
    if (current.list(row).empty()) current.replaceItem(row, store::twoDecimals(0));
  }
}

int ScaleEditor::ruptureSeul() const {
  return rupture(page_.Lst_DebRevSeulOrgChg, page_.Lst_FinRevSeulOrgChg);
}

int ScaleEditor::ruptureMenage() const {
  return rupture(page_.Lst_DebRevMenOrgChg, page_.Lst_FinRevMenOrgChg);
}

void ScaleEditor::ouvrirAjout() {
  const screen::EditSession& session = context_.session;
  premier_ = premier_ || editor_.lignes() == 0;
  page_.Cmd_AjoutPart.setEnabled(session.EnCreation || session.NouveauBareme || premier_);
}

// --- One row

void ScaleEditor::Cmd_AjoutPart_Click() {
  if (editor_.ouvrir(-1)) page_.Txt_DebRevSeulOrgChg.setFocus();
}

// Under a new scale the brackets of the rows that stood before stay as they are.
bool ScaleEditor::tranchesFermees(int row) {
  return context_.session.NouveauBareme && !lignes()[static_cast<std::size_t>(row)].ajoutee;
}

void ScaleEditor::modifier() {
  const int row = editor_.ligneChoisie();
  if (row < 0 || !screen::droitsComplets(context_.session)) return;
  const ListEditor::Row shown = editor_.ligne(row);
  if (!editor_.ouvrir(row)) return;
  editor_.proposer(shown);
  if (!tranchesFermees(row)) {
    page_.Txt_DebRevSeulOrgChg.setFocus();
    return;
  }
  for (toolkit::TextBox* zone : {&page_.Txt_DebRevSeulOrgChg, &page_.Txt_FinRevSeulOrgChg,
                                 &page_.Txt_DebRevMenOrgChg, &page_.Txt_FinRevMenOrgChg}) {
    zone->setEnabled(false);
  }
  page_.Txt_BaremCoursOrgChg.setFocus();
}

void ScaleEditor::Cmd_OKPart_Click() {
  screen::quietly(context_.session, "Cmd_OKPart_Click", [this] {
    if (!editor_.nombresLisibles() || !saisieAcceptee()) return;
    std::vector<ListEditor::Row> rows = editor_.toutes();
    if (editor_.enAjout()) {
      rows.emplace_back(kColonnes.size());
      lignes().push_back({{}, context_.session.NouveauBareme});
    }
    ListEditor::Row& row =
        editor_.enAjout() ? rows.back() : rows[static_cast<std::size_t>(editor_.editee())];
    const ListEditor::Row typed = editor_.saisie();
    for (const std::size_t column : {kDebSeul, kFinSeul, kDebMenage, kFinMenage, kEnCours}) {
      row[column] = cellule(typed[column]);
    }
    editor_.remplir(std::move(rows));
    TriBareme();
    editor_.quitterConfirmee();
    ouvrirAjout();
  });
}

// An end that has not been typed yet is no end that comes too early.
bool ScaleEditor::saisieAcceptee() {
  const std::string& startSingle = page_.Txt_DebRevSeulOrgChg.text();
  const std::string& endSingle = page_.Txt_FinRevSeulOrgChg.text();
  const std::string& startHousehold = page_.Txt_DebRevMenOrgChg.text();
  const std::string& endHousehold = page_.Txt_FinRevMenOrgChg.text();
  if (startSingle.empty()) {
    return editor_.refuser("Le barème de début pour personne seule est obligatoire.",
                           page_.Txt_DebRevSeulOrgChg);
  }
  if (endSingle.empty()) {
    return editor_.refuser("Le barème de fin pour personne seule est obligatoire.",
                           page_.Txt_FinRevSeulOrgChg);
  }
  if (startHousehold.empty()) {
    return editor_.refuser("Le barème de début pour ménage est obligatoire.",
                           page_.Txt_DebRevMenOrgChg);
  }
  if (!croissante(startSingle, endSingle)) {
    return editor_.refuser(
        "La tranche de début de revenus pour personne seule doit être inférieure à la tranche de "
        "fin.",
        page_.Txt_DebRevSeulOrgChg);
  }
  if (!endHousehold.empty() && !croissante(startHousehold, endHousehold)) {
    return editor_.refuser(
        "La tranche de début de revenus pour ménage doit être inférieure à la tranche de fin.",
        page_.Txt_DebRevMenOrgChg);
  }
  if (endHousehold.empty()) {
    return editor_.refuser("Le barème de fin pour ménage est obligatoire.",
                           page_.Txt_FinRevMenOrgChg);
  }
  if (page_.Txt_BaremCoursOrgChg.text().empty()) {
    return editor_.refuser("Le montant du barème en cours est obligatoire.",
                           page_.Txt_BaremCoursOrgChg);
  }
  return true;
}

void ScaleEditor::Cmd_AnnulerPart_Click() {
  if (!editor_.abandonConfirme()) return;
  AfficherZonesBareme();
}

void ScaleEditor::Cmd_SuppPart_Click() {
  const int row = editor_.editee();
  if (row >= 0 && !editor_.suppressionConfirmee()) return;
  if (row >= 0 && row < editor_.lignes()) {
    editor_.retirer(row);
    lignes().erase(lignes().begin() + row);
  }
  AfficherZonesBareme();
}

void ScaleEditor::AfficherZonesBareme() {
  const bool open = editor_.ouvert();
  editor_.fermer();
  ouvrirAjout();
  if (open) page_.Cmd_AjoutPart.setFocus();
}

}  // namespace pages
