#include "pages/AddressPanel.h"

#include <stdexcept>
#include <utility>

#include "store/CodeTable.h"
#include "store/Layouts.h"
#include "store/Request.h"
#include "text/Utf8.h"

namespace pages {

namespace adresse = store::adresse;

namespace {

// Columns "0 1" of NATUREVOIE. A store need not have that file: there are then no kinds.
store::DynamicArray naturesDuMagasin(store::Database& database) {
  try {
    return store::select(database, "SSELECT NATUREVOIE PAR 1", store::naturevoie::kFile, "0 1");
  } catch (const store::StoreError& error) {
    if (error.code() != store::kUnknownFile) throw;
    return store::NewDynamicArray();
  }
}

}  // namespace

AddressPanel::AddressPanel(screen::Adresse& fields, screen::EditSession& session)
    : fields_(fields),
      session_(session),
      boxes_{{{&fields.Txt_Complement, adresse::Complement, {}},
              {&fields.Txt_NumVoie, adresse::Numero, {}},
              {&fields.Txt_NomVoie, adresse::Voie, {}},
              {&fields.Txt_Localite, adresse::Localite, {}},
              {&fields.Txt_CodePostal, adresse::CodePostal, {}},
              {&fields.Txt_Ville, adresse::Ville, {}},
              {&fields.Txt_Telephone, adresse::Telephone, {}},
              {&fields.Txt_Fax, adresse::Fax, {}},
              {&fields.Txt_Email, adresse::Mail, {}}}} {
  const auto filter = [this](char32_t& key) { capitale(key); };
  for (const Field& field : boxes_) {
    if (field.step != adresse::Mail) field.box->onKeyPress = filter;
  }
}

void AddressPanel::setTheDatabase(std::shared_ptr<store::Database> database) {
  database_ = std::move(database);
}

void AddressPanel::setReglage(int number, bool value) {
  if (number < 1 || number > 3) throw std::invalid_argument("the address has settings 1 to 3");
  settings_[static_cast<std::size_t>(number - 1)] = value;
}

void AddressPanel::initialiser() {
  natures_ = store::NewDynamicArray();
  if (settings_[0] && database_) natures_ = naturesDuMagasin(*database_);
  if (!store::anySelected(natures_)) natures_ = store::NewDynamicArray();
  std::vector<toolkit::ListItem> lines;
  for (int i = 1; i <= natures_.DCount(); ++i) {
    lines.push_back({std::string(natures_.get(i, 2)), 0});
  }
  const screen::Quiet quiet(session_);
  fields_.Cbo_NatureVoie.setItems(std::move(lines));
  fields_.Ctr_Adresseorgchg.setEnabled(settings_[1]);
}

void AddressPanel::afficher(store::DynamicArray& record, int firstAttribute) {
  const screen::Quiet quiet(session_);
  for (Field& field : boxes_) {
    const std::string_view attribute = record.get(firstAttribute + field.step);
    field.box->renewText(attribute);
    field.shown.keep(attribute, field.box->text());
  }
  montrerNature(record.get(firstAttribute + adresse::NatureVoie));
}

// Kinds may bear one label: the line tells them apart.
void AddressPanel::montrerNature(std::string_view key) {
  toolkit::ComboBox& kinds = fields_.Cbo_NatureVoie;
  const int line = key.empty() ? -1 : store::ChercherCodeTable(natures_, key) - 1;
  kinds.setListIndex(-1);
  kinds.setListIndex(line);
  if (line < 0) kinds.setText(key);
  ligneNature_ = kinds.listIndex();
  nature_.keep(key, kinds.text());
}

void AddressPanel::ecrire(store::DynamicArray& record, int firstAttribute) {
  for (const Field& field : boxes_) {
    ecrireAttribut(record, firstAttribute + field.step, field.shown.written(field.box->text()));
  }
  ecrireAttribut(record, firstAttribute + adresse::NatureVoie, nature());
}

// A label that is typed in full is taken for its first line's; any other text is the kind itself.
std::string_view AddressPanel::nature() const {
  const toolkit::ComboBox& kinds = fields_.Cbo_NatureVoie;
  const std::string& text = kinds.text();
  const int chosen = kinds.listIndex();
  const bool typedAgain = chosen < 0 && !text.empty();
  if (nature_.stands(text) && (chosen == ligneNature_ || typedAgain)) return nature_.attribute();
  if (text.empty() && chosen < 0) return {};
  const int line = chosen >= 0 ? chosen : kinds.items().find(text);
  return line >= 0 ? natures_.get(line + 1, 1) : text;
}

void AddressPanel::vider() {
  store::DynamicArray nothing;
  afficher(nothing, adresse::Premier);
}

void AddressPanel::capitale(char32_t& key) const {
  if (settings_[2]) key = text::upper(key);
}

}  // namespace pages
