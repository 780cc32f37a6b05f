// Record after record in random order, with all kinds of input in between: nothing of the one
// before stays on screen or comes into another record, and showing neither writes nor says
// anything.
#include <functional>
#include <map>

#include "store/Layouts.h"
#include "tests/behaviour/ControlTest.h"
#include "tests/behaviour/SampleStore.h"
#include "tests/behaviour/Snapshot.h"
#include "tests/support/Seed.h"

namespace behaviour {
namespace {

using store::DynamicArray;
using testing_support::MemoryStore;

// "a|b" is two values.
// --- Bodies that the sample does not hold.

using Change = std::function<void(DynamicArray& body)>;

class MadeBodies {
 public:
  explicit MadeBodies(MemoryStore& store) : store_(store) {
    withoutAccounting();
    agencyInAmount();
    unknownAccounts();
    unknownEntities();
    unknownActivities();
    unknownCodes();
    oddMarks();
    add("101", [](DynamicArray& body) { body = DynamicArray("SEUL"); });
  }

 private:
  // A body like that one, changed, under a code of its own.
  void add(std::string_view like, const Change& change) {
    DynamicArray body = store_.record(attribut::kFile, like);
    change(body);
    const std::string code = "Z" + std::string(count_ < 10 ? "0" : "") + std::to_string(count_);
    ++count_;
    if (code.size() != 3) throw std::logic_error("too many made bodies");
    store_.put(attribut::kFile, code, body);
  }
  void addWith(std::string_view like, int attribute, std::string_view text) {
    add(like, [&](DynamicArray& body) { body.set(attribute, text); });
  }

  void withoutAccounting() {
    for (const char* like : {"101", "010", "001"}) {
      add(like, [](DynamicArray& body) {
        body.set(attribut::IncidCompta, "1");
        body.set(attribut::DebitOrgChg, "4110000000");
        body.set(attribut::CreditOrgChg, "7060000000");
        body.set(attribut::CpteProdAide, "7400000000");
      });
    }
  }
  void agencyInAmount() {
    for (const char* like : {"010", "004"}) {
      add(like, [](DynamicArray& body) {
        body.set(attribut::AttribOrgChg, "M");
        body.set(attribut::GestionExclu, "2");
      });
    }
    addWith("004", attribut::TypeOrgChg, "C");
  }
  void unknownAccounts() {
    for (const char* account : {"9999999999", "41", "41100000001", "compte", "411000000é"}) {
      add("001", [&](DynamicArray& body) {
        for (const int attribute : {attribut::DebitOrgChg, attribut::CreditOrgChg,
                                    attribut::CpteProdAide, attribut::CptPrestationService}) {
          body.set(attribute, account);
        }
      });
    }
  }
  void unknownEntities() {
    for (const char* entity : {"", "777", "01", "0100", "ééé"}) {
      addWith("001", attribut::Entite, entity);
    }
  }
  void unknownActivities() {
    for (const char* codes :
         {"010P99|010P01", "010P01||010M06", "020P01|", "010P01|010P01", "|010M06", "010P98"}) {
      addWith("001", attribut::CodActSelect, marked(codes));
    }
  }
  void unknownCodes() {
    for (const int attribute :
         {attribut::PeriodFactOrgChg, attribut::TypeOrgChg, attribut::PlafondOrg,
          attribut::RenouvOrgChg, attribut::PieceRenouOrgChg, attribut::AttribOrgChg,
          attribut::StatsOrgChg, attribut::TypeBordOrgChg, attribut::NbExemplOrgChg,
          attribut::ParamSelecOrgChg, attribut::ParamTriSelect}) {
      addWith("001", attribute, "99");
      addWith("101", attribute, "");
    }
  }
  void oddMarks() {
    for (const std::string& odd : {marked("|"), marked("X|1"), marked("|X||")}) {
      add("001", [&](DynamicArray& body) {
        for (int i = 1; i <= attribut::Dernier; ++i) body.set(i, odd);
      });
      add("101", [&](DynamicArray& body) {
        for (int i = attribut::PeriodFactOrgChg; i <= attribut::Dernier; ++i) {
          body.set(i, std::string(body.get(i)) + odd);
        }
      });
    }
  }

  MemoryStore& store_;
  int count_ = 0;
};

// A control of its own on that store: it has never shown anything.
class FreshControl {
 public:
  explicit FreshControl(MemoryStore& store) {
    control_.setTheDatabase(store.connect());
    control_.setDroitsUtilisateur(
        std::make_shared<TestRights>(std::make_shared<RightsLevel>(), store.sharedReleases()));
    control_.Init();
  }
  void lookUp(const std::string& id) { user_.fill(child("Txt_CodOrgChg"), id); }
  void press(std::string_view name) { user_.click(dynamic_cast<CommandButton&>(child(name))); }
  Snapshot screen() { return snapshotOf(control_.surface()); }
  std::vector<toolkit::headless::Entry> takeBoxes() { return desktop_.takeBoxes(); }

