// The text files that the demo's store is made from are complete and agree with each other.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "store/CodeTable.h"
#include "store/Conversions.h"
#include "store/DynamicArray.h"
#include "store/Layouts.h"
#include "text/Utf8.h"

namespace {

using store::DynamicArray;
using Records = std::map<std::string, DynamicArray>;
using Values = std::vector<std::string>;

DynamicArray recordOf(const nlohmann::json& fields) {
  DynamicArray record;
  int attribute = 0;
  for (const auto& field : fields) {
    ++attribute;
    if (field.is_string()) {
      record.set(attribute, field.get<std::string>());
    } else {
      int value = 0;
      for (const auto& each : field) record.set(attribute, ++value, each.get<std::string>());
    }
  }
  return record;
}

Records load(std::string_view file) {
  const auto path = std::filesystem::path(TESSALINE_SAMPLE) / (std::string(file) + ".jsonl");
  std::ifstream in(path);
  EXPECT_TRUE(in) << path;
  Records records;
  for (std::string line; std::getline(in, line);) {
    const auto json = nlohmann::json::parse(line);
    const auto [place, isNew] =
        records.emplace(json.at("id").get<std::string>(), recordOf(json.at("fields")));
    EXPECT_TRUE(isNew) << file << " " << place->first << " stands twice";
  }
  return records;
}

Values values(const DynamicArray& record, int attribute) {
  Values out;
  for (int v = 1; v <= record.DCount(attribute); ++v) out.emplace_back(record.get(attribute, v));
  return out;
}

std::string one(const DynamicArray& record, int attribute) {
  return std::string(record.get(attribute));
}

bool isAmong(const DynamicArray& record, int attribute, std::string_view texts) {
  const std::string_view held = record.get(attribute);
  return held.size() == 1 && texts.find(held) != std::string_view::npos;
}

class SampleData : public testing::Test {
 protected:
  static const Records& file(std::string_view name) {
    static std::map<std::string, Records, std::less<>> loaded;
    const auto found = loaded.find(name);
    return found != loaded.end() ? found->second
                                 : loaded.emplace(std::string(name), load(name)).first->second;
  }
  static const Records& bodies() { return file(store::orgprisecharge::kFile); }

  static std::set<std::string> bodiesNamedBy(std::string_view name) {
    std::set<std::string> codes;
    for (const auto& [id, record] : file(name)) codes.insert(one(record, 1));
    return codes;
  }

  // The activities that a body covers.
  static std::vector<const DynamicArray*> covered(const DynamicArray& body) {
    std::vector<const DynamicArray*> out;
    for (const auto& code : values(body, store::orgprisecharge::CodActSelect)) {
      out.push_back(&file(store::activites::kFile).at(code));
    }
    return out;
  }
};

TEST_F(SampleData, HasTheCouncilsAndComplementaryBodiesUnderThreeDigitCodes) {
  using namespace store::orgprisecharge;
  int principal = 0;
  long next = 0;
  for (const auto& [code, body] : bodies()) {
    EXPECT_EQ(code.size(), 3U);
    EXPECT_EQ(store::wholeNumber(code), ++next);
    EXPECT_TRUE(isAmong(body, TypeOrgChg, "PC")) << code;
    EXPECT_FALSE(body.get(RaisonOrgChg).empty()) << code;
    principal += body.get(TypeOrgChg) == "P" ? 1 : 0;
  }
  EXPECT_EQ(principal, 100);
  EXPECT_EQ(bodies().size(), 112U);
  EXPECT_EQ(one(bodies().at("001"), SigleOrgChg), "CD01");
  EXPECT_EQ(one(bodies().at("001"), RaisonOrgChg), "CONSEIL DEPARTEMENTAL DE L'AIN");
}

TEST_F(SampleData, AcronymsNamesAndAccountLabelsAreCapitalsThatASearchFinds) {
  const auto plain = [](const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c < 'a'; });
  };
  std::set<std::string> acronyms;
  for (const auto& [code, body] : bodies()) {
    EXPECT_TRUE(plain(one(body, 1)) && plain(one(body, 2))) << code;
    EXPECT_TRUE(acronyms.insert(one(body, 1)).second) << one(body, 1);
  }
  for (const auto& [key, account] : file("PLANCOMPTABLE")) {
    EXPECT_TRUE(plain(one(account, 1))) << key;
    EXPECT_EQ(key.size(), 13U);
    EXPECT_TRUE(file("ASSOCIATION").contains(key.substr(0, 3))) << key;
    EXPECT_EQ(key.find_first_not_of("0123456789"), std::string::npos) << key;
  }
}

