// Changed rates on their way into the agreements, asked for by the host.
#include <algorithm>

#include "store/Conversions.h"
#include "store/Layouts.h"
#include "tests/behaviour/CoverageTest.h"
#include "tests/support/FaultyDesktop.h"
#include "tests/support/Seed.h"
#include "toolkit/ControlClosed.h"

namespace behaviour {
namespace {

namespace accord = store::accord;

using DesktopCall = testing_support::FaultyDesktop::Kind;
using toolkit::headless::Entry;
// Rate, date, row of the scale, participation, as they are shown; most recent first.
using History = Rows;

class RatePropagation : public Coverage {
 protected:
  RatePropagation() {
    agreement("00001001",
              {{"18,00", "01/02/2026", "2", "5,00"}, {"17,00", "01/01/2025", "1", "4,00"}});
  }
  void agreement(std::string_view key, const History& history, std::string_view end = "31/12/2026",
                 std::string_view body = "001", std::string_view closed = "") {
    store::DynamicArray record;
    record.set(accord::OrgChgAcc, body);
    record.set(accord::DateDebAcc, stored("01/01/2025"));
    record.set(accord::DateFinAcc, stored(end));
    record.set(accord::ClotureAcc, closed);
    int position = 0;
    for (const Row& row : history) {
      ++position;
      record.set(accord::TxRembAcc, position, stored(row[0]));
      record.set(accord::DatePartAcc, position, stored(row[1]));
      record.set(accord::TrancheAcc, position, row[2]);
      record.set(accord::PartBenefAcc, position, stored(row[3]));
    }
    store_.put("ACCORD", key, record);
  }
  History history(std::string_view key = "00001001") {
    const store::DynamicArray record = store_.record("ACCORD", key);
    int count = 0;
    for (int a = accord::TxRembAcc; a <= accord::PartBenefAcc; ++a)
      count = std::max(count, record.DCount(a));
    History rows;
    for (int v = 1; v <= count; ++v) {
      rows.push_back({store::shownHundredths(record.get(accord::TxRembAcc, v)),
                      store::textOfDay(record.get(accord::DatePartAcc, v)),
                      std::string(record.get(accord::TrancheAcc, v)),
                      store::shownHundredths(record.get(accord::PartBenefAcc, v))});
    }
    return rows;
  }
  // The host carries the rates; the keys written.
  std::vector<std::string> carry(Caller at = Caller::here()) {
    const auto trace = called("carry", at);
    store_.forgetCalls();
    desktop_.clearJournal();
    control_->Recup_AccordTauxRemb();
    EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
    EXPECT_TRUE(control_->surface().enabled());
    return written();
  }
  std::vector<std::string> written() {
    std::vector<std::string> keys;
    for (const auto& call : store_.calls(CallKind::DBWrite)) keys.push_back(call.id);
    return keys;
  }
  std::string sentence() {
    const auto calls = store_.calls(CallKind::ExecuteSentence);
    return calls.empty() ? "" : std::string(store::DynamicArray(calls.front().text).get(1));
  }
  static std::string sentenceFrom(std::string_view date) {
    return "SSELECT ACCORD AVEC OrgChgAcc = \"001\" AND AVEC 18 # \"O\" AND AVEC 6 > \"" +
           stored(date) + "\"";
  }
  std::vector<std::string> forms() {
    std::vector<std::string> words;
    for (const Entry& entry : desktop_.journal()) {
      if (entry.what == Entry::What::Shown) words.push_back("shown " + entry.text);
      if (entry.what == Entry::What::Closed) words.push_back("closed " + entry.text);
      if (entry.what == Entry::What::Events) words.push_back("events");
    }
    return words;
  }
};

TEST_F(RatePropagation, SelectsWhatEndsAfterTheLatestRate) {
  EXPECT_PRED_FORMAT2(same, carry(), std::vector<std::string>{"00001001"});
  EXPECT_EQ(sentence(), sentenceFrom("01/01/2026"));
  const store::DynamicArray request(store_.calls().front().text);
  EXPECT_EQ(request.get(2), "ACCORD");
  EXPECT_EQ(request.get(3), "0");
}

TEST_F(RatePropagation, SelectsFromTheOldestRateThatHasChanged) {
  addRate({"01/03/2026", "30,00", "35,00", "20,00"});
  addRate({"01/05/2026", "40,00", "45,00", "20,00"});
  carry();
  EXPECT_EQ(sentence(), sentenceFrom("01/03/2026"));
  show();
  ASSERT_TRUE(openRate(0));
  user_->fill(box("Txt_TxRembOrgChg"), "19");
  ASSERT_TRUE(press("Cmd_OKTaux"));
  addRate({"01/03/2026", "30,00", "35,00", "20,00"});
  carry();
  EXPECT_EQ(sentence(), sentenceFrom("01/01/2026"));
}

TEST_F(RatePropagation, SelectsFromARowWhoseDateAloneHasChanged) {
  ASSERT_TRUE(openRate(0));
  user_->fill(box("Txt_DateRembOrgChg"), "01022026");
  ASSERT_TRUE(press("Cmd_OKTaux"));
  carry();
  EXPECT_EQ(sentence(), sentenceFrom("01/02/2026"));
}

TEST_F(RatePropagation, SelectsFromTheLatestWhenAChangeHasBeenTakenBack) {
  addRate({"01/03/2026", "30,00", "35,00", "20,00"});
  ASSERT_TRUE(openRate(0));
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_SuppTaux"));
  carry();
  EXPECT_EQ(sentence(), sentenceFrom("01/01/2026"));
}

TEST_F(RatePropagation, SelectsFromTheLatestWhenOthersHaveChangedThanWhatConcernsAgreements) {
  ASSERT_TRUE(openRate(0));
  user_->fill(box("Txt_TxRembMajOrgChg"), "90");
  ASSERT_TRUE(press("Cmd_OKTaux"));
  carry();
  EXPECT_EQ(sentence(), sentenceFrom("01/01/2026"));
}

TEST_F(RatePropagation, WhichAgreementsItConcerns) {
  agreement("A1", {}, "01/01/2026");
  agreement("A2", {}, "02/01/2026");
  agreement("A3", {}, "31/12/2026", "002");
  agreement("A4", {}, "31/12/2026", "001", "O");
  agreement("A5", {}, "31/12/2026", "001", "N");
  EXPECT_PRED_FORMAT2(same, carry(), (std::vector<std::string>{"00001001", "A2", "A5"}));
}

TEST_F(RatePropagation, PutsTheNewPeriodOverWhatFollowsItsDate) {
  const std::string rate = rates()[0][1];
  carry();
  EXPECT_PRED_FORMAT2(
      same, history(),
      (History{{rate, "01/01/2026", "1", "4,00"}, {"17,00", "01/01/2025", "1", "4,00"}}));
}

TEST_F(RatePropagation, TakesRowAndParticipationFromThePeriodThatItCuts) {
  agreement("00001001", {{"19,00", "01/06/2026", "3", "6,00"},
                         {"18,00", "01/01/2026", "2", "5,00"},
                         {"17,00", "01/01/2025", "1", "4,00"}});
  const std::string rate = rates()[0][1];
  carry();
  EXPECT_PRED_FORMAT2(
      same, history(),
      (History{{rate, "01/01/2026", "2", "5,00"}, {"17,00", "01/01/2025", "1", "4,00"}}));
}

TEST_F(RatePropagation, AnUntouchedRowRemovesNoPeriod) {
  addRate({"01/03/2026", "30,00", "35,00", "20,00"});
  addRate({"01/05/2026", "40,00", "45,00", "20,00"});
  carry();
  EXPECT_PRED_FORMAT2(same, history(),
                      (History{{"40,00", "01/05/2026", "2", "5,00"},
                               {"30,00", "01/03/2026", "2", "5,00"},
                               {"18,00", "01/02/2026", "2", "5,00"},
                               {"17,00", "01/01/2025", "1", "4,00"}}));
}

TEST_F(RatePropagation, AnUntouchedRowAfterAChangedOneKeepsItsRate) {
  // Read in disorder, so that the row that may be changed is the oldest.
  putRates({{"01/01/2025", "19,00", "25,00", "15,00"}, {"01/02/2026", "21,00", "25,00", "15,00"}});
  show();
  addRate({"01/12/2025", "20,00", "25,00", "15,00"});
  ASSERT_EQ(rates()[0][0], "01/02/2026");
  carry();
  EXPECT_PRED_FORMAT2(same, history(),
                      (History{{"21,00", "01/02/2026", "2", "5,00"},
                               {"20,00", "01/12/2025", "1", "4,00"},
                               {"17,00", "01/01/2025", "1", "4,00"}}));
}

TEST_F(RatePropagation, InsertsSeveralPeriodsMostRecentFirst) {
  ASSERT_TRUE(openRate(0));
  user_->fill(box("Txt_TxRembOrgChg"), "19");
  ASSERT_TRUE(press("Cmd_OKTaux"));
  addRate({"01/03/2026", "30,00", "35,00", "20,00"});
  addRate({"01/05/2026", "40,00", "45,00", "20,00"});
  const Rows shown = rates();
  ASSERT_EQ(shown[2][1], "19,00");
  carry();
  EXPECT_PRED_FORMAT2(same, history(),
                      (History{{"40,00", "01/05/2026", "2", "5,00"},
                               {"30,00", "01/03/2026", "2", "5,00"},
                               {shown[2][1], "01/01/2026", "1", "4,00"},
                               {"17,00", "01/01/2025", "1", "4,00"}}));
}

TEST_F(RatePropagation, OfAnAgreementThatStartsLaterKeepsWhatItStartsWith) {
  agreement("00001001",
            {{"19,00", "01/08/2026", "3", "6,00"}, {"18,00", "01/06/2026", "2", "5,00"}});
  const std::string rate = rates()[0][1];
  carry();
  EXPECT_PRED_FORMAT2(same, history(), (History{{rate, "01/01/2026", "2", "5,00"}}));
}

TEST_F(RatePropagation, BeginsAHistoryThatWasEmpty) {
  agreement("00001001", {});
  const std::string rate = rates()[0][1];
  carry();
  EXPECT_PRED_FORMAT2(same, history(), (History{{rate, "01/01/2026", "", ""}}));
}

TEST_F(RatePropagation, KeepsAPeriodTheDayBefore) {
  agreement("00001001", {{"18,00", "31/12/2025", "2", "5,00"}});
  const std::string rate = rates()[0][1];
  carry();
  EXPECT_PRED_FORMAT2(
      same, history(),
      (History{{rate, "01/01/2026", "2", "5,00"}, {"18,00", "31/12/2025", "2", "5,00"}}));
}

TEST_F(RatePropagation, KeepsTheListsAlignedWhereSomeAreShorter) {
  agreement("00001001", {{"", "01/02/2026", "2", "5,00"}, {"", "01/01/2025", "", "4,00"}});
  const std::string rate = rates()[0][1];
  carry();
  EXPECT_PRED_FORMAT2(same, history(),
                      (History{{rate, "01/01/2026", "", "4,00"}, {"", "01/01/2025", "", "4,00"}}));
}

TEST_F(RatePropagation, TwiceIsAsOnce) {
  addRate({"01/03/2026", "30,00", "35,00", "20,00"});
  carry();
  const History once = history();
  carry();
  EXPECT_PRED_FORMAT2(same, history(), once);
}

TEST_F(RatePropagation, LeavesTheRestOfTheAgreementAlone) {
  store_.set("ACCORD", "00001001", accord::CodActAcc, "010P01");
  const store::DynamicArray before = store_.record("ACCORD", "00001001");
  carry();
  const store::DynamicArray after = store_.record("ACCORD", "00001001");
  for (int a = 1; a <= accord::Dernier; ++a) {
    const bool carried = a >= accord::TxRembAcc && a <= accord::PartBenefAcc;
    if (!carried) EXPECT_EQ(after.get(a), before.get(a)) << a;
  }
}

TEST_F(RatePropagation, ShowsTheWaitingWindowAndLetsEventsRunForEachAgreement) {
  agreement("00002001", {});
  carry();
  EXPECT_PRED_FORMAT2(same, forms(),
                      (std::vector<std::string>{"shown Frm_Anim", "events", "events", "events",
                                                "closed Frm_Anim"}));
}

TEST_F(RatePropagation, ReadsEachAgreementBeforeEventsRun) {
  int read = 0;
  desktop_.onEvents = [&] {
    read = static_cast<int>(store_.calls(CallKind::ReadRecord).size());
    EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), 0U);
    EXPECT_FALSE(control_->surface().enabled());
    EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Hourglass);
    EXPECT_THROW(control_->Vider_Donnees(), control::Busy);
  };
  carry();
  EXPECT_EQ(read, 1);
}