 private:
  toolkit::Control& child(std::string_view name) { return *control_.surface().find(name); }

  testing_support::TestDesktop desktop_;
  control::Ctr_OrgPriseCharge control_{desktop_};
  toolkit::headless::User user_{control_.surface()};
};

// Which line of the acronyms is chosen depends on how the body was found.
const std::set<std::string> kHowItWasFound{"Cbo_SigleOrgChg"};

class RandomShow : public ControlTest, public testing::WithParamInterface<bool> {
 protected:
  RandomShow() {
    fillFromSample(store_);
    store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, GetParam() ? "O" : "");
    MadeBodies{store_};
    ids_ = store_.ids(attribut::kFile);
    start();
  }

  int below(std::size_t count) {
    return static_cast<int>(random_() % static_cast<testing_support::Random::result_type>(count));
  }
  const std::string& anyBody() { return ids_[static_cast<std::size_t>(below(ids_.size()))]; }

  // What a control shows that has never shown anything else.
  const Snapshot& fresh(const std::string& id) {
    const auto [place, isNew] = fresh_.try_emplace(id);
    if (isNew) {
      FreshControl control(store_);
      if (id == kBlank) {
        control.press("Cmd_Ajouter");
      } else if (!id.empty()) {
        control.lookUp(id);
      }
      place->second = control.screen();
    }
    return place->second;
  }
  void expectScreen(const std::string& id) { expectScreen(fresh(id)); }
  void expectScreen(const Snapshot& expected) {
    EXPECT_EQ(difference(expected, snapshotOf(control_->surface()), kHowItWasFound), "");
    expectNoBox();
    expectNothingWritten();
    store_.forgetCalls();
  }

  void show(const std::string& id) {
    SCOPED_TRACE("body " + id);
    lookUp(id);
    expectScreen(id);
    std::string sigle(store_.record(attribut::kFile, id).get(attribut::SigleOrgChg));
    std::erase(sigle, store::kValueMark);  // no field shows marks
    EXPECT_EQ(sigles().text(), sigle);
  }
  // False when it was the body in hand, which keeps what the user has changed.
  bool showByAcronym() {
    const std::string inHand = state() == kExisting ? code().text() : "";
    const Snapshot before = snapshotOf(control_->surface());
    const int line = below(static_cast<std::size_t>(sigles().listCount()));
    user_->choose(sigles(), line);
    SCOPED_TRACE("body " + code().text() + " by its acronym");
    if (code().text() != inHand) {
      expectScreen(code().text());
      return true;
    }
    expectScreen(before);
    return false;
  }
  void cancel() {
    SCOPED_TRACE("cancelled");
    press("Cmd_Annuler");
    expectScreen("");
  }
  void create() {
    SCOPED_TRACE("creation");
    press("Cmd_Annuler");
    press("Cmd_Ajouter");
    expectScreen(kBlank);
    useAnything();
    desktop_.answer(Answer::Yes);
    press("Cmd_Annuler");
    desktop_.takeBoxes();
    expectScreen("");
  }
  void leave() {
    SCOPED_TRACE("left");
    press("Cmd_Sortir");
    EXPECT_TRUE(control_->W_Sortir());
    control_->setW_Sortir(false);
    expectNoBox();
    expectNothingWritten();
  }

  // The user does this and that on the pages, whatever comes of it.
  void useAnything();
  void closeRows();
  void use(toolkit::Control& control);
  void collectUsable(toolkit::Container& container, std::vector<toolkit::Control*>& all);

  std::string recordText(const std::string& id) {
    return store_.record(attribut::kFile, id).text();
  }

