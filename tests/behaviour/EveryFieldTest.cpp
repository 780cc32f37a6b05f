// Every field of every page, changed alone: the record changes in its own attribute and in those
// that are coupled to it, and leaving asks.
#include <functional>
#include <map>
#include <set>

#include "store/Layouts.h"
#include "tests/behaviour/CoverageTest.h"

namespace behaviour {
namespace {

const std::string kMark(1, store::kValueMark);

using Attributes = std::map<int, std::string>;

class FullBody : public ControlTest {
 public:
  FullBody() {
    fillTables(store_);
    store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "O");
    for (const char* account :
         {"0104110000001", "0104110000002", "0107060000001", "0107060000002", "0207060000001"}) {
      store_.put("PLANCOMPTABLE", account, {std::string("COMPTE ") + account});
    }
    store_.put("ASSOCIATION", "020", {"SECOND VAL"});
    store_.put("ACTIVITES", "010P02",
               {"Garde", "010", "", "", "", "", "", "", "", "", "", "P", "SAAD"});
    store_.put("ACTIVITES", "020P01",
               {"Repas", "020", "", "", "", "", "", "", "", "", "", "P", "SAAD"});
  }
  // 001 with every attribute that a page writes, and those given instead; on screen.
  void put(const Attributes& instead) {
    for (const auto& [number, text] : kFull) store_.set("ORGPRISECHARGE", "001", number, text);
    for (const auto& [number, text] : instead) store_.set("ORGPRISECHARGE", "001", number, text);
    start();
    lookUp("001");
    desktop_.clearJournal();
    store_.forgetCalls();
  }
  // The attributes that differ from those before, as they are now.
  Attributes changedSince(const store::DynamicArray& before) {
    Attributes changed;
    for (int number = 1; number <= attribut::Dernier; ++number) {
      const std::string now = attribute("001", number);
      if (now != before.get(number)) changed[number] = now;
    }
    return changed;
  }
  void save(Caller at = Caller::here()) {
    const auto trace = called("save", at);
    EXPECT_TRUE(press("Cmd_OK"));
    expectNoBox();
    EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
  }

  // A user's deeds; each must be possible.
  void front(int tab, Caller at = Caller::here()) {
    const auto trace = called("front", at);
    EXPECT_TRUE(user_->click(tabs(), tab));
  }
  void fill(std::string_view name, std::string_view keys, Caller at = Caller::here()) {
    const auto trace = called("fill", at);
    EXPECT_TRUE(user_->fill(*control_->surface().find(name), keys)) << name;
  }
  void toggle(std::string_view name, Caller at = Caller::here()) {
    const auto trace = called("toggle", at);
    EXPECT_TRUE(user_->click(child<CheckBox>(name))) << name;
  }
  void set(std::string_view name, Caller at = Caller::here()) {
    const auto trace = called("set", at);
    EXPECT_TRUE(user_->click(child<toolkit::OptionButton>(name))) << name;
  }
  void choose(std::string_view name, int line, Caller at = Caller::here()) {
    const auto trace = called("choose", at);
    EXPECT_TRUE(user_->choose(child<ComboBox>(name), line)) << name;
  }
  void select(std::string_view name, int line, Caller at = Caller::here()) {
    const auto trace = called("select", at);
    EXPECT_TRUE(user_->click(child<ListBox>(name), line)) << name;
  }
  void twice(std::string_view name, int line, Caller at = Caller::here()) {
    const auto trace = called("twice", at);
    EXPECT_TRUE(user_->dblClick(child<ListBox>(name), line)) << name;
  }
  void scroll(std::string_view name, int value, Caller at = Caller::here()) {
    const auto trace = called("scroll", at);
    EXPECT_TRUE(user_->scroll(child<toolkit::ScrollBar>(name), value)) << name;
  }
  void push(std::string_view name, Caller at = Caller::here()) {
    const auto trace = called("push", at);
    EXPECT_TRUE(press(name)) << name;
  }
  // Changes one zone of the first row of a list editor.
  void changeRow(std::string_view list, std::string_view zone, std::string_view keys,
                 std::string_view ok, Caller at = Caller::here()) {
    const auto trace = called("changeRow", at);
    twice(list, 0);
    fill(zone, keys);
    push(ok);
  }
  // Saving is refused, and what it asks for is typed where it has put the focus.
  void typeWhatSavingAsksFor(std::string_view keys, Caller at = Caller::here()) {
    const auto trace = called("typeWhatSavingAsksFor", at);
    push("Cmd_OK");
    EXPECT_PRED_FORMAT2(boxCount, desktop_.takeBoxes(), 1U);
    EXPECT_TRUE(user_->type(keys));
  }
  void newScale(std::string_view date, Caller at = Caller::here()) {
    const auto trace = called("newScale", at);
    desktop_.answer(Answer::Yes);
    push("Cmd_NouveauBareme");
    desktop_.takeBoxes();
    EXPECT_TRUE(user_->type(date));
  }