TEST_F(SampleData, TheCounterStandsAtTheLastCode) {
  const DynamicArray& counter = file("COMPTEUR").at("999");
  EXPECT_EQ(one(counter, store::compteur::DernierOrgChg), bodies().rbegin()->first);
  EXPECT_FALSE(counter.get(store::compteur::InterfaceComptable).empty());
}

TEST_F(SampleData, ListsOfABodyAreAligned) {
  using namespace store::orgprisecharge;
  for (const auto& [code, body] : bodies()) {
    const auto sameCount = [&body = body](std::initializer_list<int> attributes) {
      const int first = body.DCount(*attributes.begin());
      return std::all_of(attributes.begin(), attributes.end(),
                         [&](int attribute) { return body.DCount(attribute) == first; });
    };
    EXPECT_TRUE(sameCount({DateRembOrgChg, TxRembOrgChg, TxRembMajOrgChg, PrestServOrgChg}) ||
                body.DCount(DateRembOrgChg) == 1)
        << code;
    EXPECT_TRUE(sameCount({DebAbatHOrgChg, FinAbatHOrgChg, PourcentAbatOrgChg})) << code;
    EXPECT_TRUE(sameCount({DebRevSeulOrgChg, FinRevSeulOrgChg, DebRevMenOrgChg, FinRevMenOrgChg,
                           BaremPrecOrgChg, BaremCoursOrgChg}))
        << code;
  }
}

TEST_F(SampleData, RatesAreMostRecentFirstAndInTheirBounds) {
  using namespace store::orgprisecharge;
  for (const auto& [code, body] : bodies()) {
    const int rows = body.DCount(DateRembOrgChg);
    EXPECT_EQ(rows > 0, body.get(AttribOrgChg) == "H") << code;
    for (int row = 1; row <= rows; ++row) {
      const long normal = store::wholeNumber(body.get(TxRembOrgChg, row));
      const auto increased = body.get(TxRembMajOrgChg, row);
      EXPECT_TRUE(increased.empty() || store::wholeNumber(increased) >= normal) << code;
      EXPECT_LE(store::wholeNumber(body.get(PrestServOrgChg, row)), normal) << code;
      if (row > 1) {
        EXPECT_LT(store::wholeNumber(body.get(DateRembOrgChg, row)),
                  store::wholeNumber(body.get(DateRembOrgChg, row - 1)))
            << code;
      }
    }
  }
}

TEST_F(SampleData, ScalesChainAndAreDated) {
  using namespace store::orgprisecharge;
  std::set<std::string> managements;
  for (const auto& [code, body] : bodies()) {
    managements.insert(one(body, GestPartBenef));
    EXPECT_TRUE(isAmong(body, Bareme, "QR")) << code;
    EXPECT_GT(store::wholeNumber(body.get(DatBaremCours)),
              store::wholeNumber(body.get(DatBaremPrec)))
        << code;
    for (int row = 2; row <= body.DCount(DebRevSeulOrgChg); ++row) {
      EXPECT_EQ(body.get(DebRevSeulOrgChg, row), body.get(FinRevSeulOrgChg, row - 1)) << code;
      EXPECT_EQ(body.get(DebRevMenOrgChg, row), body.get(FinRevMenOrgChg, row - 1)) << code;
    }
  }
  EXPECT_EQ(managements, (std::set<std::string>{"M", "%"}));
}

TEST_F(SampleData, BodiesKeepTheManagementRules) {
  using namespace store::orgprisecharge;
  const Records& tables = file("TABLES");
  std::set<std::string> ceilings;
  for (const auto& [code, body] : bodies()) {
    const bool principal = body.get(TypeOrgChg) == "P";
    ceilings.insert(one(body, PlafondOrg));
    EXPECT_TRUE(isAmong(body, RenouvOrgChg, "0123456")) << code;
    EXPECT_TRUE(isAmong(body, PeriodFactOrgChg, "MTF")) << code;
    EXPECT_TRUE(principal || body.get(FactAnticip) == "0") << code;
    EXPECT_TRUE(body.get(DemAccordOrgChg) == "1" || body.get(FactAnticip) == "0") << code;
    EXPECT_FALSE(body.get(Abonnement) == "1" && body.get(CoutGlobal) == "1") << code;
    EXPECT_NE(store::labelOfCode(tables.at("STATORGCHG"), body.get(StatsOrgChg)), "") << code;
    for (const auto& piece : values(body, PieceRenouOrgChg)) {
      EXPECT_NE(store::labelOfCode(tables.at("PIECESRENOUV"), piece), "") << code;
    }
  }
  EXPECT_EQ(ceilings, (std::set<std::string>{"1", "2", "3"}));
}