TEST_F(RatePropagation, WithoutAnyAgreementShowsNothing) {
  store_.erase("ACCORD", "00001001");
  EXPECT_TRUE(carry().empty());
  EXPECT_TRUE(forms().empty());
}

TEST_F(RatePropagation, WithoutARateDoesNothing) {
  putRates({});
  show();
  EXPECT_TRUE(carry().empty());
  EXPECT_TRUE(store_.calls().empty());
}

TEST_F(RatePropagation, WithoutABodyDoesNothing) {
  control_->Vider_Donnees();
  carry();
  EXPECT_TRUE(store_.calls().empty());
  beginCreation();
  carry();
  EXPECT_TRUE(store_.calls().empty());
}

TEST_F(RatePropagation, NeedsRightsAndAnInit) {
  level_->value = 1;
  EXPECT_THROW(control_->Recup_AccordTauxRemb(), control::AccessDenied);
  control::Ctr_OrgPriseCharge fresh(desktop_);
  EXPECT_THROW(fresh.Recup_AccordTauxRemb(), control::NotReady);
}

TEST_F(RatePropagation, IsNotAskedForByASave) {
  addRate({"01/03/2026", "30,00", "35,00", "20,00"});
  const History before = history();
  save();
  EXPECT_PRED_FORMAT2(same, history(), before);
}

