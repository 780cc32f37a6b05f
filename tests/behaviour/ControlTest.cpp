#include "tests/behaviour/ControlTest.h"

#include <algorithm>

namespace behaviour {
namespace {

class TestEntry : public screen::RightsEntry {
 public:
  TestEntry(std::shared_ptr<RightsLevel> level, std::shared_ptr<std::vector<std::string>> log)
      : level_(std::move(level)), log_(std::move(log)) {}
  ~TestEntry() override { log_->push_back("RightsEntry"); }
  long Level() override {
    ++level_->reads;
    if (level_->fails) throw std::runtime_error("the rights cannot be read");
    const long level = level_->value;
    if (level_->lostAfter == 1) level_->value = 1;
    if (level_->lostAfter > 0) --level_->lostAfter;
    return level;
  }

 private:
  std::shared_ptr<RightsLevel> level_;
  std::shared_ptr<std::vector<std::string>> log_;
};

struct TestClient {
  explicit TestClient(std::shared_ptr<std::vector<std::string>> log) : log_(std::move(log)) {}
  TestClient(const TestClient&) = delete;
  TestClient& operator=(const TestClient&) = delete;
  ~TestClient() { log_->push_back("Client"); }
  std::shared_ptr<std::vector<std::string>> log_;
};

}  // namespace

std::shared_ptr<screen::RightsEntry> TestRights::entry(std::string_view right) {
  asked.emplace_back(right);
  return std::make_shared<TestEntry>(level_, log_);
}

void fillTables(testing_support::MemoryStore& store) {
  const std::string mark(1, store::kValueMark);
  store.put("TABLES", "PIECESRENOUV",
            {"Pièces", "AI" + mark + "RI", "Avis d'imposition" + mark + "Relevé d'identité"});
  store.put("TABLES", "STATORGCHG",
            {"Statistiques", "CD" + mark + "MU", "Conseil départemental" + mark + "Mutuelle"});
  store.set("COMPTEUR", "999", store::compteur::DernierOrgChg, "003");
  store.put("PARAMBORDORGCHG", "1", {"Nom", "30"});
  store.put("PARAMBORDORGCHG", "2", {"Heures", "8"});
  store.put("ASSOCIATION", "010", {"AIDE DU VAL"});
  store.put("ACTIVITES", "010P01",
            {"Aide ménagère", "010", "", "", "", "", "", "", "", "", "", "P", "SAAD"});
  store.put("NATUREVOIE", "AV", {"Avenue"});
  store.put("NATUREVOIE", "R", {"Rue"});
}

void completeBody(testing_support::MemoryStore& store, std::string_view code) {
  const std::vector<std::pair<int, const char*>> rules{
      {attribut::PeriodFactOrgChg, "M"},   {attribut::TypeOrgChg, "P"},
      {attribut::PlafondOrg, "3"},         {attribut::RenouvOrgChg, "0"},
      {attribut::AttribOrgChg, "H"},       {attribut::DateRembOrgChg, "21186"},
      {attribut::TxRembOrgChg, "2000"},    {attribut::TxRembMajOrgChg, "2500"},
      {attribut::PrestServOrgChg, "1500"}, {attribut::Bareme, "R"},
      {attribut::GestPartBenef, "M"},      {attribut::Abonnement, "0"},
      {attribut::DemAccordOrgChg, "0"},    {attribut::TypeBordOrgChg, "I"},
      {attribut::Entite, "010"},           {attribut::CodActSelect, "010P01"},
      {attribut::NbExemplOrgChg, "1"},     {attribut::IncidCompta, "0"},
      {attribut::GestionExclu, "0"},       {attribut::AjusTarif, "0"},
      {attribut::CoutGlobal, "0"},         {attribut::FactAnticip, "0"},
      {attribut::ParamSelecOrgChg, "1"}};
  for (const auto& [attribute, text] : rules) store.set("ORGPRISECHARGE", code, attribute, text);
}

void fillThreeBodies(testing_support::MemoryStore& store) {
  fillTables(store);
  store.put("ORGPRISECHARGE", "001",
            {"DOMUS", "Domus Mutuelle", "Bât. A", "12", "R", "des Lilas", "Le Bourg", "63000",
             "Clermont", "0400000001", "0400000002", "contact@domus.example", "", "", "Mme Dossier",
             "M. Facture", "", "P"});
  store.put("ORGPRISECHARGE", "002", {"CRAM", "Caisse régionale"});
  store.put("ORGPRISECHARGE", "003", {"CAF", "Caisse familiale"});
  for (const char* code : {"001", "002", "003"}) completeBody(store, code);
}

std::string values(const Lines& texts) {
  std::string attribute;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i > 0) attribute += store::kValueMark;
    attribute += texts[i];
  }
  return attribute;
}

std::string marked(std::string text) {
  std::replace(text.begin(), text.end(), '|', store::kValueMark);
  return text;
}