TEST_F(SampleData, AccountsOfABodyAreInTheChartOfItsEntity) {
  using namespace store::orgprisecharge;
  const Records& chart = file("PLANCOMPTABLE");
  for (const auto& [code, body] : bodies()) {
    for (const int attribute : {DebitOrgChg, CreditOrgChg, CptPrestationService, CpteProdAide}) {
      const std::string number = one(body, attribute);
      if (number.empty()) {
        EXPECT_EQ(body.get(IncidCompta), "1") << code;
      } else {
        EXPECT_TRUE(chart.contains(one(body, Entite) + number)) << code << " " << number;
      }
    }
    EXPECT_TRUE(body.get(CpteProdAide).empty() || body.get(CpteProdAide)[0] == '7') << code;
  }
}

TEST_F(SampleData, CoveredActivitiesAreOfOneTypeOneServiceAndAllowed) {
  using namespace store::orgprisecharge;
  std::set<std::string> types;
  for (const auto& [code, body] : bodies()) {
    const bool principal = body.get(TypeOrgChg) == "P";
    ASSERT_GT(body.DCount(CodActSelect), 0) << code;
    const DynamicArray& first = *covered(body).front();
    const std::string type = one(first, store::activites::TypeActivite);
    types.insert(type);
    for (const DynamicArray* activity : covered(body)) {
      EXPECT_EQ(activity->get(store::activites::CodAssoActivite), body.get(Entite)) << code;
      EXPECT_EQ(activity->get(store::activites::TypeActivite), type) << code;
      EXPECT_EQ(activity->get(store::activites::Service), first.get(store::activites::Service))
          << code;
    }
    EXPECT_TRUE(principal || (type != "M" && body.get(GestionExclu) == "0")) << code;
    EXPECT_TRUE(type != "M" || body.get(GestionExclu) != "2") << code;
    EXPECT_TRUE(type != "M" || body.get(GestPartBenef) == "M") << code;
    EXPECT_TRUE(!principal || type == "M" || body.get(AttribOrgChg) == "H") << code;
    EXPECT_TRUE(body.get(IncidCompta) == "0" || type == "M" || (type == "P" && !principal)) << code;
  }
  EXPECT_EQ(types, (std::set<std::string>{"I", "M", "P", "S"}));
}

TEST_F(SampleData, SlipsFitTheirPageAndOneFillsItExactly) {
  using namespace store::orgprisecharge;
  long widest = 0;
  for (const auto& [code, body] : bodies()) {
    long width = 0;
    for (const auto& key : values(body, ParamSelecOrgChg)) {
      width += store::wholeNumber(file("PARAMBORDORGCHG").at(key).get(2));
    }
    EXPECT_GT(width, 0) << code;
    EXPECT_LE(width, 130) << code;
    widest = std::max(widest, width);
    EXPECT_TRUE(isAmong(body, TypeBordOrgChg, "IRM")) << code;
    EXPECT_TRUE(body.get(TypeBordOrgChg) != "M" ||
                (body.get(TypeOrgChg) == "P" && body.get(DebAbatHOrgChg).empty()))
        << code;
    EXPECT_GE(store::wholeNumber(body.get(NbExemplOrgChg)), 1) << code;
  }
  EXPECT_EQ(widest, 130);
}