TEST_F(RatePropagation, EndsWithASelectionThatFails) {
  store_.fail(CallKind::ExecuteSentence, "ACCORD", store::kBusy);
  EXPECT_THROW(control_->Recup_AccordTauxRemb(), store::StoreError);
  EXPECT_TRUE(forms().empty());
  EXPECT_TRUE(control_->surface().enabled());
  EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
}

TEST_F(RatePropagation, DoesTheOthersWhenOneFailsAndTellsInTheEnd) {
  agreement("00002001", {});
  agreement("00003001", {});
  const History before = history("00002001");
  // The selection, then a read and a write each.
  for (const int call : {4, 5}) {
    agreement("00002001", {});
    store_.forgetCalls();
    store_.failAt(call);
    EXPECT_THROW(control_->Recup_AccordTauxRemb(), store::StoreError);
    EXPECT_PRED_FORMAT2(same, history("00002001"), before) << call;
    EXPECT_FALSE(history("00003001").empty());
    EXPECT_TRUE(control_->surface().enabled());
    EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
    EXPECT_EQ(forms().back(), "closed Frm_Anim");
  }
  carry();
  EXPECT_EQ(history("00002001").size(), 1U);
}

TEST_F(RatePropagation, DoesNotBringBackAnAgreementThatHasGone) {
  store_.answer(sentenceFrom("01/01/2026"), {{"00001001"}, {"99999001"}});
  EXPECT_PRED_FORMAT2(same, carry(), std::vector<std::string>{"00001001"});
  EXPECT_FALSE(store_.has("ACCORD", "99999001"));
}

