// The text files that the demo's store is made from are complete, agree with each other, and hold a
// body for each thing that a page must be able to show.
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
#include "tests/support/Same.h"
#include "text/Utf8.h"

namespace {

using store::DynamicArray;
using testing_support::same;
using Records = std::map<std::string, DynamicArray>;
using Values = std::vector<std::string>;
using Codes = std::set<std::string>;

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

// A rate that a row does not have.
bool isNone(std::string_view rate) { return rate.empty() || rate == " "; }

std::string shown(const DynamicArray& record, int attribute, int value) {
  return store::twoDecimals(store::wholeNumber(record.get(attribute, value)));
}

bool isAmong(const DynamicArray& record, int attribute, std::string_view texts) {
  const std::string_view held = record.get(attribute);
  return held.size() == 1 && texts.find(held) != std::string_view::npos;
}

// Beneficiaries unlike the others: without a civil record; with a responsible person that has no
// name; with a title that no table holds.
constexpr const char* kWithoutCivil = "01055";
constexpr const char* kWithoutName = "01047";
constexpr const char* kUnknownTitle = "01050";

class SampleData : public testing::Test {
 protected:
  static const Records& file(std::string_view name) {
    static std::map<std::string, Records, std::less<>> loaded;
    const auto found = loaded.find(name);
    return found != loaded.end() ? found->second
                                 : loaded.emplace(std::string(name), load(name)).first->second;
  }
  static const Records& bodies() { return file(store::orgprisecharge::kFile); }

  static const Records& agreements() { return file(store::accord::kFile); }

  static Codes bodiesNamedBy(std::string_view name) {
    Codes codes;
    for (const auto& [id, record] : file(name)) codes.insert(one(record, 1));
    return codes;
  }

  template <class Holds>
  static Codes bodiesWhere(Holds holds) {
    Codes codes;
    for (const auto& [code, body] : bodies()) {
      if (holds(body)) codes.insert(code);
    }
    return codes;
  }
  static bool isPrincipal(const DynamicArray& body) {
    return body.get(store::orgprisecharge::TypeOrgChg) == "P";
  }

  // The activities that a body covers, as far as they exist.
  static std::vector<const DynamicArray*> covered(const DynamicArray& body) {
    std::vector<const DynamicArray*> out;
    for (const auto& code : values(body, store::orgprisecharge::CodActSelect)) {
      const auto found = file(store::activites::kFile).find(code);
      if (found != file(store::activites::kFile).end()) out.push_back(&found->second);
    }
    return out;
  }
  // Their type letter, "" when none is covered.
  static std::string typeCovered(const DynamicArray& body) {
    const auto activities = covered(body);
    return activities.empty() ? "" : one(*activities.front(), store::activites::TypeActivite);
  }
  static Codes activitiesOf(std::string_view entity, int attribute) {
    Codes found;
    for (const auto& [code, activity] : file(store::activites::kFile)) {
      if (activity.get(store::activites::CodAssoActivite) == entity) {
        found.insert(one(activity, attribute));
      }
    }
    return found;
  }
  static Codes typesOf(std::string_view entity) {
    return activitiesOf(entity, store::activites::TypeActivite);
  }

  static Codes accountsOf(std::string_view entity, std::string_view begin) {
    const std::string prefix = std::string(entity) + std::string(begin);
    Codes found;
    for (const auto& [key, account] : file(store::plancomptable::kFile)) {
      if (key.starts_with(prefix)) found.insert(key.substr(3));
    }
    return found;
  }

  static long slipWidth(const DynamicArray& body) {
    long width = 0;
    for (const auto& key : values(body, store::orgprisecharge::ParamSelecOrgChg)) {
      width +=
          store::wholeNumber(file("PARAMBORDORGCHG").at(key).get(store::parambordorgchg::Longueur));
    }
    return width;
  }

  static long firstDayOfPayPeriod() {
    const std::string period =
        one(file(store::periodespaie::kFile).at("1"), store::periodespaie::PeriodeCourante);
    return store::dayOfText("01/" + period.substr(4) + "/" + period.substr(0, 4)).value();
  }
  static bool isActive(const DynamicArray& agreement) {
    return agreement.get(store::accord::ClotureAcc).empty() &&
           store::wholeNumber(agreement.get(store::accord::DateFinAcc)) >= firstDayOfPayPeriod();
  }
  static std::vector<const DynamicArray*> agreementsOf(std::string_view body) {
    std::vector<const DynamicArray*> out;
    for (const auto& [key, agreement] : agreements()) {
      if (agreement.get(store::accord::OrgChgAcc) == body) out.push_back(&agreement);
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
  EXPECT_EQ(principal, 117);
  EXPECT_EQ(bodies().size(), 130U);
  EXPECT_EQ(one(bodies().at("001"), SigleOrgChg), "CD01");
  EXPECT_EQ(one(bodies().at("001"), RaisonOrgChg), "CONSEIL DEPARTEMENTAL DE L'AIN");
}

TEST_F(SampleData, AcronymsNamesAndAccountLabelsAreCapitalsThatASearchFinds) {
  const auto plain = [](const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c < 'a'; });
  };
  Codes acronyms;
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
      EXPECT_TRUE(isNone(increased) || store::wholeNumber(increased) >= normal) << code;
      EXPECT_LE(store::wholeNumber(body.get(PrestServOrgChg, row)), normal) << code;
      if (row > 1) {
        EXPECT_LT(store::wholeNumber(body.get(DateRembOrgChg, row)),
                  store::wholeNumber(body.get(DateRembOrgChg, row - 1)))
            << code;
      }
    }
  }
  const std::map<std::string, int> counts = {
      {"059", 14}, {"122", 1}, {"123", 12}, {"124", 13}, {"125", 60}};
  for (const auto& [code, count] : counts) {
    EXPECT_EQ(bodies().at(code).DCount(DateRembOrgChg), count) << code;
  }
}

