// A user's actions on a body, or on a new one, with a store that fails now and then: whatever is
// done, the focus is somewhere, what was typed is kept or refused aloud, and what has been saved is
// whole: it passes all checks and is saved again as it is.
//
// An input is the body, then action after action; what each of them needs is in the bytes behind
// it.
#include <array>

#include "store/Conversions.h"
#include "store/Layouts.h"
#include "store/StoreError.h"
#include "tests/fuzz/Desk.h"
#include "tests/fuzz/Fuzz.h"

namespace fuzz {
namespace {

namespace attribut = store::orgprisecharge;
using testing_support::Call;
using testing_support::CallKind;
using toolkit::Answer;
using toolkit::Buttons;

constexpr int kMostActions = 50;

// What users type; an empty text empties the field.
constexpr std::array<const char*, 16> kTexts{"",
                                             "1",
                                             "7",
                                             "41",
                                             "010",
                                             "12,5",
                                             "100",
                                             "4110000000",
                                             "X",
                                             "0102",
                                             "1/1/27",
                                             "NEUF",
                                             "\xC3\xA9t\xC3\xA9",
                                             "-3",
                                             "2500,005",
                                             "  "};

constexpr std::array<const char*, 6> kBar{"Cmd_OK",      "Cmd_OK",        "Cmd_Annuler",
                                          "Cmd_Ajouter", "Cmd_Supprimer", "Cmd_Sortir"};

constexpr std::array<toolkit::Key, 11> kKeys{
    toolkit::Key::Enter, toolkit::Key::Escape, toolkit::Key::Space,   toolkit::Key::Left,
    toolkit::Key::Right, toolkit::Key::Up,     toolkit::Key::Down,    toolkit::Key::PageUp,
    toolkit::Key::Home,  toolkit::Key::End,    toolkit::Key::PageDown};

class Session {
 public:
  Session(SampleStore& sample, std::string_view input)
      : sample_(sample), store_(sample.store()), input_(input), desk_(store_) {
    desk_.answers = [this](Buttons buttons) { return answer(buttons); };
    store_.forgetCalls();
  }

  void run() {
    begin();
    for (int i = 0; i < kMostActions && !input_.empty(); ++i) {
      beeps_ = desk_.desktop().beeps();
      try {
        act();
      } catch (const store::StoreError&) {
        // Procedures that trap nothing end here; what calls them from a window holds it.
      }
      checkState();
      checkWrites();
      if (desk_.control().W_Sortir()) break;
    }
    checkBodies();
  }

 private:
  void begin() {
    const std::size_t body = input_.below(sample_.bodies().size() + 1);
    if (body == sample_.bodies().size()) {
      desk_.press("Cmd_Ajouter");
    } else {
      desk_.lookUp(sample_.bodies()[body]);
    }
  }

  Answer answer(Buttons buttons) {
    const std::size_t choice = input_.below(buttons == Buttons::YesNo ? 2 : 3);
    return choice == 0 ? Answer::Yes : choice == 1 ? Answer::No : Answer::Cancel;
  }

  void act();
  void press();
  void use(toolkit::Control& control);
  void use(toolkit::ComboBox& combo);
  void use(toolkit::ListBox& list);
  void typeAndLeave();
  void checkState();
  void checkWrites();
  void checkBodies();
  void checkSaved(const std::string& code);

  const char* anyText() { return kTexts[input_.below(kTexts.size())]; }
  // All that takes the focus now, apart from the bar's buttons.
  std::vector<toolkit::Control*> usable();
  void collect(const toolkit::Container& container, std::vector<toolkit::Control*>& all);
  toolkit::Surface& surface() { return desk_.control().surface(); }