TEST_F(SampleData, AgreementsNameWhatExistsAndKeepTheirHistoryAligned) {
  using namespace store::accord;
  EXPECT_EQ(file(kFile).size(), 2000U);
  for (const auto& [key, agreement] : file(kFile)) {
    const DynamicArray& body = bodies().at(one(agreement, OrgChgAcc));
    const Values activities = values(body, store::orgprisecharge::CodActSelect);
    EXPECT_TRUE(file("CIVILAIDE").contains(key.substr(0, 5))) << key;
    EXPECT_EQ(agreement.get(NumAideAcc), key.substr(0, 5));
    EXPECT_NE(std::count(activities.begin(), activities.end(), one(agreement, CodActAcc)), 0);
    EXPECT_LT(store::wholeNumber(agreement.get(DateDebAcc)),
              store::wholeNumber(agreement.get(DateFinAcc)))
        << key;
    const int periods = agreement.DCount(DatePartAcc);
    EXPECT_GE(periods, 1) << key;
    EXPECT_EQ(agreement.DCount(TrancheAcc), periods) << key;
    EXPECT_EQ(agreement.DCount(PartBenefAcc), periods) << key;
    EXPECT_EQ(agreement.get(DatePartAcc, periods), agreement.get(DateDebAcc)) << key;
    EXPECT_TRUE(agreement.get(ClotureAcc).empty() || agreement.get(ClotureAcc) == "O") << key;
  }
}

TEST_F(SampleData, RequestsAndBillingNameWhatExists) {
  for (const auto& [key, request] : file("DEMANDACC")) {
    EXPECT_TRUE(bodies().contains(one(request, store::demandacc::OrgChgDem))) << key;
    EXPECT_TRUE(file("CIVILAIDE").contains(one(request, store::demandacc::NumAideDem))) << key;
  }
  for (const auto& [key, elements] : file("ELTSFACTAIDE")) {
    EXPECT_TRUE(file("CIVILAIDE").contains(key));
    for (const auto& agreement : values(elements, store::eltsfactaide::AccordElt)) {
      EXPECT_TRUE(file("ACCORD").contains(agreement)) << key;
    }
  }
}

TEST_F(SampleData, BeneficiariesAndTheirResponsiblePersonsHaveTitlesAndAddresses) {
  for (const char* name : {"CIVILAIDE", "RESPONSABLE"}) {
    for (const auto& [key, person] : file(name)) {
      EXPECT_TRUE(file("CIVILAIDE").contains(key));
      EXPECT_TRUE(file("TITRES").contains(one(person, store::civilaide::TitreAide))) << key;
      EXPECT_FALSE(person.get(store::civilaide::NomAide).empty()) << key;
      EXPECT_TRUE(file("NATUREVOIE").contains(one(person, store::civilaide::AdrNatureVoie)));
      EXPECT_EQ(person.get(store::civilaide::AdrCodePostal).size(), 5U) << key;
      EXPECT_FALSE(person.get(store::civilaide::AdrVille).empty()) << key;
    }
  }
}

TEST_F(SampleData, SomeBodiesCanBeDeletedAndOthersAreHeldByOneFileOnly) {
  const auto agreed = bodiesNamedBy("ACCORD");
  const auto asked = bodiesNamedBy("DEMANDACC");
  std::set<std::string> free;
  for (const auto& [code, body] : bodies()) {
    if (!agreed.contains(code) && !asked.contains(code)) free.insert(one(body, 1));
  }
  EXPECT_EQ(free, (std::set<std::string>{"CD05", "CD09", "CD23", "CD48", "CTG973", "FONDSOL",
                                         "MUTRIVES"}));
  EXPECT_TRUE(agreed.contains("001") && !asked.contains("001"));
  EXPECT_TRUE(asked.contains("015") && !agreed.contains("015"));
}

TEST_F(SampleData, HasAnActivityLabelLongerThanItsColumnAndAnEntityOfOneType) {
  std::map<std::string, std::set<std::string>> types;
  std::size_t longest = 0;
  for (const auto& [code, activity] : file("ACTIVITES")) {
    types[one(activity, store::activites::CodAssoActivite)].insert(
        one(activity, store::activites::TypeActivite));
    longest = std::max(longest, text::length(activity.get(store::activites::Libelle)));
  }
  EXPECT_GT(longest, 20U);
  EXPECT_EQ(types.size(), file("ASSOCIATION").size());
  EXPECT_EQ(types.at("010").size(), 4U);
  EXPECT_EQ(types.at("040").size(), 1U);
}

TEST_F(SampleData, HasThePayPeriodAndTheEuroDate) {
  EXPECT_EQ(one(file("PERIODESPAIE").at("1"), 1), "202601");
  EXPECT_EQ(store::textOfDay(file("CONSTANTESPAIE").at("1").get(9)), "01/01/2002");
}

}  // namespace