TEST_F(SampleData, RatesThatAreNoneAreHeldAsOneBlankOrAsNothing) {
  using namespace store::orgprisecharge;
  const DynamicArray& alone = bodies().at("122");
  EXPECT_EQ(alone.get(TxRembMajOrgChg), " ");
  EXPECT_EQ(alone.get(PrestServOrgChg), " ");
  for (const int attribute : {TxRembMajOrgChg, PrestServOrgChg}) {
    EXPECT_PRED_FORMAT2(same, bodiesWhere([&](const auto& body) {
                          const Values rates = values(body, attribute);
                          return std::count(rates.begin(), rates.end(), " ") > 0;
                        }),
                        (Codes{"122", "123"}));
    const Values mixed = values(bodies().at("123"), attribute);
    EXPECT_EQ(std::count(mixed.begin(), mixed.end(), " "), 4);
    EXPECT_EQ(std::count(mixed.begin(), mixed.end(), ""), 4);
    for (int row = 1; row <= 3; ++row) EXPECT_EQ(bodies().at("126").get(attribute, row), "");
  }
}

TEST_F(SampleData, DeductionsGoByTheirStartAndAreInTheirBounds) {
  using namespace store::orgprisecharge;
  for (const auto& [code, body] : bodies()) {
    long previous = 0;
    for (int row = 1; row <= body.DCount(DebAbatHOrgChg); ++row) {
      const long start = store::wholeNumber(body.get(DebAbatHOrgChg, row));
      const long percentage = store::wholeNumber(body.get(PourcentAbatOrgChg, row));
      EXPECT_LE(previous, start) << code;
      EXPECT_LE(start, store::wholeNumber(body.get(FinAbatHOrgChg, row))) << code;
      EXPECT_TRUE(percentage > 0 && percentage <= 10000) << code;
      previous = start;
    }
  }
  EXPECT_EQ(bodies().at("124").DCount(DebAbatHOrgChg), 13);
}

TEST_F(SampleData, DeductionsTouchLieInsideOneAnotherOrEndWhereTheyStart) {
  using Ranges = std::vector<std::pair<std::string, std::string>>;
  const auto ranges = [](const char* code) {
    using namespace store::orgprisecharge;
    const DynamicArray& body = bodies().at(code);
    Ranges out;
    for (int row = 1; row <= body.DCount(DebAbatHOrgChg); ++row) {
      out.emplace_back(body.get(DebAbatHOrgChg, row), body.get(FinAbatHOrgChg, row));
    }
    return out;
  };
  EXPECT_EQ(ranges("122"), (Ranges{{"0", "1000"}, {"1000", "2000"}}));
  EXPECT_EQ(ranges("123"), (Ranges{{"0", "2000"}, {"500", "1500"}}));
  EXPECT_EQ(ranges("125"), (Ranges{{"0", "1000"}, {"2000", "2000"}}));
}

TEST_F(SampleData, ScalesAreInAmountOrInPercentAndDatedAfterThePreviousOneButForOne) {
  using namespace store::orgprisecharge;
  Codes managements;
  for (const auto& [code, body] : bodies()) {
    managements.insert(one(body, GestPartBenef));
    EXPECT_TRUE(isAmong(body, Bareme, "QR")) << code;
    EXPECT_FALSE(body.get(DatBaremCours).empty()) << code;
    EXPECT_GT(body.DCount(DebRevSeulOrgChg), 0) << code;
  }
  EXPECT_PRED_FORMAT2(same, managements, (Codes{"M", "%"}));
  EXPECT_PRED_FORMAT2(same, bodiesWhere([](const auto& body) {
                        return store::wholeNumber(body.get(DatBaremCours)) <=
                               store::wholeNumber(body.get(DatBaremPrec));
                      }),
                      Codes{"129"});
  EXPECT_EQ(bodies().at("129").get(DatBaremCours), bodies().at("129").get(DatBaremPrec));
}