Lines told(const std::vector<testing_support::Call>& calls) {
  Lines lines;
  for (const testing_support::Call& call : calls) lines.push_back(call.told());
  return lines;
}

ControlTest::ControlTest()
    : control_(std::make_unique<control::Ctr_OrgPriseCharge>(desktop_)),
      user_(std::make_unique<toolkit::headless::User>(control_->surface())) {
  desktop_.follow([this] { return user_.get(); });
}

void ControlTest::connect() {
  control_->setTheClient(std::make_shared<TestClient>(store_.sharedReleases()));
  control_->setTheDatabase(store_.connect());
  control_->setDroitsUtilisateur(std::make_shared<TestRights>(level_, store_.sharedReleases()));
}

void ControlTest::start() {
  connect();
  control_->Init();
  store_.forgetCalls();
  desktop_.clearJournal();
}

void ControlTest::lookUp(std::string_view typed, Caller at) { user_->fill(code(), typed, at); }

void ControlTest::beginCreation(std::string_view sigle, std::string_view raison, Caller at) {
  const auto trace = called("beginCreation", at);
  ASSERT_TRUE(press("Cmd_Ajouter"));
  ASSERT_TRUE(user_->type(sigle));
  ASSERT_TRUE(user_->fill(box("Txt_RaisonOrgChg"), raison));
  completeCreation();
  ASSERT_TRUE(user_->click(tabs(), kCoordonnees));
  ASSERT_TRUE(user_->go(box("Txt_RaisonOrgChg")));
}

void ControlTest::addRate(Caller at) {
  const auto trace = called("addRate", at);
  ASSERT_TRUE(press("Cmd_AjoutTaux"));
  ASSERT_TRUE(user_->type("01/01/2026"));
  ASSERT_TRUE(user_->fill(box("Txt_TxRembOrgChg"), "20"));
  ASSERT_TRUE(user_->fill(box("Txt_TxRembMajOrgChg"), "25"));
  ASSERT_TRUE(user_->fill(box("Txt_PrestServOrgChg"), "15"));
  ASSERT_TRUE(press("Cmd_OKTaux"));
}

void ControlTest::completeCreation(Caller at) {
  const auto trace = called("completeCreation", at);
  ASSERT_TRUE(user_->click(tabs(), kActivites));
  ASSERT_TRUE(user_->fill(box("Txt_Entite"), "010"));
  ASSERT_TRUE(user_->click(tabs(), kPriseEnCharge));
  ASSERT_TRUE(user_->click(child<toolkit::OptionButton>("Opt_HeureOrgChg")));
  addRate();
  ASSERT_TRUE(user_->click(tabs(), kBordereau));
  ASSERT_TRUE(user_->dblClick(child<ListBox>("Lst_ParamPossOrgChg"), 0));
  ASSERT_GT(list("Lst_ParamSelecOrgChg").listCount(), 0) << "no slip parameter has been chosen";
}

std::string ControlTest::state() {
  std::string told;
  const auto add = [&told](bool holds, std::string_view word) {
    if (holds) told += (told.empty() ? "" : " ") + std::string(word);
  };
  add(code().usable(), "code");
  add(button("Cmd_Ajouter").usable(), "ajouter");
  add(button("Cmd_Supprimer").usable(), "supprimer");
  add(button("Cmd_OK").usable(), "ok");
  add(button("Cmd_Annuler").usable(), "annuler");
  add(button("Cmd_Sortir").usable(), "sortir");
  add(true, "|");
  add(sigles().usable(), "recherche");
  add(box("Txt_SigleOrgChg").usable(), "saisie");
  add(box("Txt_RaisonOrgChg").reachable(), "pages");
  return told;
}

void ControlTest::expectBox(std::string_view text, Icon icon, toolkit::Buttons buttons, Caller at) {
  const auto trace = called("expectBox", at);
  const auto boxes = desktop_.takeBoxes();
  ASSERT_PRED_FORMAT2(boxCount, boxes, 1U) << "\nexpected: «" << text << "»";
  toolkit::headless::Entry expected = boxes[0];
  expected.text = text;
  expected.icon = icon;
  expected.buttons = buttons;
  const std::string shown = testing::PrintToString(boxes[0]);
  if (shown != testing::PrintToString(expected)) {
    ADD_FAILURE() << shown << "\ninstead of " << testing::PrintToString(expected);
  }
  EXPECT_EQ(boxes[0].title, "Message VALDRIS");
}

void ControlTest::expectNoBox(Caller at) {
  const auto trace = called("expectNoBox", at);
  EXPECT_PRED_FORMAT1(noBoxes, desktop_.takeBoxes());
}

void ControlTest::expectNothingWritten(Caller at) {
  const auto trace = called("expectNothingWritten", at);
  EXPECT_PRED_FORMAT2(same, told(store_.calls(CallKind::DBWrite)), Lines());
  EXPECT_PRED_FORMAT2(same, told(store_.calls(CallKind::DeleteRecord)), Lines());
}

}  // namespace behaviour
