// What the covered activities page refuses, in which order, and every combination of body,
// activities, accounts and hours.
#include <array>
#include <map>
#include <set>

#include "tests/behaviour/ControlTest.h"

namespace behaviour {
namespace {

constexpr const char* kSansActivite = "Vous devez sélectionner au moins une activité.";
constexpr const char* kCaissePasPrincipale = "La caisse doit être de type principal.";
constexpr const char* kPlusieursServices =
    "Toutes les activités couvertes par l'organisme doivent être rattachées au même service.";
constexpr const char* kSansCompta =
    "Le choix 'Sans incidence comptable' ne peut être utilisé que par les organismes de type "
    "'Mandataire'\r\nou de type 'Prestataire' et 'Complémentaire'.";
constexpr const char* kSansAttribution =
    "L'attribution des notifications d'accord est obligatoire.";
constexpr const char* kPasEnHeures =
    "L'attribution des notifications d'accords doit être en heures pour des activités de type "
    "prestataire et pour un organisme principal.";

void putActivity(testing_support::MemoryStore& store, std::string_view code, std::string_view type,
                 std::string_view service = "SAAD") {
  store.put("ACTIVITES", code, {"Activité " + std::string(code), code.substr(0, 3)});
  if (!type.empty()) store.set("ACTIVITES", code, store::activites::TypeActivite, type);
  if (!service.empty()) store.set("ACTIVITES", code, store::activites::Service, service);
}

class ActivitiesCheck : public ControlTest {
 protected:
  ActivitiesCheck() {
    fillThreeBodies(store_);
    for (const char* type : {"P", "M", "I", "S", "X"}) {
      putActivity(store_, "010" + std::string(type) + "01", type);
      putActivity(store_, "010" + std::string(type) + "02", type);
    }
    store_.put("ASSOCIATION", "020", {"D'UN SEUL TYPE"});
    putActivity(store_, "020P01", "P");
    putActivity(store_, "020P02", "P");
    store_.put("ASSOCIATION", "030", {"SANS ACTIVITE"});
    start();
  }
  // Shows body 001, principal and in hours, with these attributes; the first page is in front.
  void show(std::initializer_list<std::pair<int, std::string>> attributes = {},
            Caller at = Caller::here()) {
    const auto trace = called("show", at);
    if (!code().text().empty()) press("Cmd_Annuler");
    completeBody(store_, "001");
    for (const auto& [number, text] : attributes) store_.set("ORGPRISECHARGE", "001", number, text);
    lookUp("001");
    user_->click(tabs(), kCoordonnees);
    store_.forgetCalls();
  }

