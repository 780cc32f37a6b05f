#include "pages/ListEditor.h"

#include <algorithm>

#include "pages/NumberZone.h"
#include "screen/Messages.h"
#include "screen/StoreTrap.h"
#include "store/Amounts.h"
#include "toolkit/Keys.h"

namespace pages {
namespace {

constexpr int kDerniereSansBarre = 11;
constexpr int kLargeurEtroite = 975;  // twips
constexpr int kLargeurElargie = 1215;

void elargir(toolkit::Control& control, int width) {
  toolkit::Place place = control.place();
  place.width = width;
  control.setPlace(place);
}

}  // namespace

ListEditor::ListEditor(PageContext context, Parts parts)
    : context_(context),
      parts_(std::move(parts)),
      lettres_(*parts_.ok, *parts_.annuler, *parts_.supprimer, parts_.preteurs) {
  fermer();
  dimensionner();
}

void ListEditor::lier(const screen::Handlers& handlers, std::string_view procedure,
                      const std::function<void()>& doubleClick) {
  const auto onDblClick =
      handlers.on([=, this] { screen::quietly(context_.session, procedure, doubleClick); });
  for (std::size_t i = 0; i < parts_.listes.size(); ++i) {
    parts_.listes[i]->onClick = handlers.on([this, i] { suivre(i); });
    parts_.listes[i]->onScroll = handlers.on([this, i] { defiler(parts_.listes[i]->topIndex()); });
    parts_.listes[i]->onDblClick = onDblClick;
  }
  parts_.barre->onChange = handlers.on([this] { choisir(parts_.barre->value()); });
}

void ListEditor::lierNombres(const screen::Handlers& handlers, std::size_t column) {
  for (; column < parts_.zones.size(); ++column) {
    toolkit::TextBox* zone = parts_.zones[column];
    if (!zone) continue;
    nombres_.push_back(column);
    lierZoneDeNombre(handlers, *zone, [this, column, zone] {
      if (illisible(column) && !renonce()) zone->setFocus();
    });
  }
  parts_.zones.back()->onKeyPress = handlers.key(*this, &ListEditor::derniereZoneKeyPress);
}

void ListEditor::derniereZoneKeyPress(char32_t& key) {
  if (key == toolkit::kEnter) valider();
  key = store::decimalKey(key);
}

// The zone is left as by a click: what it holds may be refused.
void ListEditor::valider() {
  parts_.ok->setFocus();
  if (parts_.ok->hasFocus()) parts_.ok->onClick();
}

// The next list first, then the scroll bar: the ring comes to rest where all select the same row.
void ListEditor::suivre(std::size_t list) {
  const int line = parts_.listes[list]->listIndex();
  if (line < 0) return;
  const std::size_t next = (list + 1) % parts_.listes.size();
  if (line < parts_.listes[next]->listCount()) parts_.listes[next]->setListIndex(line);
  if (next != 0) return;
  const int before = parts_.listes[list == 0 ? 0 : list - 1]->listIndex();
  if (before >= 0 && before <= parts_.barre->max()) parts_.barre->setValue(before);
}

void ListEditor::defiler(int line) {
  for (toolkit::ListBox* list : parts_.listes) list->setTopIndex(line);
}

void ListEditor::choisir(int line) {
  for (toolkit::ListBox* list : parts_.listes) {
    if (line < list->listCount()) list->setListIndex(line);
  }
}

int ListEditor::lignes() const { return parts_.listes.front()->listCount(); }

int ListEditor::ligneChoisie() const { return parts_.listes.front()->listIndex(); }

ListEditor::Row ListEditor::ligne(int line) const {
  Row row;
  for (const toolkit::ListBox* list : parts_.listes) row.push_back(list->list(line));
  return row;
}

void ListEditor::remplir(std::vector<Row> rows) {
  std::vector<Lines> lists(parts_.listes.size());
  for (std::size_t column = 0; column < lists.size(); ++column) {
    lists[column].reserve(rows.size());
    for (Row& row : rows) lists[column].push_back({std::move(row[column]), 0});
  }
  remplirListes(std::move(lists));
}

void ListEditor::remplirListes(std::vector<Lines> lists) {
  for (std::size_t column = 0; column < lists.size(); ++column) {
    parts_.listes[column]->setItems(std::move(lists[column]));
  }
  dimensionner();
  parts_.barre->resetValue(parts_.barre->min());
}

std::vector<ListEditor::Row> ListEditor::toutes() const {
  std::vector<Row> rows;
  rows.reserve(static_cast<std::size_t>(lignes()));
  for (int line = 0; line < lignes(); ++line) rows.push_back(ligne(line));
  return rows;
}

std::vector<std::string_view> ListEditor::colonne(std::size_t column, int count) const {
  std::vector<std::string_view> texts;
  texts.reserve(static_cast<std::size_t>(count));
  for (int line = 0; line < std::min(count, lignes()); ++line) {
    texts.push_back(parts_.listes[column]->list(line));
  }
  return texts;
}

int ListEditor::lignesRemplies() const {
  int line = 0;
  while (line < lignes() && !parts_.listes.front()->list(line).empty()) ++line;
  return line;
}

void ListEditor::inserer(int line, const Row& row) {
  for (std::size_t column = 0; column < parts_.listes.size(); ++column) {
    parts_.listes[column]->insertItem(line, row[column]);
  }
  dimensionner();
}

void ListEditor::retirer(int line) {
  if (line < 0 || line >= lignes()) return;
  for (toolkit::ListBox* list : parts_.listes) list->removeItem(line);
  for (toolkit::ListBox* list : parts_.listes) list->setListIndex(-1);
  dimensionner();
  parts_.barre->resetValue(parts_.barre->min());
}

void ListEditor::ordonner(const std::vector<int>& order) {
  const auto at = std::find(order.begin(), order.end(), editee_ + 1);
  if (at != order.end()) editee_ = static_cast<int>(at - order.begin());
}

void ListEditor::dimensionner() {
  const int last = lignes() - 1;
  const bool shown = last > kDerniereSansBarre;
  parts_.barre->setRange(0, last);
  parts_.barre->setVisible(shown);
  for (toolkit::Control* control : parts_.elargis) {
    elargir(*control, shown ? kLargeurElargie : kLargeurEtroite);
  }
}

bool ListEditor::ouvrir(int line) { return entrer(line, line < 0); }

bool ListEditor::ouvrirChoisie() { return entrer(ligneChoisie(), false); }

// While another editor is open, the frame or the page around this one is disabled.
bool ListEditor::entrer(int line, bool adding) {
  if (ouvert_ || !parts_.ajouter->parent()->reachable()) return false;
  ouvert_ = true;
  ajout_ = adding;
  editee_ = line;
  screen::CommandBar& bar = context_.screen.bar;
  context_.session.W_SupprimerActif = bar.Cmd_Supprimer.enabled();
  context_.session.W_SortirActif = bar.Cmd_Sortir.enabled();
  bar.Cmd_Supprimer.setEnabled(false);
  bar.Cmd_Sortir.setEnabled(false);
  for (toolkit::ListBox* list : parts_.listes) verrouiller(*list);
  ouvrirOnglets(false);
  verrouiller(*parts_.ajouter);
  // Another body must not come to hand while a row of this one is open.
  for (toolkit::Control* control : std::initializer_list<toolkit::Control*>{
           &bar.Cmd_OK, &bar.Cmd_Annuler, &bar.Txt_SigleOrgChg, &bar.Txt_CodOrgChg,
           &bar.Cbo_SigleOrgChg, &bar.Cmd_Ajouter}) {
    verrouiller(*control);
  }
  for (toolkit::Control* control : parts_.verrouilles) verrouiller(*control);
  for (toolkit::TextBox* zone : parts_.zones) {
    if (zone) zone->setEnabled(true);
  }
  parts_.ok->setEnabled(true);
  parts_.annuler->setEnabled(true);
  parts_.supprimer->setEnabled(!adding);
  lettres_.take();
  parts_.annuler->surface()->setCancelButton(parts_.annuler);
  return true;
}

ListEditor::Row ListEditor::saisie() const {
  Row typed(parts_.listes.size());
  for (std::size_t column = 0; column < parts_.zones.size(); ++column) {
    if (parts_.zones[column]) typed[column] = parts_.zones[column]->text();
  }
  return typed;
}

void ListEditor::proposer(const Row& row) {
  proposee_.clear();
  for (const std::string& text : row) proposee_.push_back(store::editable(text));
  for (std::size_t column = 0; column < parts_.zones.size(); ++column) {
    if (parts_.zones[column]) parts_.zones[column]->setText(proposee_[column]);
  }
}

bool ListEditor::illisible(std::size_t column) const {
  const toolkit::TextBox& zone = *parts_.zones[column];
  const bool asOpened = column < proposee_.size() && zone.text() == proposee_[column];
  return !asOpened && pages::illisible(zone);
}

bool ListEditor::nombresLisibles() const {
  for (const std::size_t column : nombres_) {
    if (!illisible(column)) continue;
    parts_.zones[column]->setFocus();
    return false;
  }
  return true;
}

bool ListEditor::renonce() const {
  return parts_.annuler->surface()->focusGoal() == parts_.annuler;
}

void ListEditor::verrouiller(toolkit::Control& control) {
  avant_.emplace_back(&control, control.enabled());
  control.setEnabled(false);
}

void ListEditor::ouvrirOnglets(bool open) {
  toolkit::SSTab& tabs = context_.screen.Ong_OrgPriseChg;
  for (int tab = 0; tab < tabs.tabs(); ++tab) {
    if (tab != parts_.onglet) tabs.setTabEnabled(tab, open);
  }
}

void ListEditor::fermer() {
  if (ouvert_) {
    ouvrirOnglets(true);
    for (const auto& [control, enabled] : avant_) control->setEnabled(enabled);
    avant_.clear();
    lettres_.giveBack();
    parts_.annuler->surface()->setCancelButton(nullptr);
    screen::EditSession& session = context_.session;
    screen::CommandBar& bar = context_.screen.bar;
    if (std::exchange(session.W_SupprimerActif, false)) bar.Cmd_Supprimer.setEnabled(true);
    if (std::exchange(session.W_SortirActif, false)) bar.Cmd_Sortir.setEnabled(true);
  }
  for (toolkit::TextBox* zone : parts_.zones) {
    if (!zone) continue;
    zone->setEnabled(false);
    zone->setText("");
  }
  proposee_.clear();
  for (toolkit::CommandButton* button : {parts_.ok, parts_.annuler, parts_.supprimer}) {
    button->setEnabled(false);
  }
  ouvert_ = false;
  ajout_ = false;
  editee_ = -1;
}

bool ListEditor::abandonConfirme() const {
  return !enAjout() ||
         screen::confirmer(context_.desktop, "Etes-vous sûr de vouloir quitter cette création ?");
}

bool ListEditor::suppressionConfirmee() const {
  return screen::confirmer(context_.desktop, "Etes-vous sûr de vouloir supprimer cette ligne ?");
}

bool ListEditor::refuser(std::string_view message, toolkit::Control& field) const {
  screen::avertir(context_.desktop, message);
  field.setFocus();
  return false;
}

void ListEditor::quitter() {
  const bool closed = ouvert_;
  fermer();
  if (closed) parts_.ajouter->setFocus();
}

void ListEditor::quitterConfirmee() {
  const int changed = ouvert_ && !ajout_ ? editee_ : -1;
  if (changed < 0) return quitter();
  fermer();
  reprendreEn(std::min(changed + 1, lignes() - 1));
}

// In the list where Tab stops: a new scale has closed the first ones.
void ListEditor::reprendreEn(int line) {
  const auto open =
      std::find_if(parts_.listes.begin(), parts_.listes.end(),
                   [](const toolkit::ListBox* list) { return list->tabStop() && list->usable(); });
  if (open == parts_.listes.end()) return parts_.ajouter->setFocus();
  choisir(line);
  for (toolkit::ListBox* list : parts_.listes) list->bringIntoView(line);
  (*open)->setFocus();
}

}  // namespace pages