TEST_F(SampleData, BracketsChainAsTheyAreShownButThoseOfOneBody) {
  using namespace store::orgprisecharge;
  const auto isBroken = [](const DynamicArray& body, int start, int end) {
    for (int row = 2; row <= body.DCount(start); ++row) {
      if (shown(body, start, row) != shown(body, end, row - 1)) return true;
    }
    return false;
  };
  EXPECT_PRED_FORMAT2(same, bodiesWhere([&](const auto& body) {
                        return isBroken(body, DebRevSeulOrgChg, FinRevSeulOrgChg);
                      }),
                      Codes{"128"});
  EXPECT_PRED_FORMAT2(same, bodiesWhere([&](const auto& body) {
                        return isBroken(body, DebRevMenOrgChg, FinRevMenOrgChg);
                      }),
                      Codes());
  const DynamicArray& body = bodies().at("128");
  EXPECT_EQ(shown(body, FinRevSeulOrgChg, 2), "1051,00");
  EXPECT_EQ(shown(body, DebRevSeulOrgChg, 3), "1052,00");
}

TEST_F(SampleData, EveryBracketStartsBelowItsEnd) {
  using namespace store::orgprisecharge;
  for (const auto& [code, body] : bodies()) {
    for (int row = 1; row <= body.DCount(DebRevSeulOrgChg); ++row) {
      EXPECT_LT(store::wholeNumber(body.get(DebRevSeulOrgChg, row)),
                store::wholeNumber(body.get(FinRevSeulOrgChg, row)))
          << code;
      EXPECT_LT(store::wholeNumber(body.get(DebRevMenOrgChg, row)),
                store::wholeNumber(body.get(FinRevMenOrgChg, row)))
          << code;
    }
  }
}

TEST_F(SampleData, ScalesHaveOneTwelveOrThirteenBracketsAndOneHasNoPreviousScale) {
  using namespace store::orgprisecharge;
  const std::map<std::string, int> counts = {{"122", 1}, {"123", 12}, {"124", 13}};
  for (const auto& [code, count] : counts) {
    EXPECT_EQ(bodies().at(code).DCount(DebRevSeulOrgChg), count) << code;
  }
  const Values before = values(bodies().at("124"), BaremPrecOrgChg);
  EXPECT_EQ(one(bodies().at("124"), DatBaremPrec), "");
  EXPECT_EQ(before, Values(13, ""));
  EXPECT_FALSE(bodies().at("123").get(DatBaremPrec).empty());
}

TEST_F(SampleData, OneCurrentParticipationIsEmpty) {
  using namespace store::orgprisecharge;
  EXPECT_PRED_FORMAT2(same, bodiesWhere([](const auto& body) {
                        const Values current = values(body, BaremCoursOrgChg);
                        return std::count(current.begin(), current.end(), "") > 0;
                      }),
                      Codes{"130"});
  EXPECT_EQ(values(bodies().at("130"), BaremCoursOrgChg), (Values{"190", "", "570", "760"}));
}

TEST_F(SampleData, BodiesHaveASubscriptionOrAGlobalCost) {
  using namespace store::orgprisecharge;
  EXPECT_EQ(one(bodies().at("122"), Abonnement) + one(bodies().at("122"), CoutGlobal), "10");
  EXPECT_EQ(one(bodies().at("123"), Abonnement) + one(bodies().at("123"), CoutGlobal), "01");
  EXPECT_EQ(one(bodies().at("124"), Abonnement) + one(bodies().at("124"), CoutGlobal), "00");
}

TEST_F(SampleData, PrincipalBodiesInHoursWithActiveAgreementsAreInAmountAndInPercent) {
  using namespace store::orgprisecharge;
  const std::map<std::string, std::string> managements = {{"125", "M"}, {"126", "%"}};
  for (const auto& [code, management] : managements) {
    const DynamicArray& body = bodies().at(code);
    EXPECT_TRUE(isPrincipal(body)) << code;
    EXPECT_EQ(one(body, AttribOrgChg), "H") << code;
    EXPECT_EQ(one(body, GestPartBenef), management) << code;
    std::size_t active = 0;
    for (const DynamicArray* agreement : agreementsOf(code)) active += isActive(*agreement);
    EXPECT_GT(active, 0U) << code;
    EXPECT_EQ(agreementsOf(code).size(), active + 1) << code;
  }
}

TEST_F(SampleData, BodiesKeepTheManagementRules) {
  using namespace store::orgprisecharge;
  for (const auto& [code, body] : bodies()) {
    EXPECT_TRUE(isAmong(body, PlafondOrg, "123")) << code;
    EXPECT_TRUE(isAmong(body, RenouvOrgChg, "0123456")) << code;
    EXPECT_TRUE(isAmong(body, PeriodFactOrgChg, "MTF")) << code;
    EXPECT_TRUE(isPrincipal(body) || body.get(FactAnticip) == "0") << code;
    EXPECT_TRUE(body.get(DemAccordOrgChg) == "1" || body.get(FactAnticip) == "0") << code;
    EXPECT_FALSE(body.get(Abonnement) == "1" && body.get(CoutGlobal) == "1") << code;
    const bool inBooks = body.get(IncidCompta) == "0";
    for (const int attribute : {DebitOrgChg, CreditOrgChg, CpteProdAide}) {
      EXPECT_EQ(body.get(attribute).size(), inBooks ? 10U : 0U) << code;
    }
    EXPECT_TRUE(body.get(CpteProdAide).empty() || body.get(CpteProdAide)[0] == '7') << code;
  }
}

