#include "pages/Ong6.h"

#include <optional>
#include <unordered_set>
#include <utility>

#include "pages/HoursRule.h"
#include "screen/Messages.h"
#include "screen/StoreTrap.h"
#include "store/Layouts.h"
#include "store/Request.h"
#include "text/Utf8.h"
#include "toolkit/Keys.h"

namespace pages {

namespace attribut = store::orgprisecharge;

namespace {

constexpr std::size_t kCodeEntite = 3;
constexpr std::size_t kLargeurLibelle = 20;
constexpr std::size_t kPositionType = kLargeurLibelle + 2;  // of the type in a line, from 1
constexpr int kCode = 1;
constexpr int kLibelle = 2;
constexpr int kType = 3;

// A letter that is no type stands for itself.
std::string_view nomDuType(std::string_view letter) {
  if (letter == "P") return "Prestataire";
  if (letter == "M") return "Mandataire";
  if (letter == "I") return "Intermédiaire";
  if (letter == "S") return "SSIAD";
  return letter;
}

void ecrireLigne(std::string& line, std::string_view libelle, std::string_view type) {
  const std::string_view nom = nomDuType(type);
  line.clear();
  line.reserve(libelle.size() + kLargeurLibelle + 1 + nom.size());
  text::addFit(line, libelle, kLargeurLibelle);
  line += ' ';
  line += nom;
}

bool vide(std::string_view text) { return text::trim(text).empty(); }

}  // namespace

Ong6::Ong6(PageContext context)
    : Onglet(context, &screen::EditSession::ErreurOng6), page_(context.screen.activites) {}

void Ong6::lier(const screen::Handlers& handlers) {
  page_.Txt_Entite.onChange = handlers.on(*this, &Ong6::Txt_Entite_Change);
  page_.Txt_Entite.onLostFocus = handlers.on(*this, &Ong6::Txt_Entite_LostFocus);
  page_.Cbo_Entite.onKeyPress = handlers.key(*this, &Ong6::Cbo_Entite_KeyPress);
  page_.Cbo_Entite.onDropDown = handlers.on(*this, &Ong6::Cbo_Entite_DropDown);
  page_.Cbo_Entite.onClick = handlers.on(*this, &Ong6::Cbo_Entite_Click);
  page_.Cbo_Entite.onLostFocus = handlers.on(*this, &Ong6::Cbo_Entite_LostFocus);
  const auto droite = handlers.on(*this, &Ong6::Passage_A_Droite);
  const auto gauche = handlers.on(*this, &Ong6::Passage_A_Gauche);
  page_.Lst_Activite.onDblClick = droite;
  page_.Cmd_PasseDroit.onClick = droite;
  page_.Lst_ActSelect.onDblClick = gauche;
  page_.Lst_ActSelect.onScroll =
      handlers.on([this] { page_.Lst_TypeAct.setTopIndex(page_.Lst_ActSelect.topIndex()); });
  page_.Lst_TypeAct.onScroll =
      handlers.on([this] { page_.Lst_ActSelect.setTopIndex(page_.Lst_TypeAct.topIndex()); });
  page_.Cmd_PasseGauche.onClick = gauche;
}

// --- Legal entity

void Ong6::Txt_Entite_Change() {
  const std::string code = page_.Txt_Entite.text();
  const bool complete = text::length(code) == kCodeEntite;
  // A store that fails leaves the code as typed, and no entity.
  const bool chosen = complete && screen::quietly(context_.session, "Txt_Entite_Change",
                                                  [&] { choisirEntite(code); });
  if (!chosen) oublierEntite();
}

// A code that is not complete, or could not be read, is no entity's. What a record holds stays.
void Ong6::Txt_Entite_LostFocus() {
  const std::string& code = page_.Txt_Entite.text();
  if (vide(code) || code == context_.session.entiteCourante || entite_.stands(code)) return;
  if (text::length(code) == kCodeEntite) {
    screen::quietly(context_.session, "Txt_Entite_LostFocus",
                    [&] { choisirEntite(std::string(code)); });
  } else {
    refuserEntite();
  }
}

// What is covered goes when another entity is chosen, not before: a code is typed character by
// character.
void Ong6::choisirEntite(const std::string& code) {
  const auto record = context_.session.files.association->ReadRecord(code);
  if (!record->found()) {
    refuserEntite();
    return;
  }
  store::DynamicArray activities = lireActivites();
  const bool another = code != codeCouvert_;
  if (another) viderListes();
  montrerPossibles(std::move(activities));
  nomEntite_ = record->fields().get(store::association::NomAsso, 1);
  page_.Cbo_Entite.setText(nomEntite_);
  context_.session.entiteCourante = code;
  codeCouvert_ = code;
  if (another && entiteChangee) entiteChangee();
}

void Ong6::refuserEntite() {
  oublierEntite();
  screen::avertir(context_.desktop, "Cette entité juridique n'existe pas.");
  page_.Txt_Entite.setText("");
  page_.Txt_Entite.setFocus();
}

void Ong6::oublierEntite() {
  context_.session.entiteCourante.clear();
  nomEntite_.clear();
  page_.Cbo_Entite.setText("");
  viderPossibles();
  page_.Cmd_PasseDroit.setEnabled(false);
  page_.Cmd_PasseGauche.setEnabled(false);
}

void Ong6::Remplir_Entite() {
  lister(store::select(*context_.session.TheDatabase, "SSELECT ASSOCIATION PAR 1",
                       store::association::kFile, "0 1"));
}

void Ong6::lister(const store::DynamicArray& answer) {
  std::vector<toolkit::ListItem> lines;
  if (store::anySelected(answer)) {
    for (int i = 1; i <= answer.DCount(); ++i) lines.push_back({std::string(answer.get(i, 2)), 0});
  }
  entites_ = answer;
  const std::string text = page_.Cbo_Entite.text();
  page_.Cbo_Entite.setItems(std::move(lines));
  page_.Cbo_Entite.setText(text);
}

void Ong6::Cbo_Entite_KeyPress(char32_t& key) {
  if (key != toolkit::kEnter) {
    screen::filtrerRecherche(context_.desktop, key);
    return;
  }
  screen::quietly(context_.session, "Cbo_Entite_KeyPress", [this] { chercherEntite(); });
}

void Ong6::chercherEntite() {
  const std::string typed = page_.Cbo_Entite.text();
  const store::DynamicArray found = store::select(
      *context_.session.TheDatabase,
      "SSELECT ASSOCIATION AVEC 1 = " + store::quotedPrefix(text::upper(typed)) + " PAR 1",
      store::association::kFile, "0 1");
  if (!store::anySelected(found)) {
    screen::avertir(context_.desktop, "Aucune entité juridique commençant par " + typed);
    return;
  }
  lister(found);
  if (page_.Cbo_Entite.listCount() > 1) page_.Cbo_Entite.openList();
}

void Ong6::Cbo_Entite_DropDown() {
  screen::quietly(context_.session, "Cbo_Entite_DropDown", [this] { Remplir_Entite(); });
}

void Ong6::Cbo_Entite_Click() {
  const int line = page_.Cbo_Entite.listIndex();
  if (line < 0) return;
  const std::string code(entites_.get(line + 1, 1));
  // The code may stand there without its entity: typed, but not read.
  if (page_.Txt_Entite.text() == code && context_.session.entiteCourante != code) {
    page_.Txt_Entite.setText("");
  }
  page_.Txt_Entite.setText(code);
}

// The name is what the code says, whatever was typed there for a search.
void Ong6::Cbo_Entite_LostFocus() { page_.Cbo_Entite.setText(nomEntite_); }

// --- Activities

void Ong6::Remplir_Liste_Activite() {
  viderListes();
  montrerPossibles(lireActivites());
}

store::DynamicArray Ong6::lireActivites() {
  return store::select(*context_.session.TheDatabase,
                       "SSELECT ACTIVITES AVEC CodAssoActivite = " +
                           store::quoted(page_.Txt_Entite.text()) + " PAR 1 ",
                       store::activites::kFile, "0 1 12");
}

void Ong6::montrerPossibles(store::DynamicArray answer, std::vector<toolkit::ListItem> lines) {
  activites_ = store::anySelected(answer) ? std::move(answer) : store::NewDynamicArray();
  const int count = activites_.DCount();
  lines.resize(static_cast<std::size_t>(count));
  for (int i = 1; i <= count; ++i) {
    std::string_view columns = activites_.get(i);
    store::takeValue(columns);
    const std::string_view libelle = store::takeValue(columns);
    ecrireLigne(lines[static_cast<std::size_t>(i - 1)].text, libelle, store::takeValue(columns));
  }
  page_.Lst_Activite.setItems(std::move(lines));
  page_.Cmd_PasseDroit.setEnabled(true);
  page_.Cmd_PasseGauche.setEnabled(true);
}

void Ong6::viderPossibles() {
  activites_ = store::NewDynamicArray();
  page_.Lst_Activite.clear();
}

void Ong6::viderListes() {
  viderPossibles();
  for (toolkit::ListBox* list :
       {&page_.Lst_ActSelect, &page_.Lst_CodActSelect, &page_.Lst_TypeAct}) {
    list->clear();
  }
  reglerSemaine(page_);
}

void Ong6::Passage_A_Droite() {
  if (!screen::droitsComplets(context_.session)) return;
  const std::vector<toolkit::ListItem> before = page_.Lst_CodActSelect.items().all();
  std::unordered_set<std::string_view> covered;
  covered.reserve(before.size() + static_cast<std::size_t>(page_.Lst_Activite.selectedCount()));
  for (const toolkit::ListItem& code : before) covered.insert(code.text);
  for (const int line : page_.Lst_Activite.selectedLines()) {
    const std::string_view code = activites_.get(line + 1, kCode);
    const std::string& text = page_.Lst_Activite.list(line);
    const std::string type = text::mid(text, kPositionType, 1);
    const bool accepted = page_.Lst_TypeAct.listCount() == 0 || type == page_.Lst_TypeAct.list(0);
    if (covered.contains(code) || !accepted) continue;
    covered.insert(code);
    page_.Lst_CodActSelect.addItem(code);
    page_.Lst_TypeAct.addItem(type);
    page_.Lst_ActSelect.addItem(text);
  }
  page_.Lst_Activite.selectNone();
  reglerSemaine(page_);
  if (!page_.Opt_Semaine.enabled()) page_.Opt_Totalite.setValue(true);
}

void Ong6::Passage_A_Gauche() {
  if (!screen::droitsComplets(context_.session)) return;
  const std::vector<int> lines = page_.Lst_ActSelect.selectedLines();
  for (toolkit::ListBox* list :
       {&page_.Lst_ActSelect, &page_.Lst_CodActSelect, &page_.Lst_TypeAct}) {
    list->removeItems(lines);
  }
  page_.Lst_TypeAct.setTopIndex(page_.Lst_ActSelect.topIndex());
  page_.Opt_Semaine.setEnabled(!estMandataire(page_));
}

// --- Showing

void Ong6::Afficher_Ong6() {
  const screen::Quiet quiet(context_.session);
  std::vector<toolkit::ListItem> room = page_.Lst_Activite.takeItems();
  commencer();
  const store::DynamicArray& record = context_.session.RecOrgChg->fields();
  page_.Txt_Entite.renewText(record.get(attribut::Entite));
  entite_.keep(record.get(attribut::Entite), page_.Txt_Entite.text());
  const std::string code = page_.Txt_Entite.text();
  codeCouvert_ = code;
  if (!code.empty()) {
    const auto entity = context_.session.files.association->ReadRecord(code);
    if (entity->found()) {
      nomEntite_ = entity->fields().get(store::association::NomAsso, 1);
      page_.Cbo_Entite.setText(nomEntite_);
      montrerPossibles(lireActivites(), std::move(room));
      context_.session.entiteCourante = code;
    }
  }
  montrerCouvertes(record);
  montrerHeures(record);
}

// Where each of the covered ones stands among the possible ones; 0 for nowhere.
Ong6::Positions Ong6::positionsDesCouvertes(const store::DynamicArray& record) const {
  const auto count = static_cast<std::size_t>(record.DCount(attribut::CodActSelect));
  Positions positions(count);
  std::string_view left = record.get(attribut::CodActSelect);
  for (std::size_t i = 0; i < count; ++i) positions.emplace(store::takeValue(left), 0);
  for (int i = page_.Lst_Activite.listCount(); i >= 1; --i) {
    std::string_view columns = activites_.get(i);
    const auto covered = positions.find(store::takeValue(columns));
    if (covered != positions.end()) covered->second = i;
  }
  return positions;
}

void Ong6::annoncer() {
  const store::DynamicArray& record = context_.session.RecOrgChg->fields();
  context_.session.files.association->announce({std::string(record.get(attribut::Entite))});
  std::string_view left = record.get(attribut::CodActSelect);
  std::vector<std::string> codes;
  codes.reserve(static_cast<std::size_t>(record.DCount(attribut::CodActSelect)));
  while (!left.empty()) codes.emplace_back(store::takeValue(left));
  context_.session.files.activites->announce(codes);
}

// A code that no activity has is shown as it stands, under the type of the others, and stays until
// the user removes it.
void Ong6::montrerCouvertes(const store::DynamicArray& record) {
  const Positions positions = positionsDesCouvertes(record);
  const auto count = static_cast<std::size_t>(record.DCount(attribut::CodActSelect));
  std::vector<Activite> covered;
  covered.reserve(count);
  std::string type;
  std::string_view left = record.get(attribut::CodActSelect);
  for (std::size_t i = 0; i < count; ++i) {
    const std::string_view code = store::takeValue(left);
    covered.push_back(activite(code, positions.at(code)));
    if (type.empty()) type = covered.back().type;
  }
  auto lignes = page_.Lst_ActSelect.takeItems();
  auto codes = page_.Lst_CodActSelect.takeItems();
  auto types = page_.Lst_TypeAct.takeItems();
  for (auto* lines : {&lignes, &codes, &types}) lines->resize(count);
  left = record.get(attribut::CodActSelect);
  for (std::size_t i = 0; i < count; ++i) {
    const Activite& known = covered[i];
    const std::string& own = known.type.empty() ? type : known.type;
    ecrireLigne(lignes[i].text, known.libelle, own);
    codes[i].text = store::takeValue(left);
    types[i].text = text::left(own, 1);
  }
  page_.Lst_ActSelect.setItems(std::move(lignes));
  page_.Lst_CodActSelect.setItems(std::move(codes));
  page_.Lst_TypeAct.setItems(std::move(types));
}

void Ong6::montrerHeures(const store::DynamicArray& record) {
  const std::string_view hours = record.get(attribut::GestionExclu);
  page_.Opt_DimJF.setValue(hours == "1");
  page_.Opt_Semaine.setValue(hours == "2");
  page_.Opt_Totalite.setValue(hours != "1" && hours != "2");
  ouvrirHeures(page_, record.get(attribut::TypeOrgChg) == "P");
}

// No entity, as long as the record's has not been found.
void Ong6::commencer() {
  entites_ = store::NewDynamicArray();
  page_.Cbo_Entite.clear();
  oublierEntite();
}

void Ong6::vider() {
  const screen::Quiet quiet(context_.session);
  commencer();
  page_.Txt_Entite.setText("");
  entite_.keep("", "");
  codeCouvert_.clear();
  viderListes();
  page_.Cdr_GestionExclu.setEnabled(true);
  for (toolkit::OptionButton* option :
       {&page_.Opt_Totalite, &page_.Opt_DimJF, &page_.Opt_Semaine}) {
    option->setValue(false);
  }
  page_.Opt_Semaine.setEnabled(true);
}

// --- Writing

void Ong6::Ecrire_Ong6() {
  context_.session.ErreurOng6 = false;
  if (context_.session.modeVerif && !Verif_Ong6()) return;
  store::DynamicArray& record = context_.session.RecOrgChg->fields();
  ecrireAttribut(record, attribut::Entite, entite_.written(page_.Txt_Entite.text()));
  std::string codes;
  for (int line = 0; line < page_.Lst_ActSelect.listCount(); ++line) {
    if (line > 0) codes += store::kValueMark;
    codes += page_.Lst_CodActSelect.list(line);
  }
  ecrireAttribut(record, attribut::CodActSelect, codes);
  std::string_view hours = "0";
  if (page_.Opt_DimJF.value()) hours = "1";
  if (page_.Opt_Semaine.value()) hours = "2";
  ecrireAttribut(record, attribut::GestionExclu, hours);
}

// --- Checking

bool Ong6::Verif_Ong6() {
  context_.session.ErreurOng6 = false;
  const std::string& type = page_.Lst_TypeAct.list(0);
  screen::Regles& regles = context_.screen.regles;
  const bool principal = regles.Opt_TypePrincipalOrgChg.value();
  if (vide(page_.Txt_Entite.text()) || vide(page_.Cbo_Entite.text())) {
    return refuser("L'organisme de prise en charge doit couvrir au moins une activité.",
                   screen::kActivites, page_.Txt_Entite);
  }
  if (page_.Lst_ActSelect.listCount() == 0 && typesMeles()) {
    return refuser("Vous devez sélectionner au moins une activité.", screen::kActivites,
                   page_.Lst_Activite);
  }
  if (!principal && type == "M") return refuser("La caisse doit être de type principal.");
  if (!memeService()) {
    return refuser(
        "Toutes les activités couvertes par l'organisme doivent être rattachées au même service.");
  }
  const bool sansCompta = type == "M" || (type == "P" && regles.Opt_TypeComplOrgChg.value());
  if (regles.Cac_IncidCompta.value() && !sansCompta) {
    return refuser(
        "Le choix 'Sans incidence comptable' ne peut être utilisé que par les organismes de type "
        "'Mandataire'\r\nou de type 'Prestataire' et 'Complémentaire'.",
        screen::kRegles, regles.Cac_IncidCompta);
  }
  screen::PriseEnCharge& prise = context_.screen.priseEnCharge;
  if (type == "P" && principal && !prise.Opt_HeureOrgChg.value()) {
    return refuser(
        "L'attribution des notifications d'accords doit être en heures pour des activités de type "
        "prestataire et pour un organisme principal.",
        screen::kPriseEnCharge, prise.Opt_HeureOrgChg);
  }
  return true;
}

// Are the possible activities of several types?
bool Ong6::typesMeles() const {
  for (int i = 2; i <= page_.Lst_Activite.listCount(); ++i) {
    if (activites_.get(i, kType) != activites_.get(1, kType)) return true;
  }
  return false;
}

// A code that no activity has is attached to none.
bool Ong6::memeService() const {
  std::vector<std::string> codes;
  for (const toolkit::ListItem& code : page_.Lst_CodActSelect.items().all()) {
    codes.push_back(code.text);
  }
  context_.session.files.activites->announce(codes);
  std::optional<std::string> service;
  for (const toolkit::ListItem& code : page_.Lst_CodActSelect.items().all()) {
    if (code.text.empty()) continue;
    const auto record = context_.session.files.activites->ReadRecord(code.text);
    if (!record->found()) continue;
    std::string own(record->fields().get(store::activites::Service));
    if (service && *service != own) return false;
    service = std::move(own);
  }
  return true;
}

// Of the possible activity at that position, or (0) of the record of that code.
Ong6::Activite Ong6::activite(std::string_view code, int position) const {
  if (position > 0) {
    return {std::string(activites_.get(position, kLibelle)),
            std::string(activites_.get(position, kType))};
  }
  if (code.empty()) return {};
  const auto record = context_.session.files.activites->ReadRecord(code);
  if (!record->found()) return {std::string(code), ""};
  return {std::string(record->fields().get(store::activites::Libelle, 1)),
          std::string(record->fields().get(store::activites::TypeActivite, 1))};
}

}  // namespace pages