  // Saving is refused with this text, and these are in front and have the focus.
  void expectRefused(std::string_view text, int tab, const toolkit::Control& focus,
                     Caller at = Caller::here()) {
    const auto trace = called("expectRefused", at);
    press("Cmd_OK");
    expectBox(text, Icon::Exclamation);
    EXPECT_EQ(tabs().tab(), tab);
    EXPECT_PRED_FORMAT1(hasFocus, focus);
    EXPECT_EQ(state(), kExisting);
    expectNothingWritten();
  }
  void expectSaved(Caller at = Caller::here()) {
    const auto trace = called("expectSaved", at);
    press("Cmd_OK");
    expectNoBox();
    EXPECT_EQ(state(), kEmpty);
    EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
  }
};

// --- 1. A legal entity

TEST_F(ActivitiesCheck, ABodyWithoutEntityIsRefused) {
  show({{attribut::Entite, ""}, {attribut::CodActSelect, ""}});
  expectRefused(kSansEntite, kActivites, box("Txt_Entite"));
}

TEST_F(ActivitiesCheck, ABlankEntityIsRefused) {
  show();
  user_->click(tabs(), kActivites);
  user_->fill(box("Txt_Entite"), "  ");
  user_->click(tabs(), kRegles);
  expectRefused(kSansEntite, kActivites, box("Txt_Entite"));
}

TEST_F(ActivitiesCheck, AnIncompleteOrUnknownEntityIsRefused) {
  show();
  user_->click(tabs(), kActivites);
  user_->fill(box("Txt_Entite"), "01");
  EXPECT_FALSE(control_->Verif_Ong6());
  expectBox(kSansEntite, Icon::Exclamation);
  EXPECT_FALSE(press("Cmd_OK"));
  expectBox("Cette entité juridique n'existe pas.", Icon::Exclamation);
  expectRefused(kSansEntite, kActivites, box("Txt_Entite"));
  show({{attribut::Entite, "999"}});
  expectRefused(kSansEntite, kActivites, box("Txt_Entite"));
}

TEST_F(ActivitiesCheck, AMissingEntityIsRefusedWhateverWasTypedAsItsName) {
  show();
  user_->click(tabs(), kActivites);
  user_->fill(box("Txt_Entite"), "");
  user_->fill(child<ComboBox>("Cbo_Entite"), "AIDE DU VAL");
  expectRefused(kSansEntite, kActivites, box("Txt_Entite"));
}

TEST_F(ActivitiesCheck, ANameThatIsBeingTypedIsNoEntity) {
  show({{attribut::Entite, ""}, {attribut::CodActSelect, ""}});
  user_->click(tabs(), kActivites);
  for (const char* typed : {"", "  "}) {
    user_->fill(box("Txt_Entite"), typed);
    user_->fill(child<ComboBox>("Cbo_Entite"), "AIDE DU VAL");
    EXPECT_FALSE(control_->Verif_Ong6());
    expectBox(kSansEntite, Icon::Exclamation);
  }
}

TEST_F(ActivitiesCheck, AnEntityWhoseNameIsBlankIsRefused) {
  store_.put("ASSOCIATION", "040", {"   "});
  show({{attribut::Entite, "040"}});
  expectRefused(kSansEntite, kActivites, box("Txt_Entite"));
}

TEST_F(ActivitiesCheck, AnEntityWhoseNameIsEmptiedHasItAgainBySaving) {
  show();
  user_->click(tabs(), kActivites);
  user_->fill(child<ComboBox>("Cbo_Entite"), "");
  expectSaved();
}

// --- 2. An activity, where there is a choice of types

TEST_F(ActivitiesCheck, WithoutActivityAnEntityOfSeveralTypesIsRefused) {
  show({{attribut::CodActSelect, ""}});
  expectRefused(kSansActivite, kActivites, child<ListBox>("Lst_Activite"));
}

TEST_F(ActivitiesCheck, WithoutActivityAnEntityOfOneTypePasses) {
  show({{attribut::Entite, "020"}, {attribut::CodActSelect, ""}});
  expectSaved();
}

TEST_F(ActivitiesCheck, WithoutActivityAnEntityThatHasNonePasses) {
  show({{attribut::Entite, "030"}, {attribut::CodActSelect, ""}});
  expectSaved();
}

TEST_F(ActivitiesCheck, AnySecondTypeCountsAnUnknownOrMissingOneToo) {
  for (const char* type : {"M", "X", ""}) {
    putActivity(store_, "020Z99", type);
    show({{attribut::Entite, "020"}, {attribut::CodActSelect, ""}});
    expectRefused(kSansActivite, kActivites, child<ListBox>("Lst_Activite"));
  }
  show({{attribut::Entite, "020"}, {attribut::CodActSelect, "020P01"}});
  expectSaved();
}

// --- 3. Agency activities are for principal bodies

TEST_F(ActivitiesCheck, AgencyActivitiesOfAComplementaryBodyAreRefusedWhereTheUserIs) {
  show({{attribut::TypeOrgChg, "C"}, {attribut::CodActSelect, "010M01"}});
  for (const int tab : {kCoordonnees, kRegles, kBordereau, kActivites}) {
    user_->click(tabs(), tab);
    expectRefused(kCaissePasPrincipale, tab, button("Cmd_OK"));
  }
}

TEST_F(ActivitiesCheck, AgencyActivitiesOfABodyWithoutTypeAreRefused) {
  show({{attribut::TypeOrgChg, ""}, {attribut::CodActSelect, "010M01"}});
  expectRefused(kCaissePasPrincipale, kCoordonnees, button("Cmd_OK"));
}

TEST_F(ActivitiesCheck, TheTypeOfBodyThatCountsIsTheOneOnScreen) {
  show({{attribut::CodActSelect, "010M01"}});
  user_->click(tabs(), kRegles);
  user_->click(option("Opt_TypeComplOrgChg"));
  expectRefused(kCaissePasPrincipale, kRegles, button("Cmd_OK"));
  user_->click(option("Opt_TypePrincipalOrgChg"));
  expectSaved();
}

// --- 4. One service

TEST_F(ActivitiesCheck, ActivitiesOfTwoServicesAreRefusedWhereTheUserIs) {
  putActivity(store_, "010P02", "P", "SPASAD");
  show({{attribut::CodActSelect, values({"010P01", "010P02"})}});
  for (const int tab : {kCoordonnees, kPriseEnCharge, kActivites}) {
    user_->click(tabs(), tab);
    expectRefused(kPlusieursServices, tab, button("Cmd_OK"));
  }
}

TEST_F(ActivitiesCheck, EveryActivityIsComparedWithTheFirst) {
  putActivity(store_, "010P03", "P", "SPASAD");
  for (const std::string& codes :
       {values({"010P01", "010P02", "010P03"}), values({"010P03", "010P01", "010P02"}),
        values({"010P01", "010P03", "010P02"})}) {
    show({{attribut::CodActSelect, codes}});
    expectRefused(kPlusieursServices, kCoordonnees, button("Cmd_OK"));
  }
}

TEST_F(ActivitiesCheck, NoServiceIsAServiceOfItsOwn) {
  putActivity(store_, "010P02", "P", "");
  show({{attribut::CodActSelect, values({"010P01", "010P02"})}});
  expectRefused(kPlusieursServices, kCoordonnees, button("Cmd_OK"));
  putActivity(store_, "010P01", "P", "");
  show({{attribut::CodActSelect, values({"010P01", "010P02"})}});
  expectSaved();
}

TEST_F(ActivitiesCheck, ServicesAreComparedWholeWithTheirMarks) {
  putActivity(store_, "010P01", "P", values({"SAAD", "A"}));
  putActivity(store_, "010P02", "P", values({"SAAD", "B"}));
  show({{attribut::CodActSelect, values({"010P01", "010P02"})}});
  expectRefused(kPlusieursServices, kCoordonnees, button("Cmd_OK"));
}

TEST_F(ActivitiesCheck, ACodeThatNoActivityHasBelongsToNoService) {
  show({{attribut::CodActSelect, values({"PERDU", "010P01", "", "010P02"})}});
  expectSaved();
  putActivity(store_, "010P02", "P", "SPASAD");
  show({{attribut::CodActSelect, values({"010P01", "PERDU", "010P02"})}});
  expectRefused(kPlusieursServices, kCoordonnees, button("Cmd_OK"));
}

TEST_F(ActivitiesCheck, TheServiceIsReadFromTheStoreAtTheCheck) {
  show({{attribut::CodActSelect, values({"010P01", "010P02"})}});
  putActivity(store_, "010P02", "P", "SPASAD");
  expectRefused(kPlusieursServices, kCoordonnees, button("Cmd_OK"));
}

TEST_F(ActivitiesCheck, AnActivityThatCannotBeReadEndsTheSaveQuietly) {
  show({{attribut::CodActSelect, values({"010P01", "010P02"})}});
  user_->fill(box("Txt_RaisonOrgChg"), "Changée");
  store_.fail(CallKind::ReadRecord, "ACTIVITES");
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(state(), kExisting);
  EXPECT_EQ(box("Txt_RaisonOrgChg").text(), "Changée");
  expectNothingWritten();
  EXPECT_THROW(control_->Verif_Ong6(), store::StoreError);
  store_.stopFailing();
  expectSaved();
  EXPECT_EQ(attribute("001", attribut::RaisonOrgChg), "Changée");
}

// --- 5. "Sans incidence comptable"

TEST_F(ActivitiesCheck, WithoutAccountsIsRefusedOnTheRulesPage) {
  show({{attribut::IncidCompta, "1"}});
  expectRefused(kSansCompta, kRegles, child<CheckBox>("Cac_IncidCompta"));
  user_->click(child<CheckBox>("Cac_IncidCompta"));
  expectSaved();
}

// --- 6. Hours

TEST_F(ActivitiesCheck, ProviderActivitiesInAmountAreRefusedOnTheCoveragePage) {
  show({{attribut::AttribOrgChg, "M"}});
  expectRefused(kPasEnHeures, kPriseEnCharge, option("Opt_HeureOrgChg"));
  user_->click(option("Opt_HeureOrgChg"));
  expectSaved();
  EXPECT_EQ(attribute("001", attribut::AttribOrgChg), "H");
}

TEST_F(ActivitiesCheck, ProviderActivitiesWithoutAttributionAreRefused) {
  show({{attribut::AttribOrgChg, ""}});
  EXPECT_FALSE(control_->Verif_Ong6());
  expectBox(kPasEnHeures, Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), kPriseEnCharge);
  expectNothingWritten();
}

// --- Order

TEST_F(ActivitiesCheck, TheChecksComeInTheirOrder) {
  putActivity(store_, "010M02", "M", "SPASAD");
  putActivity(store_, "010P02", "P", "SPASAD");
  // Each body breaks the rule that is told and a later one.
  show({{attribut::TypeOrgChg, "C"},
        {attribut::Entite, ""},
        {attribut::CodActSelect, values({"010M01", "010M02"})},
        {attribut::IncidCompta, "1"}});
  expectRefused(kSansEntite, kActivites, box("Txt_Entite"));
  show({{attribut::CodActSelect, ""}, {attribut::IncidCompta, "1"}});
  expectRefused(kSansActivite, kActivites, child<ListBox>("Lst_Activite"));
  show({{attribut::TypeOrgChg, "C"}, {attribut::CodActSelect, values({"010M01", "010M02"})}});
  expectRefused(kCaissePasPrincipale, kCoordonnees, button("Cmd_OK"));
  show({{attribut::AttribOrgChg, "M"},
        {attribut::CodActSelect, values({"010P01", "010P02"})},
        {attribut::IncidCompta, "1"}});
  expectRefused(kPlusieursServices, kCoordonnees, button("Cmd_OK"));
  show({{attribut::AttribOrgChg, "M"}, {attribut::IncidCompta, "1"}});
  expectRefused(kSansCompta, kRegles, child<CheckBox>("Cac_IncidCompta"));
  show({{attribut::AttribOrgChg, "M"}});
  expectRefused(kPasEnHeures, kPriseEnCharge, option("Opt_HeureOrgChg"));
}

TEST_F(ActivitiesCheck, TheFirstRefusalReadsNoActivity) {
  show({{attribut::Entite, ""}});
  press("Cmd_OK");
  expectBox(kSansEntite, Icon::Exclamation);
  EXPECT_TRUE(store_.calls().empty());
}

TEST_F(ActivitiesCheck, ARefusedPageWritesNothingIntoTheRecord) {
  show({{attribut::AttribOrgChg, "M"}});
  user_->click(tabs(), kActivites);
  user_->click(option("Opt_DimJF"));
  press("Cmd_OK");
  expectBox(kPasEnHeures, Icon::Exclamation);
  EXPECT_TRUE(option("Opt_DimJF").value());
  control_->Afficher_Ong6();
  EXPECT_TRUE(option("Opt_Totalite").value());
}

TEST_F(ActivitiesCheck, ARefusedCreationDrawsNoCode) {
  beginCreation();
  user_->click(tabs(), kActivites);
  user_->fill(box("Txt_Entite"), "");
  press("Cmd_OK");
  expectBox(kSansEntite, Icon::Exclamation);
  EXPECT_EQ(state(), kCreating);
  EXPECT_EQ(tabs().tab(), kActivites);
  expectNothingWritten();
}

// --- Every combination

// What may be combined, each rule on its own.
using Pair = std::pair<std::string, std::string>;  // type of body, type of its activities
const std::array<std::string, 3> kBodies{"P", "C", ""};
const std::array<std::string, 6> kTypes{"P", "M", "I", "S", "X", ""};
const std::set<Pair> kAgencyForPrincipalBodiesOnly{{"C", "M"}, {"", "M"}};
const std::set<Pair> kMayGoWithoutAccounts{{"P", "M"}, {"C", "M"}, {"", "M"}, {"C", "P"}};
const std::set<Pair> kInHoursOnly{{"P", "P"}};

struct Combination {
  std::string body;
  std::string activities;  // "" for none
  bool severalTypes;       // of the entity, where none is covered
  std::string attribution;
  bool withoutAccounts;

