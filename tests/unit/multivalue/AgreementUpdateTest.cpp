// MAJTXACCGENE: a body's new scale carried into its agreements.
#include <gtest/gtest.h>

#include <utility>

#include "AgreementStore.h"
#include "store/StoreError.h"

namespace {

constexpr const char* kKey = "00001001";
constexpr const char* kNone = "no record";
constexpr const char* kBefore = "2240|20821|1|120";

class AgreementUpdate : public testing::Test {
 protected:
  // One agreement of one beneficiary, updated; "" for one that is in neither list.
  std::string listOf(const Attributes& body, const Attributes& agreement, const std::string& income,
                     const std::string& kind = "") const {
    store.putBody(body);
    store.putAgreement(kKey, agreement);
    store.putElements("00001", income, kind);
    return listAfterUpdate();
  }
  std::string listAfterUpdate() const {
    const std::string before = store.shown("ACCORD", kKey);
    store.update();
    if (store.modified() == kKey) return store.limit() == kNone ? "modified" : "both";
    EXPECT_EQ(store.shown("ACCORD", kKey), before);
    EXPECT_EQ(store.modified(), kNone);
    return store.limit() == kKey ? "limit" : store.limit() == kNone ? "" : "other";
  }
  // Row and participation of the new period, "limit" when there is none.
  std::string rowOf(const std::string& income, const std::string& kind = "",
                    const Attributes& body = {}) const {
    const std::string list = listOf(body, {}, income, kind);
    if (list != "modified") return list;
    const auto file = store->OpenFile("ACCORD");
    const auto record = file->ReadRecord(kKey);
    EXPECT_EQ(record->fields().get(accord::DatePartAcc, 1), "21217");
    return std::string(record->fields().get(accord::TrancheAcc, 1)) + ":" +
           std::string(record->fields().get(accord::PartBenefAcc, 1));
  }
  // Reimbursement rate of the new period.
  std::string rateOf(const std::string& dates, const std::string& rates) const {
    const std::string list =
        listOf({{attribut::DateRembOrgChg, dates}, {attribut::TxRembOrgChg, rates}}, {}, "0");
    if (list != "modified") return list;
    const auto file = store->OpenFile("ACCORD");
    return std::string(file->ReadRecord(kKey)->fields().get(accord::TxRembAcc, 1));
  }
  // The history after the update, and the list.
  std::pair<std::string, std::string> historyOf(const Attributes& before) const {
    const std::string list = listOf({}, before, "90000");
    return {store.history(kKey), list};
  }