TEST_F(RatePropagation, EndsWhereTheHostClosesIt) {
  agreement("00002001", {});
  int events = 0;
  desktop_.onEvents = [&] {
    if (++events == 3) throw toolkit::ControlClosed();
  };
  store_.forgetCalls();
  EXPECT_THROW(control_->Recup_AccordTauxRemb(), toolkit::ControlClosed);
  EXPECT_PRED_FORMAT2(same, written(), std::vector<std::string>{"00001001"});
  EXPECT_EQ(forms().back(), "closed Frm_Anim");
  EXPECT_TRUE(control_->surface().enabled());
}

// --- Where the desktop fails.

class RatePropagationFailure : public RatePropagation {
 protected:
  RatePropagationFailure() {
    agreement("00002001", {});
    user_.reset();
    control_ = std::make_unique<control::Ctr_OrgPriseCharge>(faulty_);
    user_ = std::make_unique<toolkit::headless::User>(control_->surface());
    start();
    show();
  }
  ~RatePropagationFailure() override {
    // The control goes before the desktop that it stands on.
    user_.reset();
    control_.reset();
  }
  void expectBothUpdated(Caller at = Caller::here()) {
    const auto trace = called("expectBothUpdated", at);
    EXPECT_PRED_FORMAT2(same, carry(), (Lines{"00001001", "00002001"}));
  }

  testing_support::FaultyDesktop faulty_{desktop_};
};