  SampleStore& sample_;
  testing_support::MemoryStore& store_;
  Bytes input_;
  Desk desk_;
  std::size_t seen_ = 0;  // writes looked at
  int beeps_ = 0;         // before the action
};

void Session::collect(const toolkit::Container& container, std::vector<toolkit::Control*>& all) {
  for (toolkit::Control* control : container.children()) {
    if (!control->usable()) continue;
    if (control->isContainer()) {
      collect(dynamic_cast<toolkit::Container&>(*control), all);
    } else if (control->focusable()) {
      all.push_back(control);
    }
  }
}

std::vector<toolkit::Control*> Session::usable() {
  std::vector<toolkit::Control*> all;
  collect(desk_.child<toolkit::SSTab>("Ong_OrgPriseChg"), all);
  return all;
}

void Session::act() {
  const std::size_t kind = input_.below(16);
  if (kind < 7) {
    const std::vector<toolkit::Control*> all = usable();
    if (!all.empty()) use(*all[input_.below(all.size())]);
  } else if (kind < 9) {
    typeAndLeave();
  } else if (kind < 11) {
    desk_.user().click(desk_.child<toolkit::SSTab>("Ong_OrgPriseChg"),
                       static_cast<int>(input_.below(6)));
  } else if (kind == 11) {
    press();
  } else if (kind == 12) {
    desk_.user().paste(anyText());
  } else if (kind == 13) {
    desk_.lookUp(anyText());
  } else if (kind == 14) {
    store_.failAt(static_cast<int>(input_.below(12)));
  } else {
    desk_.press(kBar[input_.below(kBar.size())]);
  }
}

void Session::press() {
  const std::uint8_t byte = input_.next();
  if (byte < 128) {
    toolkit::KeyStroke stroke;
    stroke.key = kKeys[byte % kKeys.size()];
    stroke.control = byte >= 96;
    desk_.user().press(stroke);
  } else if (byte < 192) {
    desk_.user().tab(byte % 2 == 1);
  } else {
    desk_.user().alt(static_cast<char32_t>(U'A' + byte % 26));
  }
}

void Session::use(toolkit::Control& control) {
  toolkit::headless::User& user = desk_.user();
  if (auto* box = dynamic_cast<toolkit::TextBox*>(&control)) {
    user.fill(*box, anyText());
  } else if (auto* combo = dynamic_cast<toolkit::ComboBox*>(&control)) {
    use(*combo);
  } else if (auto* list = dynamic_cast<toolkit::ListBox*>(&control)) {
    use(*list);
  } else if (auto* option = dynamic_cast<toolkit::OptionButton*>(&control)) {
    user.click(*option);
  } else if (auto* check = dynamic_cast<toolkit::CheckBox*>(&control)) {
    user.click(*check);
  } else if (auto* button = dynamic_cast<toolkit::CommandButton*>(&control)) {
    user.click(*button);
  } else if (auto* bar = dynamic_cast<toolkit::ScrollBar*>(&control)) {
    user.scroll(*bar, bar->min() + static_cast<int>(input_.below(16)));
  }
}

void Session::use(toolkit::ComboBox& combo) {
  desk_.user().open(combo);
  if (combo.listCount() > 0 && input_.below(3) > 0) {
    desk_.user().choose(combo, static_cast<int>(input_.next()) % combo.listCount());
  } else {
    desk_.user().fill(combo, anyText());
    desk_.user().press(toolkit::Key::Enter);
  }
}

void Session::use(toolkit::ListBox& list) {
  if (list.listCount() == 0) return;
  const int line = static_cast<int>(input_.next()) % list.listCount();
  const std::size_t how = input_.below(5);
  if (how == 0) {
    desk_.user().dblClick(list, line);
  } else {
    desk_.user().click(list, line, (how & 1) != 0, (how & 2) != 0);
  }
}

// What was typed is what is read in the field that was left, or a box or a beep has told of it. The
// code is no such field: it comes back to that of the body in hand.
void Session::typeAndLeave() {
  auto* box = dynamic_cast<toolkit::TextBox*>(surface().focus());
  if (!box || !box->usable() || box->name() == "Txt_CodOrgChg") return;
  desk_.user().fill(*box, anyText());
  if (!box->usable() || !box->hasFocus()) return;
  const std::string typed = box->text();
  desk_.takeBoxes();
  const int beeps = desk_.desktop().beeps();
  desk_.user().tab(input_.below(2) == 1);
  if (!desk_.takeBoxes().empty() || desk_.desktop().beeps() > beeps) return;
  const std::string left = box->text();
  if (!box->shown() || left == typed) return;
  const bool sameAmount =
      store::hundredths(typed) && store::hundredths(left) == store::hundredths(typed);
  const std::string day = store::completeDate(typed, desk_.desktop().today().year);
  const bool sameDay = !day.empty() && left == day;
  expect(sameAmount || sameDay, "what was typed is kept, or refused aloud",
         box->name() + ": " + readable(typed) + " became " + readable(left));
}

void Session::checkState() {
  expect(!surface().busy(), "no action goes on by itself");
  expect(desk_.desktop().pointer() == toolkit::Pointer::Normal, "the pointer is normal again");
  expect(surface().enabled(), "the control takes input again");
  const toolkit::Control* focus = surface().focus();
  expect(focus != nullptr, "the focus is somewhere");
  expect(focus->usable(), "what has the focus takes input", focus->name());
}

// A body that was saved has left the screen; what is still there was refused, or not saved, or the
// store failed after the write, which a beep tells.
void Session::checkWrites() {
  const std::vector<Call> writes = store_.calls(CallKind::DBWrite);
  for (; seen_ < writes.size(); ++seen_) {
    const Call& call = writes[seen_];
    const bool saved = call.file == attribut::kFile && sample_.body(call.id) == call.text;
    expect(!saved || desk_.child<toolkit::TextBox>("Txt_CodOrgChg").text().empty() ||
               desk_.desktop().beeps() > beeps_,
           "what is refused is not written", call.id);
  }
}

// A fresh control shows what was saved without a word, and saves it as it is.
void Session::checkSaved(const std::string& code) {
  const std::string saved = sample_.body(code);
  store_.failAt(0);
  Desk other(store_);
  store_.forgetCalls();
  other.lookUp(code);
  expectSame("what was saved is shown without a word", other.takeBoxes(), "");
  other.press("Cmd_OK");
  const std::string said = other.takeBoxes();
  expect(store_.calls(CallKind::DBWrite).size() == 1, "what was saved passes all checks",
         code + ": " + said);
  expectSame("what was saved is whole", sample_.body(code), saved);
}

void Session::checkBodies() {
  std::map<std::string, std::string> written;
  for (const Call& call : store_.calls(CallKind::DBWrite)) {
    if (call.file == attribut::kFile) written[call.id] = call.text;
  }
  for (const auto& [code, text] : written) {
    // A write that the store refused has no effect.
    if (sample_.body(code) == text) checkSaved(code);
  }
}

}  // namespace

void check(std::string_view input) {
  static SampleStore sample;
  Session(sample, input).run();
  sample.restore();
}

}  // namespace fuzz