  AgreementStore store;
};

using History = std::pair<std::string, std::string>;

TEST_F(AgreementUpdate, PutsTheNewPeriodInFrontOfTheHistory) {
  EXPECT_EQ(historyOf({}), History("2305;2240|21217;20821|2;1|285;120", "modified"));
}

TEST_F(AgreementUpdate, LeavesTheOtherAttributesAsTheyAre) {
  listOf({}, {{accord::HeuresAcc, "7850"}, {8, "a;b"}, {14, "x"}, {19, "y;z"}}, "90000");
  EXPECT_EQ(store.shown("ACCORD", kKey),
            "125|beneficiary|7850||20821|21915|010P01|a;b||2305;2240|21217;20821|2;1|285;120|x|||||"
            "y;z");
  EXPECT_EQ(store.select("SSELECT ACCORD AVEC OrgChgAcc = \"125\""), kKey);
}

TEST_F(AgreementUpdate, ARowHoldsItsStartAndNotItsEndWhichTheLastRowHoldsToo) {
  const std::pair<const char*, const char*> rows[] = {
      {"-1", "limit"},     {"0", "1:135"},      {"1", "1:135"},      {"83599", "1:135"},
      {"83600", "2:285"},  {"83601", "2:285"},  {"105099", "2:285"}, {"105100", "3:435"},
      {"105101", "3:435"}, {"126599", "3:435"}, {"126600", "3:435"}, {"126601", "limit"}};
  for (const auto& [income, row] : rows) EXPECT_EQ(rowOf(income), row) << income;
}

TEST_F(AgreementUpdate, HouseholdsHaveBracketsOfTheirOwn) {
  const std::pair<const char*, const char*> rows[] = {
      {"-1", "limit"},     {"0", "1:135"},      {"129699", "1:135"}, {"129700", "2:285"},
      {"129701", "2:285"}, {"163099", "2:285"}, {"163100", "3:435"}, {"196499", "3:435"},
      {"196500", "3:435"}, {"196501", "limit"}};
  for (const auto& [income, row] : rows) EXPECT_EQ(rowOf(income, "M"), row) << income;
}

TEST_F(AgreementUpdate, ABeneficiaryWithoutAHouseholdKindIsASinglePerson) {
  EXPECT_EQ(rowOf("100000", "S"), "2:285");
  EXPECT_EQ(rowOf("100000", ""), "2:285");
  EXPECT_EQ(rowOf("100000", "M"), "1:135");
  EXPECT_EQ(rowOf("100000", "X"), "limit");
  EXPECT_EQ(rowOf("100000", "S;M"), "limit");
}

TEST_F(AgreementUpdate, ALastRowWithoutEndHoldsEveryIncomeFromItsStart) {
  for (const char* const ends : {"83600;105100", "83600;105100;", "83600;105100;0"}) {
    EXPECT_EQ(rowOf("126601", "", {{attribut::FinRevSeulOrgChg, ends}}), "3:435") << ends;
    EXPECT_EQ(rowOf("999999999999999999", "", {{attribut::FinRevSeulOrgChg, ends}}), "3:435")
        << ends;
    EXPECT_EQ(rowOf("105099", "", {{attribut::FinRevSeulOrgChg, ends}}), "2:285") << ends;
  }
}

TEST_F(AgreementUpdate, AnEarlierRowWithoutEndGoesAsFarAsTheNextBegins) {
  for (const char* const ends : {"83600;;126600", "83600;0;126600"}) {
    EXPECT_EQ(rowOf("105099", "", {{attribut::FinRevSeulOrgChg, ends}}), "2:285") << ends;
    EXPECT_EQ(rowOf("105100", "", {{attribut::FinRevSeulOrgChg, ends}}), "3:435") << ends;
  }
}

TEST_F(AgreementUpdate, RowsThatDoNotChainHoldWhatTheySay) {
  EXPECT_EQ(rowOf("83599", "", {{attribut::DebRevSeulOrgChg, "0;84000;105100"}}), "1:135");
  EXPECT_EQ(rowOf("83600", "", {{attribut::DebRevSeulOrgChg, "0;84000;105100"}}), "limit");
  EXPECT_EQ(rowOf("84000", "", {{attribut::DebRevSeulOrgChg, "0;84000;105100"}}), "2:285");
  EXPECT_EQ(rowOf("83599", "", {{attribut::DebRevSeulOrgChg, "0;80000;105100"}}), "1:135");
}

TEST_F(AgreementUpdate, AHouseholdsRowThatHasNoBracketIsPassedOver) {
  const Attributes fewer = {{attribut::DebRevMenOrgChg, "0;129700"},
                            {attribut::FinRevMenOrgChg, "129700;163100"}};
  EXPECT_EQ(rowOf("163100", "M", fewer), "2:285");
  EXPECT_EQ(rowOf("163101", "M", fewer), "limit");
  const Attributes emptyLast = {{attribut::DebRevMenOrgChg, "0;129700;"},
                                {attribut::FinRevMenOrgChg, "129700;163100;"}};
  EXPECT_EQ(rowOf("163100", "M", emptyLast), "2:285");
  EXPECT_EQ(rowOf("163101", "M", emptyLast), "limit");
  const Attributes emptyAmid = {{attribut::DebRevMenOrgChg, "0;;163100"},
                                {attribut::FinRevMenOrgChg, "129700;;196500"}};
  EXPECT_EQ(rowOf("129700", "M", emptyAmid), "limit");
  EXPECT_EQ(rowOf("163100", "M", emptyAmid), "3:435");
}

TEST_F(AgreementUpdate, ABodyWithoutScaleHoldsNoIncome) {
  const Attributes none = {{attribut::DebRevSeulOrgChg, ""},
                           {attribut::FinRevSeulOrgChg, ""},
                           {attribut::DebRevMenOrgChg, ""},
                           {attribut::FinRevMenOrgChg, ""},
                           {attribut::BaremCoursOrgChg, ""}};
  EXPECT_EQ(rowOf("0", "", none), "limit");
  EXPECT_EQ(rowOf("0", "M", none), "limit");
}

TEST_F(AgreementUpdate, AnEmptyParticipationIsZero) {
  EXPECT_EQ(rowOf("90000", "", {{attribut::BaremCoursOrgChg, "135;;435"}}), "2:0");
  EXPECT_EQ(rowOf("90000", "", {{attribut::BaremCoursOrgChg, "135"}}), "2:0");
  EXPECT_EQ(rowOf("90000", "", {{attribut::BaremCoursOrgChg, "135;0;435"}}), "2:0");
}

TEST_F(AgreementUpdate, NumbersOfTheScaleThatCannotBeReadMakeNoPeriod) {
  EXPECT_EQ(rowOf("90000", "", {{attribut::BaremCoursOrgChg, "135;2,85;435"}}), "limit");
  EXPECT_EQ(rowOf("0", "", {{attribut::BaremCoursOrgChg, "135;2,85;435"}}), "1:135");
  EXPECT_EQ(rowOf("90000", "", {{attribut::DebRevSeulOrgChg, "0;abc;105100"}}), "limit");
  EXPECT_EQ(rowOf("90000", "", {{attribut::FinRevSeulOrgChg, "83600;abc;126600"}}), "limit");
  EXPECT_EQ(rowOf("106000", "", {{attribut::FinRevSeulOrgChg, "83600;abc;126600"}}), "3:435");
  EXPECT_EQ(rateOf("21186", "23x5"), "limit");
}

TEST_F(AgreementUpdate, TheRateIsTheFirstThatAppliesOnTheScaleDate) {
  EXPECT_EQ(rateOf("21218;20821", "2305;2240"), "2240");
  EXPECT_EQ(rateOf("21217;20821", "2305;2240"), "2305");
  EXPECT_EQ(rateOf("21216;20821", "2305;2240"), "2305");
  EXPECT_EQ(rateOf("21217.5;20821", "2305;2240"), "2305");
  EXPECT_EQ(rateOf("?;20821", "2305;2240"), "2240");
  EXPECT_EQ(rateOf("21218", "2305"), "");
  EXPECT_EQ(rateOf("21186;20821", ";2240"), "");
  EXPECT_EQ(rateOf("", ""), "");
}

TEST_F(AgreementUpdate, ABodyWithoutRatesKeepsTheHistoryAligned) {
  store.putBody({{attribut::DateRembOrgChg, ""}, {attribut::TxRembOrgChg, ""}});
  store.putElements("00001", "90000");
  store.putAgreement("00001001", {{accord::TxRembAcc, ""}});
  store.putAgreement("00001002",
                     {{accord::TxRembAcc, "2240;2200"}, {accord::DatePartAcc, "20821;20456"}});
  store.update();
  EXPECT_EQ(store.history("00001001"), "|21217;20821|2;1|285;120");
  EXPECT_EQ(store.history("00001002"), ";2240;2200|21217;20821;20456|2;1|285;120");
}

TEST_F(AgreementUpdate, IncomesThatAreMissingOrCannotBeReadGiveTheLimit) {
  for (const char* const income : {"", " ", "abc", "900,00", "90000x", "-", "90000;80000",
                                   "9999999999999999999", "1000000000000000000000000"}) {
    EXPECT_EQ(rowOf(income), "limit") << income;
  }
  EXPECT_EQ(rowOf(" 90000 "), "2:285");
  store.putBody();
  store.putAgreement(kKey);
  store->OpenFile("ELTSFACTAIDE")->DeleteRecord("00001");
  EXPECT_EQ(listAfterUpdate(), "limit");
}

TEST_F(AgreementUpdate, ConcernsAgreementsThatEndOnOrAfterTheScaleDate) {
  EXPECT_EQ(listOf({}, {{accord::DateFinAcc, "21216"}}, "90000"), "");
  EXPECT_EQ(listOf({}, {{accord::DateFinAcc, "21217"}}, "90000"), "modified");
  EXPECT_EQ(listOf({}, {{accord::DateFinAcc, "21218"}}, "90000"), "modified");
  EXPECT_EQ(listOf({}, {{accord::DateFinAcc, "21216.9"}}, "90000"), "");
  EXPECT_EQ(listOf({}, {{accord::DateFinAcc, "21217,1"}}, "90000"), "modified");
  EXPECT_EQ(listOf({}, {{accord::DateFinAcc, ""}}, "90000"), "");
}

TEST_F(AgreementUpdate, AnEndThatCannotBeReadGivesTheLimit) {
  for (const char* const end : {"abc", "31/12/2027", "21915;21900", "21217.", "21915x"}) {
    EXPECT_EQ(listOf({}, {{accord::DateFinAcc, end}}, "90000"), "limit") << end;
  }
}

TEST_F(AgreementUpdate, LeavesClosedAgreementsOut) {
  EXPECT_EQ(listOf({}, {{accord::ClotureAcc, "O"}}, "90000"), "");
  EXPECT_EQ(listOf({}, {{accord::ClotureAcc, "N"}}, "90000"), "");
  EXPECT_EQ(listOf({}, {{accord::ClotureAcc, ""}}, "90000"), "modified");
}

TEST_F(AgreementUpdate, AHistoryWithALaterDayGivesTheLimit) {
  EXPECT_EQ(historyOf({{accord::DatePartAcc, "21216"}}).second, "modified");
  EXPECT_EQ(historyOf({{accord::DatePartAcc, "21218"}}), History("2240|21218|1|120", "limit"));
  EXPECT_EQ(historyOf({{accord::DatePartAcc, "20821;21218"}}).second, "limit");
  EXPECT_EQ(historyOf({{accord::DatePartAcc, "21217;21218"}}).second, "limit");
}

TEST_F(AgreementUpdate, APeriodThatBeginsOnTheScaleDateIsReplaced) {
  EXPECT_EQ(historyOf({{accord::TxRembAcc, "1;2"},
                       {accord::DatePartAcc, "21217;20821"},
                       {accord::TrancheAcc, "3;4"},
                       {accord::PartBenefAcc, "5;6"}}),
            History("2305;2|21217;20821|2;4|285;6", "modified"));
  EXPECT_EQ(historyOf({{accord::DatePartAcc, "21217.75"}}),
            History("2305|21217|2|285", "modified"));
  EXPECT_EQ(historyOf({{accord::TxRembAcc, "1;2"},
                       {accord::DatePartAcc, "20821;21217"},
                       {accord::TrancheAcc, "3;4"},
                       {accord::PartBenefAcc, "5;6"}}),
            History("1;2305|20821;21217|3;2|5;285", "modified"));
}

TEST_F(AgreementUpdate, ADayOfTheHistoryThatCannotBeReadGivesTheLimit) {
  for (const char* const days : {"abc", "20821;", ";20821", "20821;abc", "2025-01-01"}) {
    EXPECT_EQ(historyOf({{11, days}}).second, "limit") << days;
  }
}

TEST_F(AgreementUpdate, AnAgreementWithoutHistoryBeginsOne) {
  EXPECT_EQ(historyOf({{accord::TxRembAcc, ""},
                       {accord::DatePartAcc, ""},
                       {accord::TrancheAcc, ""},
                       {accord::PartBenefAcc, ""}}),
            History("2305|21217|2|285", "modified"));
}

TEST_F(AgreementUpdate, HistoriesOfUnequalLengthKeepTheirPositions) {
  EXPECT_EQ(historyOf({{accord::TxRembAcc, ""},
                       {accord::DatePartAcc, "20821;20456"},
                       {accord::TrancheAcc, "7"},
                       {accord::PartBenefAcc, "8;9;10"}}),
            History("2305|21217;20821;20456|2;7|285;8;9;10", "modified"));
  EXPECT_EQ(historyOf({{accord::TxRembAcc, "1"},
                       {accord::DatePartAcc, "21217;20456"},
                       {accord::TrancheAcc, ""},
                       {accord::PartBenefAcc, "8;9;10"}}),
            History("2305|21217;20456|2|285;9;10", "modified"));
}

TEST_F(AgreementUpdate, ListsTheKeysInTheirOrderOneAnAttribute) {
  store.putBody();
  for (const char* const key : {"00002001", "00001002", "00001001", "00010001", "00003001"}) {
    store.putAgreement(key);
  }
  store.putAgreement("00002002", {{accord::DatePartAcc, "21300"}});
  store.putElements("00001", "90000");
  store.putElements("00002", "0", "M");
  store.putElements("00003", "");
  store.update();
  EXPECT_EQ(store.modified(), "00001001|00001002|00002001");
  EXPECT_EQ(store.limit(), "00002002|00003001|00010001");
  EXPECT_EQ(store.history("00001002"), "2305;2240|21217;20821|2;1|285;120");
  EXPECT_EQ(store.history("00002001"), "2305;2240|21217;20821|1;1|135;120");
}

// More than are carried in one step; every third has no income, every fifth a day that cannot be
// read though its beneficiary has an income.
TEST_F(AgreementUpdate, ManyAgreementsAreUpdatedAsFewAre) {
  constexpr int kAgreements = 1203;
  store.putBody();
  const auto transaction = store->begin();
  std::string modified;
  std::string limit;
  for (int i = 0; i < kAgreements; ++i) {
    const std::string number = std::to_string(10000 + i / 2);
    const std::string key = number + std::to_string(100 + i % 2);
    const bool income = i / 2 % 3 != 0;
    const bool readable = i % 5 != 0;
    store.putElements(number, income ? "90000" : "");
    store.putAgreement(key, {{accord::DateFinAcc, readable ? "21915" : "x"}});
    std::string& keys = income && readable ? modified : limit;
    keys += (keys.empty() ? "" : "|") + key;
  }
  transaction->commit();
  store.update();
  EXPECT_EQ(store.modified(), modified);
  EXPECT_EQ(store.limit(), limit);
  EXPECT_EQ(store.history("10002101"), "2240|20821|1|120") << "5 is one of the fifth";
  EXPECT_EQ(store.history("10599101"), "2305;2240|21217;20821|2;1|285;120");
}

TEST_F(AgreementUpdate, TheBeneficiaryIsTheFirstFiveCharactersOfTheKey) {
  store.putBody();
  store.putElements("12", "90000");
  store.putElements("12345", "0");
  store.putElements("ÀÉÎÕÜ", "110000");
  for (const char* const key : {"12", "12345", "123456", "ÀÉÎÕÜ001"}) store.putAgreement(key);
  store.update();
  EXPECT_EQ(store.modified(), "12|12345|123456|ÀÉÎÕÜ001");
  EXPECT_EQ(store.history("12"), "2305;2240|21217;20821|2;1|285;120");
  EXPECT_EQ(store.history("12345"), "2305;2240|21217;20821|1;1|135;120");
  EXPECT_EQ(store.history("123456"), store.history("12345"));
  EXPECT_EQ(store.history("ÀÉÎÕÜ001"), "2305;2240|21217;20821|3;1|435;120");
}

TEST_F(AgreementUpdate, ListsTakeThePlaceOfEarlierOnesAndEmptyOnesLeaveNoRecord) {
  store.putBody();
  store->write("TEMPO", "ACCORDSMODIFIES125", recordText({"old", "older"}));
  store->write("TEMPO", "ACCORDSLIMITE125", recordText({"old"}));
  store.update();
  EXPECT_EQ(contentOf(*store, "TEMPO"), Content());
  store->write("TEMPO", "ACCORDSMODIFIES125", recordText({"old", "older"}));
  store->write("TEMPO", "ACCORDSLIMITE125", recordText({"old"}));
  store.putAgreement(kKey);
  store.update();
  EXPECT_EQ(contentOf(*store, "TEMPO"), (Content{{"ACCORDSLIMITE125", kKey}}));
}

TEST_F(AgreementUpdate, ASecondRunChangesNothingMore) {
  store.putBody();
  store.putAgreement("00001001");
  store.putAgreement("00001002", {{accord::DatePartAcc, "21300"}});
  store.putAgreement("00002001");
  store.putElements("00001", "90000");
  store.update();
  const Content agreements = contentOf(*store, "ACCORD");
  const Content lists = contentOf(*store, "TEMPO");
  store.update();
  EXPECT_EQ(contentOf(*store, "ACCORD"), agreements);
  EXPECT_EQ(contentOf(*store, "TEMPO"), lists);
  EXPECT_EQ(store.modified(), "00001001");
  EXPECT_EQ(store.limit(), "00001002|00002001");
}

TEST_F(AgreementUpdate, OtherBodiesAgreementsAndListsAreLeftAlone) {
  store.putBody();
  store.putBody({}, "12");
  store.putElements("00001", "90000");
  store.putAgreement("00001001", {{accord::OrgChgAcc, "12"}});
  store.putAgreement("00001002", {{accord::OrgChgAcc, "1255"}});
  store.putAgreement("00001003", {{accord::OrgChgAcc, ""}});
  store.putAgreement("00001004");
  store->write("TEMPO", "ACCORDSLIMITE1", "1");
  const Content before = contentOf(*store, "ACCORD");
  store.update();
  Content after = contentOf(*store, "ACCORD");
  EXPECT_NE(after.at("00001004"), before.at("00001004"));
  after["00001004"] = before.at("00001004");
  EXPECT_EQ(after, before);
  store.update(kScaleDate, "12");
  EXPECT_EQ(contentOf(*store, "TEMPO"), (Content{{"ACCORDSLIMITE1", "1"},
                                                 {"ACCORDSMODIFIES12", "00001001"},
                                                 {"ACCORDSMODIFIES125", "00001004"}}));
}

TEST_F(AgreementUpdate, AnAgreementOfSeveralBodiesIsOfEachAsInSelections) {
  EXPECT_EQ(listOf({}, {{accord::OrgChgAcc, "083;125"}}, "90000"), "modified");
}

TEST_F(AgreementUpdate, RunsAloneAmidOtherCommandsAndWithBlanksAroundItsParts) {
  store.putBody();
  store.putElements("00001", "90000");
  for (const char* const command : {"MAJTXACCGENE |01/02/2026|125", "MAJTXACCGENE|01/02/2026|125",
                                    "  MAJTXACCGENE | 1/2/2026 | 125  "}) {
    store.putAgreement(kKey);
    store::DynamicArray request;
    request.set(1, command);
    request.set(2, "SET-DEC ,");
    EXPECT_EQ(store->ExecuteSentence(request.text()).text(), "") << command;
    EXPECT_EQ(store.history(kKey), "2305;2240|21217;20821|2;1|285;120") << command;
  }
}

TEST_F(AgreementUpdate, WhatFollowsABadCommandIsNotRun) {
  store.putBody();
  store.putAgreement(kKey);
  store.putElements("00001", "90000");
  store::DynamicArray request;
  request.set(1, "NOTHING");
  request.set(2, "MAJTXACCGENE |01/02/2026|125");
  EXPECT_EQ(errorOf([&] { store->ExecuteSentence(request.text()); }), store::kBadSentence);
  EXPECT_EQ(store.history(kKey), kBefore);
}

TEST_F(AgreementUpdate, RefusesBadArgumentsTellsThePlaceAndChangesNoAgreement) {
  store.putBody();
  store.putBody({}, "1");
  store.putAgreement(kKey);
  store.putElements("00001", "90000");
  const std::string usage = "MAJTXACCGENE takes a date and a body's code, each after a \"|\"";
  const std::string date = "character 15: a date dd/mm/yyyy is expected";
  const std::pair<const char*, std::string> refused[] = {
      {"MAJTXACCGENE", "character 13: " + usage},
      {"MAJTXACCGENE |01/02/2026", "character 25: " + usage},
      {"MAJTXACCGENE |01/02/2026|125|", "character 29: " + usage},
      {"MAJTXACCGENE ||125", date},
      {"MAJTXACCGENE |30/02/2026|125", date},
      {"MAJTXACCGENE |01/02/26|125", date},
      {"MAJTXACCGENE |21217|125", date},
      {"MAJTXACCGENE |01/02/2026|", "character 26: a body's code is expected"},
      {"MAJTXACCGENE |01/02/2026| ", "character 26: a body's code is expected"},
      {"MAJTXACCGENE |01/02/2026|126", "character 26: no funding body has this code"},
      {"MAJTXACCGENE |01/02/2026|0125", "character 26: no funding body has this code"},
      {"majtxaccgene |01/02/2026|125", "character 1: unknown command \"majtxaccgene\""}};
  for (const auto& [command, message] : refused) {
    const auto run = [&, sent = command] { store->ExecuteSentence(sent); };
    EXPECT_EQ(errorOf(run), store::kBadSentence) << command;
    EXPECT_EQ(messageOf(run).substr(0, message.size()), message) << command;
  }
  EXPECT_EQ(store.history(kKey), kBefore);
}

TEST_F(AgreementUpdate, OneThatIsRefusedDeletesTheListsOfTheCodeThatItNames) {
  store.putBody();
  const std::string other = "ACCORDSLIMITE12";
  for (const char* command :
       {"MAJTXACCGENE |30/02/2026|125", "MAJTXACCGENE ||125", "MAJTXACCGENE |01/02/2026| 125 |",
        "MAJTXACCGENE |01/02/2026|125|x", "MAJTXACCGENE |01/02/2026|126"}) {
    const std::string code = std::string(command).ends_with("126") ? "126" : "125";
    for (const std::string& id : {"ACCORDSLIMITE" + code, "ACCORDSMODIFIES" + code, other}) {
      store->write("TEMPO", id, "old");
    }
    EXPECT_EQ(errorOf([&] { store->ExecuteSentence(command); }), store::kBadSentence) << command;
    EXPECT_EQ(contentOf(*store, "TEMPO"), (Content{{other, "old"}})) << command;
  }
}

TEST_F(AgreementUpdate, OneThatNamesNoCodeLeavesAllLists) {
  store.putBody();
  for (const char* id : {"ACCORDSLIMITE", "ACCORDSLIMITE125"}) store->write("TEMPO", id, "old");
  const Content before = contentOf(*store, "TEMPO");
  for (const char* command : {"MAJTXACCGENE", "MAJTXACCGENE |01/02/2026",
                              "MAJTXACCGENE |01/02/2026|", "MAJTXACCGENE |01/02/2026| |125"}) {
    EXPECT_EQ(errorOf([&] { store->ExecuteSentence(command); }), store::kBadSentence) << command;
    EXPECT_EQ(contentOf(*store, "TEMPO"), before) << command;
  }
}

TEST_F(AgreementUpdate, OneThatIsRefusedInATransactionDeletesWithIt) {
  store.putBody();
  store->write("TEMPO", "ACCORDSLIMITE125", "old");
  {
    const auto transaction = store->begin();
    EXPECT_EQ(errorOf([&] { store.update("no date"); }), store::kBadSentence);
    EXPECT_EQ(contentOf(*store, "TEMPO"), Content());
  }
  EXPECT_EQ(contentOf(*store, "TEMPO"), (Content{{"ACCORDSLIMITE125", "old"}}));
}

TEST_F(AgreementUpdate, IsAPartOfATransactionThatIsOpen) {
  listOf({}, {{accord::DatePartAcc, "21300"}}, "90000");
  store.putAgreement("00001002");
  {
    const auto transaction = store->begin();
    store.update();
    EXPECT_EQ(store.modified(), "00001002");
    EXPECT_EQ(errorOf([&] { store.update("no date"); }), store::kBadSentence);
  }
  EXPECT_EQ(store.history("00001002"), kBefore);
  EXPECT_EQ(store.modified(), kNone);
}

TEST_F(AgreementUpdate, FailsWhileAnotherWriterHoldsWhatItReads) {
  store.putBody();
  store.putAgreement(kKey);
  store.putElements("00001", "90000");
  Connecting how;
  how.busyTimeout = 20;
  const auto other = store.connect(how);
  const auto run = [&] { other->ExecuteSentence(updateRequest(kScaleDate, "125")); };
  {
    const auto transaction = store->begin();
    store.putElements("00001", "0");
    EXPECT_EQ(errorOf(run), store::kBusy);
  }
  EXPECT_EQ(store.history(kKey), kBefore);
  EXPECT_EQ(store.modified(), kNone);
  run();
  EXPECT_EQ(store.modified(), kKey);
}

TEST_F(AgreementUpdate, AStoreWithoutTheFilesRefusesIt) {
  EXPECT_EQ(errorOf([&] { store.update(); }), store::kBadSentence);
}

}  // namespace