TEST_F(RatePropagationFailure, OfTheWaitingWindowUpdatesAllTheSame) {
  faulty_.failAt(1);
  expectBothUpdated();
  EXPECT_PRED_FORMAT2(same, faulty_.told(), Lines{"show Frm_Anim"});
  EXPECT_PRED_FORMAT2(same, forms(), (Lines{"events", "events", "events"}));
}

TEST_F(RatePropagationFailure, OfTheFirstEventsUpdatesAllTheSame) {
  faulty_.failAt(DesktopCall::DoEvents, 1);
  expectBothUpdated();
  EXPECT_PRED_FORMAT2(same, forms(),
                      (Lines{"shown Frm_Anim", "events", "events", "closed Frm_Anim"}));
}

TEST_F(RatePropagationFailure, OfClosingTheWaitingWindowUpdatesAllTheSame) {
  faulty_.failAt(DesktopCall::Close, 1);
  expectBothUpdated();
  EXPECT_EQ(faulty_.calls(DesktopCall::Close), 1);
}

TEST_F(RatePropagationFailure, OfAnAgreementsEventsLeavesTheOthersUpdatedAndIsTold) {
  const Lines keys = {"00001001", "00002001"};
  for (std::size_t failing = 0; failing < keys.size(); ++failing) {
    SCOPED_TRACE(keys[failing]);
    store_.forgetCalls();
    desktop_.clearJournal();
    // The first ones come with the waiting window.
    faulty_.failAt(DesktopCall::DoEvents, static_cast<int>(failing) + 2);
    EXPECT_THROW(control_->Recup_AccordTauxRemb(), store::StoreError);
    EXPECT_PRED_FORMAT2(same, written(), Lines{keys[1 - failing]});
    EXPECT_EQ(forms().back(), "closed Frm_Anim");
    EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
    EXPECT_TRUE(control_->surface().enabled());
  }
  expectBothUpdated();
}

// --- Against a plain model.

struct Period {
  int day = 0;
  int rate = 0;
  int row = 0;
  int part = 0;
};

std::string day(int number) { return store::textOfDay(21000 + number); }

History told(const std::vector<Period>& periods) {
  History rows;
  for (const Period& p : periods) {
    rows.push_back({store::twoDecimals(p.rate), day(p.day), std::to_string(p.row),
                    store::twoDecimals(p.part)});
  }
  return rows;
}

// The new rates over the old periods; both most recent first.
std::vector<Period> merged(const std::vector<Period>& old, const std::vector<Period>& fresh) {
  std::vector<Period> all;
  for (Period period : fresh) {
    const auto cut =
        std::find_if(old.begin(), old.end(), [&](const Period& p) { return p.day <= period.day; });
    const Period& source = cut == old.end() ? old.back() : *cut;
    period.row = source.row;
    period.part = source.part;
    all.push_back(period);
  }
  for (const Period& period : old) {
    if (period.day < fresh.back().day) all.push_back(period);
  }
  return all;
}

std::vector<Period> randomPeriods(testing_support::Random& random, int most) {
  const auto below = [&](int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
  };
  std::vector<int> days;
  for (int i = 0, count = 1 + below(most); i < count; ++i) days.push_back(below(40));
  std::sort(days.rbegin(), days.rend());
  days.erase(std::unique(days.begin(), days.end()), days.end());
  std::vector<Period> periods;
  for (const int d : days) periods.push_back({d, 1 + below(9000), 1 + below(9), 1 + below(900)});
  return periods;
}

TEST_F(RatePropagation, MergesAsAPlainModelDoes) {
  testing_support::Random random(5);
  for (int round = 0; round < 150; ++round) {
    const std::vector<Period> old = randomPeriods(random, 8);
    const std::vector<Period> fresh = randomPeriods(random, 4);
    putRates({{day(fresh.back().day), store::twoDecimals(fresh.back().rate), "95,00", "0,00"}});
    show();
    for (std::size_t i = fresh.size() - 1; i-- > 0;) {
      addRate({day(fresh[i].day), store::twoDecimals(fresh[i].rate), "95,00", "0,00"});
    }
    ASSERT_EQ(rates().size(), fresh.size());
    agreement("00001001", told(old));
    carry();
    // The last one was read with the body: it is carried only when it stands alone.
    std::vector<Period> carried = fresh;
    if (carried.size() > 1) carried.pop_back();
    EXPECT_PRED_FORMAT2(same, history(), told(merged(old, carried))) << round;
  }
}

}  // namespace
}  // namespace behaviour
