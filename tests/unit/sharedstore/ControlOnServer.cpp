#include "ControlOnServer.h"

#include <sstream>
#include <vector>

#include "forms/Frm_ImpressionA4.h"

namespace attribut = store::orgprisecharge;

ControlOnServer::ControlOnServer() {
  behaviour::fillThreeBodies(store_);
  store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "O");
  for (const char* const account : {"4110000000", "7060000000", "7400000000", "7080000000"}) {
    store_.put("PLANCOMPTABLE", std::string("010") + account, {std::string("Compte ") + account});
  }
  behaviour::Lines codes;
  for (int i = 1; i <= 20; ++i) {
    const std::string entity = i <= 10 ? "010" : "020";
    codes.push_back(entity + "P" + std::to_string(10 + i));
    store_.put(
        "ACTIVITES", codes.back(),
        {"Activité " + std::to_string(i), entity, "", "", "", "", "", "", "", "", "", "P", "SAAD"});
  }
  for (const auto& [number, text] :
       std::vector<std::pair<int, std::string>>{{attribut::CodActSelect, behaviour::values(codes)},
                                                {attribut::DebitOrgChg, "4110000000"},
                                                {attribut::CreditOrgChg, "7060000000"},
                                                {attribut::CpteProdAide, "7400000000"},
                                                {attribut::CptPrestationService, "7080000000"}}) {
    store_.set(attribut::kFile, "001", number, text);
  }
  store_.put("PERIODESPAIE", "1", {"202601"});
}

// The control goes before what it works on.
ControlOnServer::~ControlOnServer() {
  user_.reset();
  control_.reset();
}

void ControlOnServer::carry() {
  for (const std::string& file : direct_->fileNames()) {
    std::vector<multivalue::Database::Written> records;
    for (const std::string& id : store_.ids(file)) {
      records.push_back({id, store_.record(file, id).text()});
    }
    if (!records.empty()) direct_->writeAll(file, records);
  }
}

void ControlOnServer::connectToServer() {
  user_.reset();
  control_ = std::make_unique<control::Ctr_OrgPriseCharge>(desktop_);
  user_ = std::make_unique<toolkit::headless::User>(control_->surface());
  control_->onEnregistre = [this](const std::string& code, bool) {
    told_.push_back("Enregistre " + code);
  };
  control_->onEchec = [this](std::string_view, const store::StoreError& failure) {
    std::ostringstream text;
    text << "Echec " << std::hex << failure.code();
    told_.push_back(text.str());
  };
  control_->setTheClient(std::make_shared<int>());
  control_->setTheDatabase(sharedstore::openSharedDatabase(relay_.through(server_.connection())));
  control_->setDroitsUtilisateur(
      std::make_shared<behaviour::TestRights>(level_, store_.sharedReleases()));
}

void ControlOnServer::startOnServer() {
  carry();
  connectToServer();
  control_->Init();
  desktop_.clearJournal();
  told_.clear();
}

void ControlOnServer::putScale() {
  const std::vector<std::pair<int, behaviour::Lines>> columns{
      {attribut::DebRevSeulOrgChg, {"0", "50000"}},
      {attribut::FinRevSeulOrgChg, {"50000", "200000"}},
      {attribut::DebRevMenOrgChg, {"0", "80000"}},
      {attribut::FinRevMenOrgChg, {"80000", "300000"}},
      {attribut::BaremPrecOrgChg, {"150", "250"}},
      {attribut::BaremCoursOrgChg, {"160", "275"}},
      {attribut::DatBaremPrec, {"20821"}},
      {attribut::DatBaremCours, {"21186"}}};
  for (const auto& [attribute, texts] : columns) {
    store_.set(attribut::kFile, "001", attribute, behaviour::values(texts));
  }
  store_.put("CONSTANTESPAIE", "1", {"", "", "", "", "", "", "", "", "11689"});
  store_.put("TITRES", "1", {"Madame"});
  store_.put("TITRES", "2", {"Monsieur"});
}

void ControlOnServer::putAgreements(int count, bool someBeyond) {
  store::DynamicArray agreement;
  agreement.set(store::accord::OrgChgAcc, "001");
  agreement.set(store::accord::DateDebAcc, "20821");
  agreement.set(store::accord::DateFinAcc, "21915");
  std::vector<multivalue::Database::Written> agreements;
  std::vector<multivalue::Database::Written> persons;
  std::vector<multivalue::Database::Written> responsible;
  std::vector<multivalue::Database::Written> elements;
  for (int i = 0; i < count; ++i) {
    const std::string number = std::to_string(10000 + i);
    agreements.push_back({number + "001", agreement.text()});
    store::DynamicArray person;
    person.set(store::civilaide::TitreAide, std::to_string(1 + i % 2));
    person.set(store::civilaide::NomAide, "NOM" + number);
    persons.push_back({number, person.text()});
    if (i % 10 == 0) responsible.push_back({number, person.text()});
    store::DynamicArray income;
    income.set(store::eltsfactaide::RevenuElt, someBeyond && i % 7 == 0 ? "999999" : "40000");
    elements.push_back({number, income.text()});
  }
  direct_->writeAll("ACCORD", agreements);
  direct_->writeAll("CIVILAIDE", persons);
  direct_->writeAll("RESPONSABLE", responsible);
  direct_->writeAll("ELTSFACTAIDE", elements);
}

void ControlOnServer::enterScale(const std::string& date) {
  forms::imprimanteParDefaut() = {};
  desktop_.setPrinters({{"PDF_A4", "LPT1:"}}, 0);
  control_->Vider_Donnees();
  lookUp("001");
  user_->click(tabs(), behaviour::kParticipation);
  desktop_.answer(behaviour::Answer::Yes);
  press("Cmd_NouveauBareme");
  user_->type(date.substr(0, 2) + date.substr(3, 2) + date.substr(6));
  desktop_.takeBoxes();
}

std::string ControlOnServer::stored(std::string_view file, std::string_view id) const {
  const auto record = direct_->OpenFile(file)->ReadRecord(id);
  return record->found() ? record->fields().text() : "none";
}

int ControlOnServer::storedCount(std::string_view file) const {
  return static_cast<int>(direct_->recordCount(file));
}