  std::string told() const {
    return "body " + body + ", activities " + activities + (severalTypes ? "(several)" : "") +
           ", attribution " + attribution + (withoutAccounts ? ", without accounts" : "");
  }
  // The first rule that it breaks, in the order in which they are checked; "" when none.
  std::string broken() const {
    const Pair pair{body, activities};
    if (severalTypes) return kSansActivite;
    if (kAgencyForPrincipalBodiesOnly.contains(pair)) return kCaissePasPrincipale;
    if (withoutAccounts && !kMayGoWithoutAccounts.contains(pair)) return kSansCompta;
    if (kInHoursOnly.contains(pair) && attribution != "H") return kPasEnHeures;
    return "";
  }
};

std::vector<Combination> combinations() {
  std::vector<Combination> all;
  for (const std::string& body : kBodies) {
    for (const std::string& type : kTypes) {
      for (const char* attribution : {"H", "M", ""}) {
        for (const bool without : {false, true}) {
          all.push_back({body, type, false, attribution, without});
          if (type.empty()) all.push_back({body, type, true, attribution, without});
        }
      }
    }
  }
  return all;
}

TEST_F(ActivitiesCheck, EveryCombinationIsAllowedOrRefusedAsTheRulesSay) {
  const std::map<std::string, int> tabOf{{kSansActivite, kActivites},
                                         {kCaissePasPrincipale, kCoordonnees},
                                         {kSansCompta, kRegles},
                                         {kPasEnHeures, kPriseEnCharge},
                                         {kSansAttribution, kPriseEnCharge}};
  std::map<std::string, int> counted;
  for (const Combination& c : combinations()) {
    SCOPED_TRACE(c.told());
    const bool oneType = c.activities.empty() && !c.severalTypes;
    show({{attribut::TypeOrgChg, c.body},
          {attribut::AttribOrgChg, c.attribution},
          {attribut::Entite, oneType ? "020" : "010"},
          {attribut::CodActSelect, c.activities.empty() ? "" : "010" + c.activities + "01"},
          {attribut::IncidCompta, c.withoutAccounts ? "1" : "0"}});
    const std::string broken = c.broken();
    ++counted[broken];
    EXPECT_EQ(control_->Verif_Ong6(), broken.empty());
    if (!broken.empty()) expectBox(broken, Icon::Exclamation);
    expectNoBox();
    user_->click(tabs(), kCoordonnees);
    store_.forgetCalls();
    press("Cmd_OK");
    // Without an attribution the coverage page refuses first.
    const std::string told = c.attribution.empty() ? kSansAttribution : broken;
    if (told.empty()) {
      expectNoBox();
      EXPECT_EQ(state(), kEmpty);
      continue;
    }
    expectBox(told, Icon::Exclamation);
    EXPECT_EQ(tabs().tab(), tabOf.at(told));
    EXPECT_EQ(state(), kExisting);
    expectNothingWritten();
  }
  const std::map<std::string, int> expected{{"", 52},
                                            {kSansActivite, 18},
                                            {kCaissePasPrincipale, 12},
                                            {kSansCompta, 42},
                                            {kPasEnHeures, 2}};
  EXPECT_EQ(counted, expected);
}

}  // namespace
}  // namespace behaviour