TEST_F(SampleData, EveryCeilingAndRenewalTriggerIsThatOfABody) {
  using namespace store::orgprisecharge;
  const std::map<std::string, std::string> ceilings = {{"001", "1"}, {"003", "2"}, {"002", "3"},
                                                       {"102", "1"}, {"101", "2"}, {"103", "3"}};
  for (const auto& [code, ceiling] : ceilings) {
    EXPECT_EQ(one(bodies().at(code), PlafondOrg), ceiling) << code;
    EXPECT_EQ(isPrincipal(bodies().at(code)), code < "101") << code;
  }
  const std::map<std::string, std::string> triggers = {{"004", "0"}, {"002", "1"}, {"003", "2"},
                                                       {"008", "3"}, {"113", "4"}, {"114", "5"},
                                                       {"001", "6"}};
  for (const auto& [code, trigger] : triggers) {
    EXPECT_EQ(one(bodies().at(code), RenouvOrgChg), trigger) << code;
  }
}

TEST_F(SampleData, TwoBodiesAskForDocumentsThatTheTableNoLongerHoldsAmidOthers) {
  using namespace store::orgprisecharge;
  const DynamicArray& table = file("TABLES").at("PIECESRENOUV");
  const auto isKnown = [&](const std::string& piece) {
    return !store::labelOfCode(table, piece).empty();
  };
  EXPECT_PRED_FORMAT2(same, bodiesWhere([&](const auto& body) {
                        const Values pieces = values(body, PieceRenouOrgChg);
                        return !std::all_of(pieces.begin(), pieces.end(), isKnown);
                      }),
                      (Codes{"113", "114"}));
  for (const char* const code : {"113", "114"}) {
    const Values pieces = values(bodies().at(code), PieceRenouOrgChg);
    EXPECT_TRUE(isKnown(pieces.front()) && isKnown(pieces.back())) << code;
  }
  EXPECT_EQ(values(bodies().at("113"), PieceRenouOrgChg), (Values{"AVI", "PAP", "RIB"}));
}

TEST_F(SampleData, OneBodyIsOfAStatisticsCategoryThatTheTableNoLongerHolds) {
  using namespace store::orgprisecharge;
  const DynamicArray& table = file("TABLES").at("STATORGCHG");
  EXPECT_PRED_FORMAT2(same, bodiesWhere([&](const auto& body) {
                        return store::labelOfCode(table, body.get(StatsOrgChg)).empty();
                      }),
                      Codes{"114"});
  EXPECT_EQ(one(bodies().at("114"), StatsOrgChg), "08");
}

TEST_F(SampleData, AccountsAreInTheChartOfTheBodysEntityButForOneBody) {
  using namespace store::orgprisecharge;
  const Records& chart = file(store::plancomptable::kFile);
  const auto isUnknown = [&](const DynamicArray& body, int attribute) {
    return !body.get(attribute).empty() &&
           !chart.contains(one(body, Entite) + one(body, attribute));
  };
  const Codes unknown = bodiesWhere([&](const auto& body) {
    return isUnknown(body, DebitOrgChg) || isUnknown(body, CreditOrgChg) ||
           isUnknown(body, CpteProdAide) || isUnknown(body, CptPrestationService);
  });
  EXPECT_PRED_FORMAT2(same, unknown, Codes{"120"});
  for (const int attribute : {DebitOrgChg, CreditOrgChg, CpteProdAide, CptPrestationService}) {
    EXPECT_TRUE(isUnknown(bodies().at("120"), attribute)) << attribute;
  }
}

TEST_F(SampleData, AccountsBeginAlikeBearTheSameLabelAndOneLabelHoldsADoubleQuote) {
  using store::orgprisecharge::DebitOrgChg;
  const Records& chart = file(store::plancomptable::kFile);
  for (const char* const entity : {"010", "020", "030", "040"}) {
    EXPECT_EQ(accountsOf(entity, "41").size(), std::string(entity) == "010" ? 12U : 9U) << entity;
    EXPECT_PRED_FORMAT2(same, accountsOf(entity, "512"), Codes{"5120000000"}) << entity;
  }
  EXPECT_PRED_FORMAT2(same, accountsOf("050", "41"), Codes{"4110000000"});
  EXPECT_EQ(one(chart.at("0104112200000"), store::plancomptable::Libelle),
            "CLIENTS - BENEFICIAIRES");
  EXPECT_EQ(one(chart.at("0104112300000"), store::plancomptable::Libelle),
            "CLIENTS - BENEFICIAIRES");
  EXPECT_EQ(one(bodies().at("114"), DebitOrgChg), "4112300000");
  Codes quoted;
  for (const auto& [key, account] : chart) {
    if (one(account, 1).find('"') != std::string::npos) quoted.insert(key);
  }
  EXPECT_PRED_FORMAT2(same, quoted, Codes{"0104112100000"});
  EXPECT_EQ(one(bodies().at("113"), DebitOrgChg), "4112100000");
}