  static const Attributes kFull;
};

const Attributes FullBody::kFull{{attribut::SigleOrgChg, "DOMUS"},
                                 {attribut::RaisonOrgChg, "Domus Mutuelle"},
                                 {attribut::AdrComplement, "Bât. A"},
                                 {attribut::AdrNumero, "12"},
                                 {attribut::AdrNatureVoie, "R"},
                                 {attribut::AdrVoie, "des Lilas"},
                                 {attribut::AdrLocalite, "Le Bourg"},
                                 {attribut::AdrCodePostal, "63000"},
                                 {attribut::AdrVille, "Clermont"},
                                 {attribut::AdrTelephone, "0400000001"},
                                 {attribut::AdrFax, "0400000002"},
                                 {attribut::AdrMail, "contact@domus.example"},
                                 {attribut::InterlocDossOrgChg, "Mme Dossier"},
                                 {attribut::InterlocFactOrgChg, "M. Facture"},
                                 {attribut::PeriodFactOrgChg, "M"},
                                 {attribut::TypeOrgChg, "P"},
                                 {attribut::PlafondOrg, "3"},
                                 {attribut::RenouvOrgChg, "0"},
                                 {attribut::PieceRenouOrgChg, "AI"},
                                 {attribut::DebitOrgChg, "4110000001"},
                                 {attribut::CreditOrgChg, "4110000002"},
                                 {attribut::AttribOrgChg, "H"},
                                 {attribut::DateRembOrgChg, "21186" + kMark + "20821"},
                                 {attribut::TxRembOrgChg, "2000" + kMark + "1800"},
                                 {attribut::TxRembMajOrgChg, "2500" + kMark},
                                 {attribut::PrestServOrgChg, "1500" + kMark},
                                 {attribut::DebAbatHOrgChg, "0"},
                                 {attribut::FinAbatHOrgChg, "1000"},
                                 {attribut::PourcentAbatOrgChg, "500"},
                                 {attribut::DebRevSeulOrgChg, "10000"},
                                 {attribut::FinRevSeulOrgChg, "20000"},
                                 {attribut::DebRevMenOrgChg, "15000"},
                                 {attribut::FinRevMenOrgChg, "25000"},
                                 {attribut::BaremPrecOrgChg, "300"},
                                 {attribut::BaremCoursOrgChg, "400"},
                                 {attribut::DatBaremPrec, "20821"},
                                 {attribut::DatBaremCours, "21186"},
                                 {attribut::Bareme, "R"},
                                 {attribut::GestPartBenef, "%"},
                                 {attribut::Abonnement, "0"},
                                 {attribut::StatsOrgChg, "CD"},
                                 {attribut::DemAccordOrgChg, "1"},
                                 {attribut::TypeBordOrgChg, "I"},
                                 {attribut::Entite, "010"},
                                 {attribut::CodActSelect, "010P01"},
                                 {attribut::NbExemplOrgChg, "2"},
                                 {attribut::IdentMagnetOrgChg, "ID"},
                                 {attribut::IncidCompta, "0"},
                                 {attribut::GestionExclu, "1"},
                                 {attribut::LettresInfo, ""},
                                 {attribut::AjusTarif, "0"},
                                 {attribut::CptPrestationService, "7060000001"},
                                 {attribut::CoutGlobal, "0"},
                                 {attribut::CpteProdAide, "7060000001"},
                                 {attribut::FactAnticip, "1"},
                                 {attribut::CodeThesaurus, "TH"},
                                 {attribut::DesFacture, "Prise en charge"},
                                 {attribut::DelaiPaiement, "30"},
                                 {attribut::ParamSelecOrgChg, "1"},
                                 {attribut::ParamTriSelect, "6"}};

struct Field {
  const char* name;
  std::vector<const char*> controls;  // through which the user enters it
  int tab;
  Attributes instead;  // of the full body's
  std::function<void(FullBody&)> deed;
  Attributes changed;
};

void PrintTo(const Field& field, std::ostream* out) { *out << field.name; }

Field text(const char* control, int tab, int attribute, const char* keys) {
  return {control,
          {control},
          tab,
          {},
          [control, keys](FullBody& user) { user.fill(control, keys); },
          {{attribute, keys}}};
}

Field box(const char* control, int tab, int attribute, const char* before, const char* after) {
  return {control,
          {control},
          tab,
          {{attribute, before}},
          [control](FullBody& user) { user.toggle(control); },
          {{attribute, after}}};
}

Field option(const char* control, int tab, Attributes instead, Attributes changed) {
  return {control,
          {control},
          tab,
          std::move(instead),
          [control](FullBody& user) { user.set(control); },
          std::move(changed)};
}

Field row(const char* list, const char* zone, const char* ok, int tab, int attribute,
          const char* keys, const std::string& after) {
  return {zone,
          {list, zone},
          tab,
          {},
          [=](FullBody& user) { user.changeRow(list, zone, keys, ok); },
          {{attribute, after}}};
}

const Attributes kComplementary{
    {attribut::TypeOrgChg, "C"}, {attribut::GestionExclu, "0"}, {attribut::FactAnticip, "0"}};

Attributes with(Attributes some, const Attributes& more) {
  for (const auto& [number, text] : more) some[number] = text;
  return some;
}

std::vector<Field> coordonnees() {
  return {{"Txt_SigleOrgChg",
           {"Txt_SigleOrgChg"},
           0,
           {{attribut::SigleOrgChg, ""}},
           [](FullBody& user) { user.typeWhatSavingAsksFor("NEUF"); },
           {{attribut::SigleOrgChg, "NEUF"}}},
          text("Txt_RaisonOrgChg", 0, 2, "Domus"),
          text("Txt_Complement", 0, 3, "Bât. B"),
          text("Txt_NumVoie", 0, 4, "14"),
          {"Cbo_NatureVoie",
           {"Cbo_NatureVoie"},
           0,
           {},
           [](FullBody& user) { user.choose("Cbo_NatureVoie", 0); },
           {{attribut::AdrNatureVoie, "AV"}}},
          text("Txt_NomVoie", 0, 6, "des Roses"),
          text("Txt_Localite", 0, 7, "Le Haut"),
          text("Txt_CodePostal", 0, 8, "63100"),
          text("Txt_Ville", 0, 9, "Riom"),
          text("Txt_Telephone", 0, 10, "0411111111"),
          text("Txt_Fax", 0, 11, "0422222222"),
          text("Txt_Email", 0, 12, "autre@domus.example"),
          text("Txt_InterlocDossOrgChg", 0, 15, "M. Autre"),
          text("Txt_InterlocFactOrgChg", 0, 16, "Mme Autre")};
}

std::vector<Field> regles() {
  return {option("Opt_TypeComplOrgChg", 1, {}, kComplementary),
          option("Opt_TypePrincipalOrgChg", 1, kComplementary,
                 {{attribut::TypeOrgChg, "P"}, {attribut::GestPartBenef, "M"}}),
          option("Opt_PlafMensRepOrgChg", 1, {}, {{attribut::PlafondOrg, "1"}}),
          option("Opt_PlafMensOrgChg", 1, {}, {{attribut::PlafondOrg, "2"}}),
          option("Opt_PlafGlobalOrgChg", 1, {{attribut::PlafondOrg, "1"}},
                 {{attribut::PlafondOrg, "3"}}),
          {"Cbo_RenouvOrgChg",
           {"Cbo_RenouvOrgChg"},
           1,
           {},
           [](FullBody& user) { user.choose("Cbo_RenouvOrgChg", 3); },
           {{attribut::RenouvOrgChg, "3"}}},
          {"Lst_PiecePossibleOrgChg",
           {"Lst_PiecePossibleOrgChg"},
           1,
           {},
           [](FullBody& user) { user.twice("Lst_PiecePossibleOrgChg", 1); },
           {{attribut::PieceRenouOrgChg, "AI" + kMark + "RI"}}},
          {"Cmd_DroiteRenouv",
           {},
           1,
           {},
           [](FullBody& user) {
             user.select("Lst_PiecePossibleOrgChg", 1);
             user.push("Cmd_DroiteRenouv");
           },
           {{attribut::PieceRenouOrgChg, "AI" + kMark + "RI"}}},
          {"Lst_PieceRenouOrgChg",
           {"Lst_PieceRenouOrgChg"},
           1,
           {},
           [](FullBody& user) { user.twice("Lst_PieceRenouOrgChg", 0); },
           {{attribut::PieceRenouOrgChg, ""}}},
          {"Cbo_StatsOrgChg",
           {"Cbo_StatsOrgChg"},
           1,
           {},
           [](FullBody& user) { user.choose("Cbo_StatsOrgChg", 1); },
           {{attribut::StatsOrgChg, "MU"}}},
          {"Cac_DemAccordOrgChg_cleared",
           {"Cac_DemAccordOrgChg"},
           1,
           {},
           [](FullBody& user) { user.toggle("Cac_DemAccordOrgChg"); },
           {{attribut::DemAccordOrgChg, "0"}, {attribut::FactAnticip, "0"}}},
          {"Cac_DemAccordOrgChg_set",
           {},
           1,
           {{attribut::DemAccordOrgChg, "0"}, {attribut::FactAnticip, "0"}},
           [](FullBody& user) { user.toggle("Cac_DemAccordOrgChg"); },
           {{attribut::DemAccordOrgChg, "1"}}},
          box("Cac_FactAnticip", 1, 57, "0", "1"),
          box("Cac_LettresInfo", 1, 52, "", "1"),
          {"Cac_LettresInfo_cleared",
           {},
           1,
           {{attribut::LettresInfo, "1"}},
           [](FullBody& user) { user.toggle("Cac_LettresInfo"); },
           {{attribut::LettresInfo, ""}}},
          {"Cbo_PeriodFactOrgChg",
           {"Cbo_PeriodFactOrgChg"},
           1,
           {},
           [](FullBody& user) { user.choose("Cbo_PeriodFactOrgChg", 1); },
           {{attribut::PeriodFactOrgChg, "T"}}},
          {"Cac_IncidCompta",
           {"Cac_IncidCompta"},
           1,
           kComplementary,
           [](FullBody& user) { user.toggle("Cac_IncidCompta"); },
           {{attribut::IncidCompta, "1"},
            {attribut::DebitOrgChg, ""},
            {attribut::CreditOrgChg, ""},
            {attribut::CpteProdAide, ""}}},
          {"Cac_IncidCompta_cleared",
           {},
           1,
           with(kComplementary, {{attribut::IncidCompta, "1"},
                                 {attribut::DebitOrgChg, ""},
                                 {attribut::CreditOrgChg, ""},
                                 {attribut::CpteProdAide, ""}}),
           [](FullBody& user) {
             user.toggle("Cac_IncidCompta");
             user.typeWhatSavingAsksFor("4110000002");
             user.typeWhatSavingAsksFor("4110000001");
           },
           {{attribut::IncidCompta, "0"},
            {attribut::DebitOrgChg, "4110000002"},
            {attribut::CreditOrgChg, "4110000001"}}},
          text("Txt_DebitOrgChg", 1, 22, "4110000002"),
          text("Txt_CreditOrgChg", 1, 23, "4110000001"),
          text("Txt_CpteProdAide", 1, 56, "7060000002"),
          {"Cbo_DebitOrgChg",
           {"Cbo_DebitOrgChg"},
           1,
           {},
           [](FullBody& user) {
             user.fill("Cbo_DebitOrgChg", "compte 0104110000002\r");
             user.choose("Cbo_DebitOrgChg", 0);
           },
           {{attribut::DebitOrgChg, "4110000002"}}},
          {"Cbo_CreditOrgChg",
           {"Cbo_CreditOrgChg"},
           1,
           {},
           [](FullBody& user) {
             user.fill("Cbo_CreditOrgChg", "compte\r");
             user.choose("Cbo_CreditOrgChg", 0);
           },
           {{attribut::CreditOrgChg, "4110000001"}}},
          {"Cbo_CpteProdAide",
           {"Cbo_CpteProdAide"},
           1,
           {},
           [](FullBody& user) {
             user.fill("Cbo_CpteProdAide", "compte 0107060000002\r");
             user.choose("Cbo_CpteProdAide", 0);
           },
           {{attribut::CpteProdAide, "7060000002"}}}};
}

std::vector<Field> priseEnCharge() {
  const char* const ok = "Cmd_OKTaux";
  const char* const okAbat = "Cmd_OKAbat";
  return {option("Opt_MontantOrgChg", 2, kComplementary, {{attribut::AttribOrgChg, "M"}}),
          option("Opt_HeureOrgChg", 2, {{attribut::AttribOrgChg, "M"}},
                 {{attribut::AttribOrgChg, "H"}, {attribut::GestPartBenef, "M"}}),
          {"Opt_HeureOrgChg_of_a_complementary_body",
           {},
           2,
           with(kComplementary, {{attribut::AttribOrgChg, "M"}}),
           [](FullBody& user) { user.set("Opt_HeureOrgChg"); },
           {{attribut::AttribOrgChg, "H"}}},
          row("Lst_DateRembOrgChg", "Txt_DateRembOrgChg", ok, 2, 25, "02012026",
              "21187" + kMark + "20821"),
          row("Lst_TxRembOrgChg", "Txt_TxRembOrgChg", ok, 2, 26, "21", "2100" + kMark + "1800"),
          row("Lst_TxRembMajOrgChg", "Txt_TxRembMajOrgChg", ok, 2, 27, "26", "2600" + kMark),
          row("Lst_PrestServOrgChg", "Txt_PrestServOrgChg", ok, 2, 28, "16", "1600" + kMark),
          row("Lst_DebAbatHOrgChg", "Txt_DebAbatHOrgChg", okAbat, 2, 29, "1", "100"),
          row("Lst_FinAbatHOrgChg", "Txt_FinAbatHOrgChg", okAbat, 2, 30, "8", "800"),
          row("Lst_PourcentAbatOrgChg", "Txt_PourcentAbatOrgChg", okAbat, 2, 31, "7,5", "750"),
          text("Txt_DesFacture", 2, 59, "Autre"),
          box("Cac_AjusTarif", 2, 53, "0", "1"),
          box("Cac_CoutGlobal", 2, 55, "0", "1"),
          text("Txt_CodeCptPrestationService", 2, 54, "7060000002"),
          {"Cbo_CptPrestationService",
           {"Cbo_CptPrestationService"},
           2,
           {},
           [](FullBody& user) {
             user.fill("Cbo_CptPrestationService", "compte 0107060000002\r");
             user.choose("Cbo_CptPrestationService", 0);
           },
           {{attribut::CptPrestationService, "7060000002"}}}};
}

std::vector<Field> participation() {
  const char* const ok = "Cmd_OKPart";
  return {row("Lst_DebRevSeulOrgChg", "Txt_DebRevSeulOrgChg", ok, 3, 32, "90,5", "9050"),
          row("Lst_FinRevSeulOrgChg", "Txt_FinRevSeulOrgChg", ok, 3, 33, "190", "19000"),
          row("Lst_DebRevMenOrgChg", "Txt_DebRevMenOrgChg", ok, 3, 34, "140", "14000"),
          row("Lst_FinRevMenOrgChg", "Txt_FinRevMenOrgChg", ok, 3, 35, "240", "24000"),
          row("Lst_BaremCoursOrgChg", "Txt_BaremCoursOrgChg", ok, 3, 37, "4,5", "450"),
          {"Cmd_NouveauBareme",
           {"Lst_BaremPrecOrgChg", "Txt_DatBaremPrec"},
           3,
           {},
           [](FullBody& user) { user.newScale("02012026"); },
           {{attribut::BaremPrecOrgChg, "400"},
            {attribut::DatBaremPrec, "21186"},
            {attribut::DatBaremCours, "21187"}}},
          {"Txt_DatBaremCours",
           {"Txt_DatBaremCours"},
           3,
           {{attribut::DatBaremCours, ""}},
           [](FullBody& user) { user.typeWhatSavingAsksFor("02012026"); },
           {{attribut::DatBaremCours, "21187"}}},
          option("Opt_Quotient", 3, {}, {{attribut::Bareme, "Q"}}),
          option("Opt_Ressource", 3, {{attribut::Bareme, "Q"}}, {{attribut::Bareme, "R"}}),
          option("Opt_GestPartMont", 3, {}, {{attribut::GestPartBenef, "M"}}),
          option("Opt_GestPartPourc", 3, {{attribut::GestPartBenef, "M"}},
                 {{attribut::GestPartBenef, "%"}}),
          box("Cac_Abonnement", 3, 42, "0", "1")};
}

std::vector<Field> bordereau() {
  // The parameters by their labels: Heures (2), Nom (1).
  return {option("Opt_IndBordOrgChg", 4, {{attribut::TypeBordOrgChg, "R"}},
                 {{attribut::TypeBordOrgChg, "I"}}),
          option("Opt_RecapBordOrgChg", 4, {}, {{attribut::TypeBordOrgChg, "R"}}),
          option("Opt_MFPBordOrgChg", 4, {},
                 {{attribut::TypeBordOrgChg, "M"},
                  {attribut::DebAbatHOrgChg, ""},
                  {attribut::FinAbatHOrgChg, ""},
                  {attribut::PourcentAbatOrgChg, ""}}),
          {"Bdh_NbExemp",
           {"Bdh_NbExemp"},
           4,
           {},
           [](FullBody& user) { user.scroll("Bdh_NbExemp", 4); },
           {{attribut::NbExemplOrgChg, "4"}}},
          text("Txt_NbExEmplOrgChg", 4, 48, "7"),
          text("Txt_IdentMagnetOrgChg", 4, 49, "IM"),
          text("Txt_CodeThesaurus", 4, 58, "TS"),
          {"Lst_ParamPossOrgChg",
           {"Lst_ParamPossOrgChg"},
           4,
           {},
           [](FullBody& user) { user.twice("Lst_ParamPossOrgChg", 0); },
           {{attribut::ParamSelecOrgChg, "1" + kMark + "2"}}},
          {"Lst_ParamSelecOrgChg",
           {"Lst_ParamSelecOrgChg"},
           4,
           {{attribut::ParamSelecOrgChg, "1" + kMark + "2"}},
           [](FullBody& user) { user.twice("Lst_ParamSelecOrgChg", 0); },
           {{attribut::ParamSelecOrgChg, "2"}}},
          {"Cmd_BasBord",
           {},
           4,
           {{attribut::ParamSelecOrgChg, "1" + kMark + "2"}},
           [](FullBody& user) {
             user.select("Lst_ParamSelecOrgChg", 0);
             user.push("Cmd_BasBord");
           },
           {{attribut::ParamSelecOrgChg, "2" + kMark + "1"}}},
          {"Lst_ParamTriPos",
           {"Lst_ParamTriPos"},
           4,
           {{attribut::ParamTriSelect, "6"}},
           [](FullBody& user) { user.twice("Lst_ParamTriPos", 0); },
           {{attribut::ParamTriSelect, "6" + kMark + "1"}}},
          {"Lst_ParamTriSelect",
           {"Lst_ParamTriSelect"},
           4,
           {{attribut::ParamTriSelect, "6"}},
           [](FullBody& user) { user.twice("Lst_ParamTriSelect", 0); },
           {{attribut::ParamTriSelect, ""}}}};
}

std::vector<Field> activites() {
  return {{"Txt_Entite",
           {"Txt_Entite"},
           5,
           {},
           [](FullBody& user) { user.fill("Txt_Entite", "020"); },
           {{attribut::Entite, "020"}, {attribut::CodActSelect, ""}}},
          {"Cbo_Entite",
           {"Cbo_Entite"},
           5,
           {},
           [](FullBody& user) { user.choose("Cbo_Entite", 1); },
           {{attribut::Entite, "020"}, {attribut::CodActSelect, ""}}},
          {"Lst_Activite",
           {"Lst_Activite"},
           5,
           {},
           [](FullBody& user) { user.twice("Lst_Activite", 1); },
           {{attribut::CodActSelect, "010P01" + kMark + "010P02"}}},
          {"Lst_ActSelect",
           {"Lst_ActSelect"},
           5,
           {},
           [](FullBody& user) { user.twice("Lst_ActSelect", 0); },
           {{attribut::CodActSelect, ""}}},
          option("Opt_Totalite", 5, {}, {{attribut::GestionExclu, "0"}}),
          option("Opt_DimJF", 5, {{attribut::GestionExclu, "0"}}, {{attribut::GestionExclu, "1"}}),
          option("Opt_Semaine", 5, {}, {{attribut::GestionExclu, "2"}})};
}

std::vector<Field> everyField() {
  std::vector<Field> all;
  for (const auto& page :
       {coordonnees(), regles(), priseEnCharge(), participation(), bordereau(), activites()}) {
    all.insert(all.end(), page.begin(), page.end());
  }
  return all;
}

class EveryField : public FullBody, public testing::WithParamInterface<Field> {};

TEST_P(EveryField, ChangesItsOwnAttributeAndThoseCoupledToIt) {
  const Field& field = GetParam();
  put(field.instead);
  const store::DynamicArray before = store_.record("ORGPRISECHARGE", "001");
  front(field.tab);
  field.deed(*this);
  save();
  EXPECT_PRED_FORMAT2(sameAttributes, changedSince(before), field.changed);
}

TEST_P(EveryField, IsAskedAboutOnLeaving) {
  const Field& field = GetParam();
  put(field.instead);
  front(field.tab);
  field.deed(*this);
  desktop_.answer(Answer::Cancel);
  push("Cmd_Sortir");
  expectBox("Voulez-vous enregistrer les modifications apportées à cet article ?", Icon::Question,
            toolkit::Buttons::YesNoCancel);
  EXPECT_FALSE(control_->W_Sortir());
}

TEST_P(EveryField, IsNotAskedAboutWhenItWasShownAlone) {
  const Field& field = GetParam();
  put(field.instead);
  for (int tab = 0; tab < tabs().tabs(); ++tab) front(tab);
  push("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
  expectNothingWritten();
}

INSTANTIATE_TEST_SUITE_P(OfEveryPage, EveryField, testing::ValuesIn(everyField()),
                         [](const auto& field) { return std::string(field.param.name); });

class FullBodyTest : public FullBody {};

TEST_F(FullBodyTest, SavedUnchangedKeepsItsText) {
  put({});
  const std::string before = store_.record("ORGPRISECHARGE", "001").text();
  save();
  EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), before);
}

