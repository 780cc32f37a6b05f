#include "pages/Ong5.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "pages/BillingPeriod.h"
#include "pages/FixedList.h"
#include "pages/MovedLines.h"
#include "screen/Messages.h"
#include "store/Amounts.h"
#include "store/CodeTable.h"
#include "store/Layouts.h"
#include "store/Request.h"

namespace pages {

namespace attribut = store::orgprisecharge;

namespace {

using Types = std::array<std::pair<std::string_view, toolkit::OptionButton*>, 3>;

Types types(screen::Bordereau& page) {
  return {{{"I", &page.Opt_IndBordOrgChg},
           {"R", &page.Opt_RecapBordOrgChg},
           {"M", &page.Opt_MFPBordOrgChg}}};
}

// Empty identifiers before the first are not shown: an empty first line would count as an empty
// list.
std::string_view depuisLePremier(std::string_view attribute) {
  attribute.remove_prefix(
      std::min(attribute.find_first_not_of(store::kValueMark), attribute.size()));
  return attribute;
}

// The sort parameters are kept in the record by their places in the list, from 1.
void numeroter(toolkit::ListBox& list) {
  std::vector<toolkit::ListItem> lines = list.items().all();
  long place = 0;
  for (toolkit::ListItem& line : lines) line.data = ++place;
  list.setItems(std::move(lines));
}

}  // namespace

Ong5::Ong5(PageContext context)
    : Onglet(context, &screen::EditSession::ErreurOng5), page_(context.screen.bordereau) {
  numeroter(page_.Lst_ParamTriPos);
}

void Ong5::lier(const screen::Handlers& handlers) {
  const auto ajouter = handlers.on(*this, &Ong5::Lst_ParamPossOrgChg_DblClick);
  const auto retirer = handlers.on(*this, &Ong5::Lst_ParamSelecOrgChg_DblClick);
  page_.Lst_ParamPossOrgChg.onDblClick = ajouter;
  page_.Cmd_DroiteBord.onClick = ajouter;
  page_.Lst_ParamSelecOrgChg.onDblClick = retirer;
  page_.Cmd_GaucheBord.onClick = retirer;
  page_.Cmd_HautBord.onClick = handlers.on(*this, &Ong5::Cmd_HautBord_Click);
  page_.Cmd_BasBord.onClick = handlers.on(*this, &Ong5::Cmd_BasBord_Click);
  page_.Bdh_NbExemp.onChange = handlers.on(*this, &Ong5::Bdh_NbExemp_Change);
  toolkit::TextBox& copies = page_.Txt_NbExEmplOrgChg;
  copies.onKeyPress = handlers.key(*this, &Ong5::Txt_NbExEmplOrgChg_KeyPress);
  copies.onChange = handlers.on(*this, &Ong5::Txt_NbExEmplOrgChg_Change);
  copies.onLostFocus = handlers.on(*this, &Ong5::Txt_NbExEmplOrgChg_LostFocus);
  page_.Lst_ParamTriPos.onClick = handlers.on(*this, &Ong5::Lst_ParamTriPos_Click);
  page_.Lst_ParamTriSelect.onClick = handlers.on(*this, &Ong5::Lst_ParamTriSelect_Click);
  const auto ajouterTri = handlers.on(*this, &Ong5::Passage_A_Droite_Tri);
  const auto retirerTri = handlers.on(*this, &Ong5::Passage_A_Gauche_Tri);
  page_.Lst_ParamTriPos.onDblClick = ajouterTri;
  page_.Cmd_DroiteTri.onClick = ajouterTri;
  page_.Lst_ParamTriSelect.onDblClick = retirerTri;
  page_.Cmd_GaucheTri.onClick = retirerTri;
}

void Ong5::Remplir_ParamsPoss() {
  page_.Lst_ParamPossOrgChg.clear();
  page_.Lst_LongParam.clear();
  const store::DynamicArray answer =
      store::select(*context_.session.TheDatabase, "SSELECT PARAMBORDORGCHG PAR 1",
                    store::parambordorgchg::kFile, "0 1 2");
  if (!store::anySelected(answer)) return;
  std::vector<toolkit::ListItem> parameters;
  std::vector<toolkit::ListItem> widths;
  for (int i = 1; i <= answer.DCount(); ++i) {
    parameters.push_back({std::string(answer.get(i, 2)), numero(answer.get(i, 1))});
    widths.push_back({std::string(answer.get(i, 3)), 0});
  }
  page_.Lst_ParamPossOrgChg.setItems(std::move(parameters));
  page_.Lst_LongParam.setItems(std::move(widths));
}

// --- Identifiers

// "07" and "7" are two.
long Ong5::numero(std::string_view identifiant) {
  const long known = numeroConnu(identifiant);
  if (known != 0 || identifiant.empty()) return known;
  autresIdentifiants_.emplace_back(identifiant);
  return -static_cast<long>(autresIdentifiants_.size());
}

// 0 for none.
long Ong5::numeroConnu(std::string_view identifiant) const {
  if (identifiant.empty()) return 0;
  const long number = store::wholeNumber(identifiant);
  if (number > 0 && std::to_string(number) == identifiant) return number;
  const auto place = std::find(autresIdentifiants_.begin(), autresIdentifiants_.end(), identifiant);
  if (place == autresIdentifiants_.end()) return 0;
  return -1 - static_cast<long>(place - autresIdentifiants_.begin());
}

// A line without a number is its own identifier.
std::string Ong5::identifiant(const toolkit::ListItem& line) const {
  if (line.data > 0) return std::to_string(line.data);
  if (line.data < 0) return autresIdentifiants_.at(static_cast<std::size_t>(-1 - line.data));
  return line.text;
}

// As one attribute.
std::string Ong5::identifiants(const toolkit::ListBox& list) const {
  std::string values;
  bool first = true;
  for (const toolkit::ListItem& line : list.items().all()) {
    if (!std::exchange(first, false)) values += store::kValueMark;
    values += identifiant(line);
  }
  return values;
}

// Lines for identifiers, labelled as in the list of what is possible. One that is not possible any
// more is shown as it stands, so that the user sees it and can remove it.
std::vector<toolkit::ListItem> Ong5::lignes(const toolkit::ListBox& possible,
                                            std::string_view attribute) const {
  const std::vector<toolkit::ListItem>& all = possible.items().all();
  std::vector<toolkit::ListItem> lines;
  if (attribute.empty()) return lines;
  const auto marks = std::count(attribute.begin(), attribute.end(), store::kValueMark);
  lines.reserve(static_cast<std::size_t>(marks) + 1);
  for (auto i = marks; i >= 0; --i) {
    const std::string_view wanted = store::takeValue(attribute);
    const long number = numeroConnu(wanted);
    const auto found = std::find_if(all.begin(), all.end(), [&](const toolkit::ListItem& line) {
      return line.data != 0 && line.data == number;
    });
    lines.push_back(found == all.end() ? toolkit::ListItem{std::string(wanted), 0} : *found);
  }
  return lines;
}

// --- Showing

void Ong5::Afficher_Ong5() {
  const screen::Quiet quiet(context_.session);
  commencer();
  const store::DynamicArray& record = context_.session.RecOrgChg->fields();
  montrerParametres(record);
  for (const auto& [code, option] : types(page_)) {
    option->setValue(record.get(attribut::TypeBordOrgChg) == code);
  }
  montrerExemplaires(record.get(attribut::NbExemplOrgChg));
  page_.Txt_CodeThesaurus.renewText(record.get(attribut::CodeThesaurus));
  thesaurus_.keep(record.get(attribut::CodeThesaurus), page_.Txt_CodeThesaurus.text());
  page_.Txt_IdentMagnetOrgChg.renewText(record.get(attribut::IdentMagnetOrgChg));
  identification_.keep(record.get(attribut::IdentMagnetOrgChg), page_.Txt_IdentMagnetOrgChg.text());
  montrerTri(record);
}

void Ong5::montrerParametres(const store::DynamicArray& record) {
  const std::string_view attribute = record.get(attribut::ParamSelecOrgChg);
  const std::string_view shown = depuisLePremier(attribute);
  page_.Lst_ParamSelecOrgChg.setItems(lignes(page_.Lst_ParamPossOrgChg, shown));
  parametres_.keep(attribute, shown);
  ouvrirOrdre();
  Afficher_NbCarSelect();
}

void Ong5::montrerTri(const store::DynamicArray& record) {
  const std::string_view attribute = record.get(attribut::ParamTriSelect);
  const std::string_view shown = depuisLePremier(attribute);
  page_.Lst_ParamTriSelect.setItems(lignes(page_.Lst_ParamTriPos, shown));
  tri_.keep(attribute, shown);
}

// What the scroll bar cannot show stands in the field as it is; none is shown as one copy.
void Ong5::montrerExemplaires(std::string_view attribute) {
  const std::string_view shown = attribute.empty() ? "1" : attribute;
  page_.Txt_NbExEmplOrgChg.setText(shown);
  exemplaires_.keep(attribute, page_.Txt_NbExEmplOrgChg.text());
  horsBarre_ = !barrePeutMontrer(store::wholeNumber(shown));
  const long copies =
      std::clamp(store::wholeNumber(shown), static_cast<long>(page_.Bdh_NbExemp.min()),
                 static_cast<long>(page_.Bdh_NbExemp.max()));
  page_.Bdh_NbExemp.resetValue(static_cast<int>(copies));
}

// What a record need not say anything of.
void Ong5::commencer() {
  page_.Lst_ParamPossOrgChg.selectNone();
  page_.Lst_ParamTriPos.selectNone();
  page_.Txt_NbExEmplOrgChg.setText("1");
  page_.Cmd_DroiteTri.setEnabled(false);
  page_.Cmd_GaucheTri.setEnabled(false);
}

void Ong5::vider() {
  const screen::Quiet quiet(context_.session);
  const store::DynamicArray nothing;
  commencer();
  montrerParametres(nothing);
  for (const auto& [code, option] : types(page_)) option->setValue(false);
  montrerExemplaires("1");
  page_.Txt_CodeThesaurus.setText("");
  thesaurus_.keep("", "");
  page_.Txt_IdentMagnetOrgChg.setText("");
  identification_.keep("", "");
  montrerTri(nothing);
}

// --- Writing

void Ong5::Ecrire_Ong5() {
  context_.session.ErreurOng5 = false;
  if (context_.session.modeVerif && !Verif_Ong5()) return;
  store::DynamicArray& record = context_.session.RecOrgChg->fields();
  ecrireReglesDeGestion(record);
  for (const auto& [code, option] : types(page_)) {
    if (option->value()) ecrireAttribut(record, attribut::TypeBordOrgChg, code);
  }
  ecrireAttribut(record, attribut::NbExemplOrgChg, exemplaires());
  ecrireAttribut(record, attribut::IdentMagnetOrgChg,
                 identification_.written(page_.Txt_IdentMagnetOrgChg.text()));
  ecrireAttribut(record, attribut::CodeThesaurus,
                 thesaurus_.written(page_.Txt_CodeThesaurus.text()));
  ecrireAttribut(record, attribut::ParamSelecOrgChg,
                 parametres_.written(identifiants(page_.Lst_ParamSelecOrgChg)));
  ecrireAttribut(record, attribut::ParamTriSelect,
                 tri_.written(identifiants(page_.Lst_ParamTriSelect)));
}

// A code that its table does not hold is shown by no text; it stays until another is chosen, or the
// user empties the field.
void Ong5::ecrireReglesDeGestion(store::DynamicArray& record) {
  const screen::Regles& regles = context_.screen.regles;
  const int periode = regles.Cbo_PeriodFactOrgChg.items().find(regles.Cbo_PeriodFactOrgChg.text());
  if (periode >= 0 && static_cast<std::size_t>(periode) < kPeriodesFact.size()) {
    ecrireAttribut(record, attribut::PeriodFactOrgChg,
                   kPeriodesFact[static_cast<std::size_t>(periode)]);
  }
  const store::DynamicArray& table = context_.session.statOrgChg->fields();
  const std::string& label = regles.Cbo_StatsOrgChg.text();
  const bool emptied = label.empty() && context_.session.statistiqueVidee;
  const bool chosen = !label.empty() && ExisteDansListe(regles.Cbo_StatsOrgChg) &&
                      label != store::labelOfCode(table, record.get(attribut::StatsOrgChg));
  if (emptied || chosen) {
    ecrireAttribut(record, attribut::StatsOrgChg, store::codeOfLabel(table, label));
  }
  ecrireAttribut(record, attribut::DemAccordOrgChg, regles.Cac_DemAccordOrgChg.value() ? "1" : "0");
}

// --- Checking

bool Ong5::Verif_Ong5() {
  context_.session.ErreurOng5 = false;
  const screen::Regles& regles = context_.screen.regles;
  if (page_.Lst_ParamSelecOrgChg.list(0).empty()) {
    return refuser("Au moins un paramètre pour l'édition du bordereau doit être sélectionné.",
                   screen::kBordereau, page_.Lst_ParamPossOrgChg);
  }
  if (page_.Opt_MFPBordOrgChg.value() && !regles.Opt_TypePrincipalOrgChg.value()) {
    return refuser("Le type d'organisme doit être obligatoirement principal.", screen::kRegles,
                   context_.screen.regles.Opt_TypePrincipalOrgChg);
  }
  Long_ListeParam();
  if (context_.session.longueurParams > kLargeurBordereau) {
    return refuser("La taille cumulée des paramètres sélectionnés est de " +
                       std::to_string(context_.session.longueurParams) +
                       " caractères alors que la largeur de la page ne peut être supérieure à " +
                       "130",
                   screen::kBordereau, page_.Lst_ParamSelecOrgChg);
  }
  return true;
}

// --- Columns of the slip

void Ong5::Lst_ParamPossOrgChg_DblClick() {
  if (!screen::droitsComplets(context_.session) || !page_.Lst_ParamPossOrgChg.enabled()) return;
  ajouterSelection(page_.Lst_ParamPossOrgChg, page_.Lst_ParamSelecOrgChg);
  page_.Cmd_HautBord.setEnabled(true);
  page_.Cmd_BasBord.setEnabled(true);
  Afficher_NbCarSelect();
}

void Ong5::Lst_ParamSelecOrgChg_DblClick() {
  if (!screen::droitsComplets(context_.session)) return;
  retirerSelection(page_.Lst_ParamSelecOrgChg);
  Afficher_NbCarSelect();
  ouvrirOrdre();
}

void Ong5::ouvrirOrdre() {
  const bool several = page_.Lst_ParamSelecOrgChg.listCount() > 1;
  page_.Cmd_HautBord.setEnabled(several);
  page_.Cmd_BasBord.setEnabled(several);
}

void Ong5::Cmd_HautBord_Click() { deplacer(-1); }

void Ong5::Cmd_BasBord_Click() { deplacer(1); }

// The highlighted line changes place with its neighbour, stays highlighted and in view, and takes
// the focus rectangle. Of several the one clicked last is meant, if it is highlighted still, else
// the first.
void Ong5::deplacer(int step) {
  if (!screen::droitsComplets(context_.session)) return;
  toolkit::ListBox& list = page_.Lst_ParamSelecOrgChg;
  if (list.selectedCount() == 0) return;
  const int line =
      list.selected(list.listIndex()) ? list.listIndex() : list.selectedLines().front();
  const int other = line + step;
  if (other < 0 || other >= list.listCount()) return;
  list.moveItem(line, other);
  list.setListIndex(other);
  list.bringIntoView(other);
}

void Ong5::Long_ListeParam() {
  using Kept = std::numeric_limits<std::int16_t>;
  std::int64_t total = 0;
  for (const toolkit::ListItem& line : page_.Lst_ParamSelecOrgChg.items().all()) {
    if (line.text.empty()) continue;
    const int possible = page_.Lst_ParamPossOrgChg.items().find(line.text);
    if (possible >= 0) total += store::wholeNumber(page_.Lst_LongParam.list(possible));
  }
  context_.session.longueurParams =
      static_cast<std::int16_t>(std::clamp<std::int64_t>(total, Kept::min(), Kept::max()));
}

void Ong5::Afficher_NbCarSelect() {
  Long_ListeParam();
  const int total = context_.session.longueurParams;
  const bool tropLarge = total > kLargeurBordereau;
  page_.Etq_NbCarSelect.setColor(tropLarge ? toolkit::kRed : toolkit::kBlack);
  page_.Etq_NbCarSelect.setRemark(tropLarge ? "le bordereau est trop large" : "");
  page_.Etq_NbCarSelect.setCaption(
      total < 1 ? "" : std::to_string(total) + "/" + std::to_string(kLargeurBordereau));
}

// --- Sorting

void Ong5::Passage_A_Droite_Tri() {
  if (!screen::droitsComplets(context_.session)) return;
  ajouterSelection(page_.Lst_ParamTriPos, page_.Lst_ParamTriSelect);
}

void Ong5::Passage_A_Gauche_Tri() {
  if (!screen::droitsComplets(context_.session)) return;
  retirerSelection(page_.Lst_ParamTriSelect);
}

void Ong5::Lst_ParamTriPos_Click() { page_.Cmd_DroiteTri.setEnabled(true); }

void Ong5::Lst_ParamTriSelect_Click() { page_.Cmd_GaucheTri.setEnabled(true); }

// --- Copies: the scroll bar and the digit beside it say the same.

bool Ong5::barrePeutMontrer(long copies) const {
  return copies >= page_.Bdh_NbExemp.min() && copies <= page_.Bdh_NbExemp.max();
}

void Ong5::Bdh_NbExemp_Change() {
  const screen::Quiet quiet(context_.session);
  horsBarre_ = false;
  page_.Txt_NbExEmplOrgChg.setText(std::to_string(page_.Bdh_NbExemp.value()));
}

void Ong5::Txt_NbExEmplOrgChg_KeyPress(char32_t& key) {
  const bool digit = key >= U'1' && key <= U'9';
  if (!digit && key >= U' ') key = 0;
}

void Ong5::Txt_NbExEmplOrgChg_Change() {
  const long copies = store::wholeNumber(page_.Txt_NbExEmplOrgChg.text());
  if (barrePeutMontrer(copies)) page_.Bdh_NbExemp.resetValue(static_cast<int>(copies));
}

// What is no number of copies gives way to the scroll bar's, or to the stored one that the scroll
// bar cannot show.
void Ong5::Txt_NbExEmplOrgChg_LostFocus() {
  if (exemplairesInchanges()) {
    const screen::Quiet quiet(context_.session);
    montrerExemplaires(std::string(exemplaires_.attribute()));
  } else {
    Bdh_NbExemp_Change();
  }
}

// As the attribute holds it.
std::string Ong5::exemplaires() const {
  return exemplairesInchanges() ? exemplaires_.attribute()
                                : std::to_string(page_.Bdh_NbExemp.value());
}

// Does the field hold what it was shown from, or nothing that could take its place?
bool Ong5::exemplairesInchanges() const {
  const std::string& text = page_.Txt_NbExEmplOrgChg.text();
  return exemplaires_.stands(text) || (horsBarre_ && !barrePeutMontrer(store::wholeNumber(text)));
}

}  // namespace pages