TEST_F(SampleData, CoveredActivitiesAreOfTheEntityOneTypeAndOneService) {
  using namespace store::activites;
  Codes types;
  for (const auto& [code, body] : bodies()) {
    types.insert(typeCovered(body));
    for (const DynamicArray* activity : covered(body)) {
      const DynamicArray& first = *covered(body).front();
      EXPECT_EQ(activity->get(CodAssoActivite), body.get(store::orgprisecharge::Entite)) << code;
      EXPECT_EQ(activity->get(TypeActivite), first.get(TypeActivite)) << code;
      EXPECT_EQ(activity->get(Service), first.get(Service)) << code;
    }
  }
  EXPECT_PRED_FORMAT2(same, types, (Codes{"", "I", "M", "P", "S"}));
}

TEST_F(SampleData, EveryBodyPassesTheChecksOfItsCoveredActivities) {
  using namespace store::orgprisecharge;
  for (const auto& [code, body] : bodies()) {
    const bool principal = isPrincipal(body);
    const std::string type = typeCovered(body);
    EXPECT_TRUE(file(store::association::kFile).contains(one(body, Entite))) << code;
    EXPECT_TRUE(!type.empty() || typesOf(body.get(Entite)).size() < 2) << code;
    EXPECT_TRUE(principal || (type != "M" && body.get(GestionExclu) == "0")) << code;
    EXPECT_TRUE(type != "M" || body.get(GestionExclu) != "2") << code;
    EXPECT_TRUE(type != "M" || body.get(GestPartBenef) == "M") << code;
    EXPECT_TRUE(!principal || type == "M" || body.get(AttribOrgChg) == "H") << code;
    EXPECT_TRUE(body.get(IncidCompta) == "0" || type == "M" || (type == "P" && !principal)) << code;
  }
}

TEST_F(SampleData, BodiesWithoutAccountingAreOfAgencyActivitiesOrComplementaryOfProviderOnes) {
  using namespace store::orgprisecharge;
  const auto without = [](std::string_view type, bool principal) {
    return bodiesWhere([&](const auto& body) {
      return body.get(IncidCompta) == "1" && typeCovered(body) == type &&
             isPrincipal(body) == principal;
    });
  };
  EXPECT_PRED_FORMAT2(same, without("M", true), (Codes{"010", "096"}));
  EXPECT_PRED_FORMAT2(same, without("P", false), (Codes{"101", "103", "108", "110"}));
}

TEST_F(SampleData, AgencyActivitiesAreInAmountAndWithinReachOfComplementaryBodies) {
  using namespace store::orgprisecharge;
  const Codes inAmount = bodiesWhere(
      [](const auto& body) { return typeCovered(body) == "M" && body.get(AttribOrgChg) == "M"; });
  EXPECT_PRED_FORMAT2(
      same, inAmount,
      (Codes{"004", "010", "014", "025", "026", "072", "074", "078", "092", "096"}));
  EXPECT_FALSE(isPrincipal(bodies().at("101")));
  EXPECT_TRUE(typesOf(bodies().at("101").get(Entite)).contains("M"));
}

TEST_F(SampleData, OneBodyInAmountWithProviderActivitiesHasNoAgreementThatHoldsItsType) {
  using namespace store::orgprisecharge;
  const DynamicArray& body = bodies().at("106");
  EXPECT_FALSE(isPrincipal(body));
  EXPECT_EQ(typeCovered(body), "P");
  EXPECT_EQ(body.get(AttribOrgChg), "M");
  EXPECT_TRUE(agreementsOf("106").empty());
}

TEST_F(SampleData, BodiesCoverNoActivityOfAnEntityOfOneTypeAndOfOneWithoutActivities) {
  using namespace store::orgprisecharge;
  EXPECT_PRED_FORMAT2(same,
                      bodiesWhere([](const auto& body) { return body.get(CodActSelect).empty(); }),
                      (Codes{"119", "120"}));
  EXPECT_EQ(one(bodies().at("119"), Entite), "040");
  EXPECT_EQ(one(bodies().at("120"), Entite), "050");
}

TEST_F(SampleData, OneBodyKeepsTheCodeOfAnActivityThatNoLongerExists) {
  using namespace store::orgprisecharge;
  EXPECT_PRED_FORMAT2(same, bodiesWhere([](const auto& body) {
                        return covered(body).size() != values(body, CodActSelect).size();
                      }),
                      Codes{"121"});
  EXPECT_EQ(values(bodies().at("121"), CodActSelect), (Values{"010P01", "010P99", "010P02"}));
  EXPECT_EQ(covered(bodies().at("121")).size(), 2U);
}

TEST_F(SampleData, SlipsFitTheirPageButForOneAndStandAtItsBounds) {
  using namespace store::orgprisecharge;
  for (const auto& [code, body] : bodies()) {
    EXPECT_GT(slipWidth(body), 0) << code;
    EXPECT_TRUE(isAmong(body, TypeBordOrgChg, "IRM")) << code;
    EXPECT_TRUE(body.get(TypeBordOrgChg) != "M" || isPrincipal(body)) << code;
  }
  EXPECT_PRED_FORMAT2(same, bodiesWhere([](const auto& body) {
                        return body.get(TypeBordOrgChg) == "M" && body.DCount(DebAbatHOrgChg) > 0;
                      }),
                      Codes{"127"});
  EXPECT_EQ(slipWidth(bodies().at("029")), 129);
  EXPECT_EQ(slipWidth(bodies().at("062")), 130);
  EXPECT_EQ(slipWidth(bodies().at("117")), 131);
  EXPECT_PRED_FORMAT2(same, bodiesWhere([](const auto& body) { return slipWidth(body) > 130; }),
                      Codes{"117"});
}