// What is shown, but never entered in.
const std::set<std::string> kShownOnly{"Lst_LongParam",  "Lst_CodActSelect", "Lst_TypeAct",
                                       "Bdv_TauxOrgChg", "Bdv_AbatOrgChg",   "Bdv_Bareme"};

void inputsBelow(const toolkit::Container& container, std::set<std::string>& names) {
  using toolkit::Kind;
  for (const toolkit::Control* control : container.children()) {
    switch (control->kind()) {
      case Kind::TextBox:
      case Kind::ComboBox:
      case Kind::ListBox:
      case Kind::OptionButton:
      case Kind::CheckBox:
      case Kind::ScrollBar:
        if (!kShownOnly.contains(control->name())) names.insert(control->name());
        break;
      default:
        break;
    }
    if (control->isContainer()) {
      inputsBelow(static_cast<const toolkit::Container&>(*control), names);
    }
  }
}

TEST_F(FullBodyTest, NoFieldIsLeftOutOfTheTable) {
  std::set<std::string> fields{"Txt_SigleOrgChg"};
  inputsBelow(tabs(), fields);
  std::set<std::string> covered;
  for (const Field& field : everyField()) {
    covered.insert(field.controls.begin(), field.controls.end());
  }
  EXPECT_EQ(covered, fields);
  std::set<int> attributes;
  for (const Field& field : everyField()) {
    for (const auto& [number, text] : field.changed) attributes.insert(number);
  }
  // Two are kept free for the address; no page shows the delay of payment.
  for (int number = 1; number <= attribut::Dernier; ++number) {
    EXPECT_EQ(attributes.contains(number), !keptFree(number) && number != attribut::DelaiPaiement)
        << bodyAttribute(number);
  }
}

}  // namespace
}  // namespace behaviour