  static inline const std::string kBlank = "blank creation";
  std::vector<std::string> ids_;
  testing_support::Random random_{20260115};  // the same on every run
  std::map<std::string, Snapshot> fresh_;
};

void RandomShow::collectUsable(toolkit::Container& container, std::vector<toolkit::Control*>& all) {
  for (toolkit::Control* control : container.children()) {
    if (!control->usable()) continue;
    if (auto* inner = dynamic_cast<toolkit::Container*>(control)) {
      collectUsable(*inner, all);
    } else if (control->focusable()) {
      all.push_back(control);
    }
  }
}

void RandomShow::use(toolkit::Control& control) {
  toolkit::headless::User& user = *user_;
  static const std::vector<std::string> kTexts{"", "1", "41", "010", "4110000000", "7", "X", "020"};
  const std::string& text = kTexts[static_cast<std::size_t>(below(kTexts.size()))];
  if (auto* box = dynamic_cast<TextBox*>(&control)) {
    user.fill(*box, text);
  } else if (auto* combo = dynamic_cast<ComboBox*>(&control)) {
    user.open(*combo);
    if (combo->listCount() > 0 && below(3) > 0) {
      user.choose(*combo, below(static_cast<std::size_t>(combo->listCount())));
    } else {
      user.fill(*combo, text);
      user.press(toolkit::Key::Enter);
    }
  } else if (auto* list = dynamic_cast<ListBox*>(&control)) {
    if (list->listCount() == 0) return;
    const int line = below(static_cast<std::size_t>(list->listCount()));
    if (below(2) == 0) {
      user.dblClick(*list, line);
    } else {
      user.click(*list, line, below(2) == 0, below(2) == 0);
    }
  } else if (auto* option = dynamic_cast<toolkit::OptionButton*>(&control)) {
    user.click(*option);
  } else if (auto* check = dynamic_cast<CheckBox*>(&control)) {
    user.click(*check);
  } else if (auto* arrow = dynamic_cast<CommandButton*>(&control)) {
    user.click(*arrow);
  } else if (auto* bar = dynamic_cast<toolkit::ScrollBar*>(&control)) {
    user.scroll(*bar, bar->min() + below(9));
  }
}

// A row that is open locks the rest of the screen; its own tab can be chosen always.
void RandomShow::closeRows() {
  for (const int tab : {3, 2}) user_->click(tabs(), tab);
  if (box("Txt_DateRembOrgChg").usable()) user_->fill(box("Txt_DateRembOrgChg"), "");
  if (button("Cmd_AnnulerPart").reachable()) user_->click(tabs(), 3);
  for (const char* cancel : {"Cmd_AnnulerTaux", "Cmd_AnnulerAbat", "Cmd_AnnulerPart"}) {
    // A field can keep the focus once, for a text that it refuses.
    for (int i = 0; i < 3 && button(cancel).usable(); ++i) press(cancel);
  }
  desktop_.onBox = nullptr;
}

void RandomShow::useAnything() {
  desktop_.onBox = [this](const toolkit::headless::Entry& box) {
    if (box.buttons != toolkit::Buttons::Ok) desktop_.answer(Answer::Yes);
  };
  for (int i = 0; i < 12; ++i) {
    if (below(3) == 0) user_->click(tabs(), below(6));
    std::vector<toolkit::Control*> usable;
    collectUsable(tabs(), usable);
    if (!usable.empty()) use(*usable[static_cast<std::size_t>(below(usable.size()))]);
  }
  closeRows();
  // A field can keep the focus once, for a text that it refuses.
  for (int i = 0; i < 3 && !user_->go(button("Cmd_Annuler")); ++i) {
  }
  desktop_.takeBoxes();
  store_.forgetCalls();
}

TEST_P(RandomShow, LeavesNothingOfTheOneBefore) {
  std::map<std::string, std::string> before;
  for (const std::string& id : ids_) before[id] = recordText(id);
  for (int step = 0; step < 300 && !HasFailure(); ++step) {
    SCOPED_TRACE("step " + std::to_string(step));
    const int kind = below(10);
    if (kind < 6) {
      show(anyBody());
    } else if (kind < 8) {
      if (!showByAcronym()) continue;
    } else if (kind == 8) {
      cancel();
    } else {
      create();
    }
    if (state() != kExisting) continue;
    if (below(4) == 0) leave();
    if (below(2) == 0) useAnything();
  }
  for (const std::string& id : ids_) EXPECT_EQ(recordText(id), before[id]) << id;
}

TEST_P(RandomShow, SavesEachRecordAsAControlThatShowsOnlyThisOne) {
  for (int step = 0; step < 40 && !HasFailure(); ++step) {
    lookUp(anyBody());
    useAnything();
    const std::string& id = anyBody();
    SCOPED_TRACE("step " + std::to_string(step) + ", body " + id);
    const DynamicArray before = store_.record(attribut::kFile, id);
    FreshControl other(store_);
    other.lookUp(id);
    other.press("Cmd_OK");
    const std::string saved = recordText(id);
    store_.put(attribut::kFile, id, before);
    lookUp(id);
    desktop_.takeBoxes();
    press("Cmd_OK");
    EXPECT_EQ(recordText(id), saved);
    const auto expected = other.takeBoxes();
    const auto boxes = desktop_.takeBoxes();
    ASSERT_EQ(boxes.size(), expected.size());
    for (std::size_t i = 0; i < boxes.size(); ++i) EXPECT_EQ(boxes[i].text, expected[i].text);
    store_.put(attribut::kFile, id, before);
  }
}

INSTANTIATE_TEST_SUITE_P(Accounting, RandomShow, testing::Bool());

}  // namespace
}  // namespace behaviour