TEST_F(SampleData, TwoSlipsHaveTheSameColumnsInOppositeOrdersAndOneASingleColumn) {
  using store::orgprisecharge::ParamSelecOrgChg;
  Values turned = values(bodies().at("114"), ParamSelecOrgChg);
  std::reverse(turned.begin(), turned.end());
  EXPECT_EQ(values(bodies().at("113"), ParamSelecOrgChg), turned);
  EXPECT_EQ(turned, (Values{"10", "11", "19", "21", "26"}));
  EXPECT_PRED_FORMAT2(
      same, bodiesWhere([](const auto& body) { return body.DCount(ParamSelecOrgChg) == 1; }),
      Codes{"118"});
}

TEST_F(SampleData, CopiesAreOneToNineButForOneBody) {
  using store::orgprisecharge::NbExemplOrgChg;
  const auto copies = [](const auto& body) { return store::wholeNumber(body.get(NbExemplOrgChg)); };
  EXPECT_PRED_FORMAT2(same, bodiesWhere([&](const auto& body) { return copies(body) < 1; }),
                      Codes());
  EXPECT_PRED_FORMAT2(same, bodiesWhere([&](const auto& body) { return copies(body) > 9; }),
                      Codes{"118"});
  EXPECT_EQ(copies(bodies().at("118")), 12);
}

TEST_F(SampleData, AgreementsNameWhatExistsAndKeepTheirHistoryAligned) {
  using namespace store::accord;
  EXPECT_EQ(file(kFile).size(), 2106U);
  for (const auto& [key, agreement] : file(kFile)) {
    const DynamicArray& body = bodies().at(one(agreement, OrgChgAcc));
    const Values activities = values(body, store::orgprisecharge::CodActSelect);
    EXPECT_NE(file("CIVILAIDE").contains(key.substr(0, 5)), key.starts_with(kWithoutCivil)) << key;
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

TEST_F(SampleData, AgreementsAreActiveEndedOrClosed) {
  using namespace store::accord;
  std::map<std::string, Codes> bodiesOf;  // by the state of an agreement of theirs
  for (const auto& [key, agreement] : agreements()) {
    const char* const state = isActive(agreement)                ? "active"
                              : agreement.get(ClotureAcc) == "O" ? "closed"
                                                                 : "ended";
    bodiesOf[state].insert(one(agreement, OrgChgAcc));
  }
  Codes withoutActive;
  for (const auto& code : bodiesNamedBy(kFile)) {
    if (!bodiesOf["active"].contains(code)) withoutActive.insert(code);
  }
  EXPECT_PRED_FORMAT2(same, withoutActive, (Codes{"115", "116"}));
  for (const auto& code : withoutActive) {
    EXPECT_TRUE(bodiesOf["ended"].contains(code)) << code;
    EXPECT_TRUE(bodiesOf["closed"].contains(code)) << code;
    EXPECT_EQ(isPrincipal(bodies().at(code)), code == "115");
  }
  for (const char* const code : {"101", "113"}) {
    EXPECT_TRUE(bodiesOf["active"].contains(code)) << code;
    EXPECT_TRUE(bodiesOf["ended"].contains(code)) << code;
    EXPECT_TRUE(bodiesOf["closed"].contains(code)) << code;
    EXPECT_EQ(isPrincipal(bodies().at(code)), std::string(code) == "113");
  }
}

TEST_F(SampleData, AgreementsEndOnTheFirstDayOfThePayPeriodAndOnTheDayBefore) {
  using namespace store::accord;
  const auto lastDays = [](std::string_view body) {
    std::set<long> days;
    for (const DynamicArray* agreement : agreementsOf(body)) {
      if (agreement->get(ClotureAcc).empty()) {
        days.insert(store::wholeNumber(agreement->get(DateFinAcc)));
      }
    }
    return days;
  };
  EXPECT_EQ(store::textOfDay(firstDayOfPayPeriod()), "01/01/2026");
  EXPECT_PRED_FORMAT2(same, lastDays("114"), std::set{firstDayOfPayPeriod()});
  EXPECT_PRED_FORMAT2(same, lastDays("115"), std::set{firstDayOfPayPeriod() - 1});
  EXPECT_PRED_FORMAT2(same, lastDays("116"), std::set{firstDayOfPayPeriod() - 1});
}

// --- What a scale of 01/02/2026 meets

// Keys of the body's agreements that the scale can change and of those that it cannot, by the rows
// as they stand.
struct Answer {
  Codes modified;
  Codes limit;
};

class SampleUpdate : public SampleData {
 protected:
  // Income and household kind of a beneficiary, "" and "" without a record.
  static std::pair<std::string, std::string> incomeOf(const std::string& number) {
    const auto found = file("ELTSFACTAIDE").find(number);
    if (found == file("ELTSFACTAIDE").end()) return {};
    return {one(found->second, store::eltsfactaide::RevenuElt),
            one(found->second, store::eltsfactaide::FoyerElt)};
  }
  static bool isInARow(const DynamicArray& body, const std::string& number) {
    using namespace store::orgprisecharge;
    const auto [income, kind] = incomeOf(number);
    const int start = kind == "M" ? DebRevMenOrgChg : DebRevSeulOrgChg;
    const int end = kind == "M" ? FinRevMenOrgChg : FinRevSeulOrgChg;
    const long amount = store::wholeNumber(income);
    return !income.empty() && amount >= store::wholeNumber(body.get(start, 1)) &&
           amount <= store::wholeNumber(body.get(end, body.DCount(end)));
  }
  static long scaleDay() { return store::dayOfText("01/02/2026").value(); }
  static bool isConcerned(const DynamicArray& agreement) {
    return agreement.get(store::accord::ClotureAcc).empty() &&
           store::wholeNumber(agreement.get(store::accord::DateFinAcc)) >= scaleDay();
  }
  static bool isDatedLater(const DynamicArray& agreement) {
    return store::wholeNumber(agreement.get(store::accord::DatePartAcc)) > scaleDay();
  }
  static Answer answerOf(const std::string& code) {
    Answer answer;
    for (const auto& [key, agreement] : agreements()) {
      if (agreement.get(store::accord::OrgChgAcc) != code || !isConcerned(agreement)) continue;
      const bool changes =
          !isDatedLater(agreement) && isInARow(bodies().at(code), key.substr(0, 5));
      (changes ? answer.modified : answer.limit).insert(key);
    }
    return answer;
  }
  static void expectAsked(const std::string& code) {
    using namespace store::orgprisecharge;
    const DynamicArray& body = bodies().at(code);
    EXPECT_TRUE(isPrincipal(body)) << code;
    EXPECT_EQ(one(body, AttribOrgChg) + one(body, GestPartBenef), "HM") << code;
  }
};

TEST_F(SampleUpdate, MostBeneficiariesHaveAnIncomeAndAKindOfHousehold) {
  int withIncome = 0;
  std::map<std::string, int> kinds;
  for (const auto& [number, elements] : file("ELTSFACTAIDE")) {
    const auto [income, kind] = incomeOf(number);
    EXPECT_EQ(income.find_first_not_of("0123456789"), std::string::npos) << number;
    withIncome += income.empty() ? 0 : 1;
    ++kinds[kind];
  }
  const auto beneficiaries = static_cast<int>(file("ELTSFACTAIDE").size());
  EXPECT_GT(withIncome, beneficiaries * 8 / 10);
  EXPECT_LT(withIncome, beneficiaries);
  EXPECT_EQ(kinds.size(), 3U);
  EXPECT_GT(kinds["S"], beneficiaries / 4);
  EXPECT_GT(kinds["M"], beneficiaries / 4);
  EXPECT_LT(kinds[""], beneficiaries / 10);
}

TEST_F(SampleUpdate, OneBodysAgreementsAnswerANewScaleInEveryWay) {
  expectAsked("125");
  const Answer answer = answerOf("125");
  EXPECT_PRED_FORMAT2(same, answer.modified,
                      (Codes{"00961001", "01045001", "01046001", "01047001", "01048001", "01049001",
                             "01050001", "01055001"}));
  EXPECT_PRED_FORMAT2(same, answer.limit,
                      (Codes{"01051001", "01052001", "01053001", "01054001", "01055002"}));
  EXPECT_EQ(incomeOf("01051").first, "");
  EXPECT_FALSE(file("ELTSFACTAIDE").contains("01052"));
  EXPECT_FALSE(incomeOf("01053").first.empty());
  EXPECT_TRUE(isInARow(bodies().at("125"), "01054"));
  EXPECT_TRUE(isDatedLater(agreements().at("01054001")));
  EXPECT_TRUE(isDatedLater(agreements().at("01055002")));
}

TEST_F(SampleUpdate, LettersOfThatBodyGoToEveryKindOfAddressee) {
  using namespace store::civilaide;
  const Records& persons = file("RESPONSABLE");
  for (const char* const number : {"01045", "01046"}) {
    EXPECT_FALSE(persons.at(number).get(store::responsable::NomResp).empty()) << number;
  }
  EXPECT_EQ(one(persons.at("01047"), store::responsable::NomResp), "");
  EXPECT_FALSE(persons.contains("01048"));
  EXPECT_EQ(one(file("CIVILAIDE").at("01048"), TitreAide), "3");
  EXPECT_EQ(one(file("CIVILAIDE").at("01049"), NomAide),
            "MONTREDIER DE LA CROIX BLANCHE ET DES QUATRE VENTS");
  EXPECT_EQ(one(file("CIVILAIDE").at("01051"), NomAide),
            "URVENELLE DE LA TUILERIE DU VIEUX PRESSOIR DES LAVANDIERES");
  EXPECT_EQ(one(file("CIVILAIDE").at(kUnknownTitle), TitreAide), "9");
}

TEST_F(SampleUpdate, OneBodyHasMoreAgreementsThatCannotChangeThanAPageHolds) {
  expectAsked("059");
  const Answer answer = answerOf("059");
  EXPECT_EQ(answer.modified.size(), 16U);
  EXPECT_EQ(answer.limit.size(), 81U);
}

TEST_F(SampleData, RequestsAndBillingNameWhatExists) {
  for (const auto& [key, request] : file("DEMANDACC")) {
    EXPECT_TRUE(bodies().contains(one(request, store::demandacc::OrgChgDem))) << key;
    EXPECT_TRUE(file("CIVILAIDE").contains(one(request, store::demandacc::NumAideDem))) << key;
  }
  for (const auto& [key, elements] : file("ELTSFACTAIDE")) {
    EXPECT_NE(file("CIVILAIDE").contains(key), key == kWithoutCivil) << key;
    for (const auto& agreement : values(elements, store::eltsfactaide::AccordElt)) {
      EXPECT_TRUE(file("ACCORD").contains(agreement)) << key;
    }
  }
}

TEST_F(SampleData, BeneficiariesAndTheirResponsiblePersonsHaveTitlesAndAddresses) {
  for (const char* name : {"CIVILAIDE", "RESPONSABLE"}) {
    for (const auto& [key, person] : file(name)) {
      EXPECT_TRUE(file("CIVILAIDE").contains(key));
      EXPECT_NE(file("TITRES").contains(one(person, store::civilaide::TitreAide)),
                key == kUnknownTitle)
          << key;
      EXPECT_EQ(person.get(store::civilaide::NomAide).empty(),
                key == kWithoutName && std::string(name) == "RESPONSABLE")
          << key;
      EXPECT_TRUE(file("NATUREVOIE").contains(one(person, store::civilaide::AdrNatureVoie)));
      EXPECT_EQ(person.get(store::civilaide::AdrCodePostal).size(), 5U) << key;
      EXPECT_FALSE(person.get(store::civilaide::AdrVille).empty()) << key;
    }
  }
}

TEST_F(SampleData, SomeBodiesCanBeDeletedAndOthersAreHeldByOneFileOnly) {
  const auto agreed = bodiesNamedBy("ACCORD");
  const auto asked = bodiesNamedBy("DEMANDACC");
  Codes free;
  for (const auto& [code, body] : bodies()) {
    if (!agreed.contains(code) && !asked.contains(code)) free.insert(one(body, 1));
  }
  EXPECT_PRED_FORMAT2(
      same, free,
      (Codes{"CD05", "CD09", "CD23", "CD48", "CTG973", "FONDSOL", "MUTRIVES", "CRARPENT", "CRENLUM",
             "CRSOURCE", "CRPONTS", "CRMOULIN", "CRCARRIER", "CRCHAUME", "CRTONNEAU", "CRPOTIER",
             "CRFAIENCE", "CRCIRE", "CRSABOT"}));
  EXPECT_TRUE(agreed.contains("001") && !asked.contains("001"));
  EXPECT_TRUE(asked.contains("015") && !agreed.contains("015"));
}

TEST_F(SampleData, EntitiesHaveActivitiesOfSeveralTypesOfOneTypeOrNone) {
  for (const char* const entity : {"010", "020", "030"}) {
    EXPECT_PRED_FORMAT2(same, typesOf(entity), (Codes{"I", "M", "P", "S"})) << entity;
  }
  EXPECT_PRED_FORMAT2(same, typesOf("040"), Codes{"P"});
  EXPECT_PRED_FORMAT2(same, typesOf("050"), Codes());
  EXPECT_EQ(file(store::association::kFile).size(), 5U);
}

TEST_F(SampleData, OneEntityHasProviderActivitiesOfTwoServices) {
  using namespace store::activites;
  std::map<std::string, Codes> services;  // by entity and type
  for (const auto& [code, activity] : file(kFile)) {
    services[one(activity, CodAssoActivite) + one(activity, TypeActivite)].insert(
        one(activity, Service));
  }
  for (const auto& [place, names] : services) {
    const Codes expected = place == "020P" ? Codes{"REPAS", "SAAD"} : Codes{*names.begin()};
    EXPECT_PRED_FORMAT2(same, names, expected) << place;
  }
  EXPECT_EQ(one(*covered(bodies().at("118")).front(), Service), "REPAS");
  EXPECT_EQ(one(*covered(bodies().at("062")).front(), Service), "SAAD");
}

TEST_F(SampleData, LabelsOfActivitiesAreLongerThanTheirColumnAndHaveAccents) {
  const auto label = [](const char* code) {
    return one(file(store::activites::kFile).at(code), store::activites::Libelle);
  };
  EXPECT_EQ(label("030P12"), "Téléassistance à domicile");
  EXPECT_EQ(text::length(label("030P12")), 25U);
  EXPECT_EQ(label("010P04"), "Aide et accompagnement à domicile");
  EXPECT_EQ(text::length(label("010P04")), 33U);
  EXPECT_EQ(label("010P01"), "Aide ménagère");
}

TEST_F(SampleData, HasThePayPeriodAndTheEuroDate) {
  EXPECT_EQ(one(file("PERIODESPAIE").at("1"), store::periodespaie::PeriodeCourante), "202601");
  EXPECT_EQ(store::textOfDay(file("CONSTANTESPAIE").at("1").get(store::constantespaie::DateEuro)),
            "01/01/2002");
}

}  // namespace
