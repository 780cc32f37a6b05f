#include "tests/behaviour/PropagationTest.h"

#include <algorithm>

#include "forms/Frm_ImpressionA4.h"
#include "store/Conversions.h"
#include "store/Layouts.h"

namespace behaviour {

namespace {

constexpr const char* kLetterFiles[] = {"CIVILAIDE", "RESPONSABLE", "ELTSFACTAIDE", "TITRES",
                                        "NATUREVOIE"};

bool ofLetter(const testing_support::Call& call) {
  return std::find(std::begin(kLetterFiles), std::end(kLetterFiles), call.file) !=
         std::end(kLetterFiles);
}

void putList(testing_support::MemoryStore& store, const std::string& id, const Keys& keys) {
  store::DynamicArray list;
  for (std::size_t i = 0; i < keys.size(); ++i) list.set(static_cast<int>(i) + 1, keys[i]);
  if (!keys.empty()) store.put("TEMPO", id, list);
}

std::string told(const Entry& entry) {
  switch (entry.what) {
    case Entry::What::Box:
      return "box";
    case Entry::What::Beep:
      return "beep";
    case Entry::What::Pointer:
      return entry.pointer == toolkit::Pointer::Normal ? "normal" : "hourglass";
    case Entry::What::Events:
      return "events";
    case Entry::What::Shown:
      return "shown " + entry.text;
    case Entry::What::Closed:
      return "closed " + entry.text;
  }
  return {};
}

}  // namespace

std::string questionListe(int count) {
  return "Attention : " + std::to_string(count) +
         " accord(s) n'ont pas pu être modifiés. Voulez-vous en éditer la liste ?";
}

Propagation::Propagation() {
  forms::imprimanteParDefaut() = {};
  desktop_.setPrinters({{"PDF_A4", "LPT1:"}, {"MATRICIELLE", "LPT2:"}}, 0);
  store_.put("CONSTANTESPAIE", "1", {"", "", "", "", "", "", "", "", "11689"});
  for (int i = 1; i <= 6; ++i) {
    const std::string number = "0000" + std::to_string(i);
    agreement(number + "001", {{"", "01/02/2026", "2", std::to_string(i) + ",11"},
                               {"", "01/01/2025", "1", std::to_string(i) + ",00"}});
    store_.put("CIVILAIDE", number, {"1", "NOM" + std::to_string(i)});
  }
  printerWindow(true);
}

Propagation::~Propagation() {
  // The control goes before the desktop that it may stand on.
  user_.reset();
  control_.reset();
}

void Propagation::serverAnswers(Keys modified, Keys limit) {
  store_.onCommands([this, modified = std::move(modified),
                     limit = std::move(limit)](const store::DynamicArray& request) {
    const std::string command(request.get(4));
    const std::string body = command.substr(command.rfind('|') + 1);
    putList(store_, "ACCORDSMODIFIES" + body, modified);
    putList(store_, "ACCORDSLIMITE" + body, limit);
  });
}

void Propagation::agreement(std::string_view key, const Rows& history) {
  store::DynamicArray record;
  record.set(store::accord::OrgChgAcc, "001");
  record.set(store::accord::DateDebAcc, stored("01/01/2025"));
  record.set(store::accord::DateFinAcc, stored("31/12/2026"));
  int position = 0;
  for (const Row& row : history) {
    ++position;
    record.set(store::accord::TxRembAcc, position, stored(row[0]));
    record.set(store::accord::DatePartAcc, position, stored(row[1]));
    record.set(store::accord::TrancheAcc, position, row[2]);
    record.set(store::accord::PartBenefAcc, position, stored(row[3]));
  }
  store_.put("ACCORD", key, record);
}

void Propagation::enterScale(std::string_view date, Caller at) {
  const auto trace = called("enterScale", at);
  beginScale(date);
  desktop_.clearJournal();
  store_.forgetCalls();
}

void Propagation::saveAnswering(const std::vector<Answer>& answers, Caller at) {
  const auto trace = called("saveAnswering", at);
  for (const Answer answer : answers) desktop_.answer(answer);
  ASSERT_TRUE(press("Cmd_OK"));
  EXPECT_FALSE(desktop_.answersLeft());
}

void Propagation::printerWindow(bool confirms, Caller at) {
  const auto trace = called("printerWindow", at);
  desktop_.onModal = [confirms](toolkit::Window& window) {
    toolkit::headless::User user(window.surface());
    EXPECT_EQ(window.surface().name(), "Frm_ImpressionA4");
    EXPECT_TRUE(user.press(confirms ? toolkit::Key::Enter : toolkit::Key::Escape));
  };
}

std::vector<std::string> Propagation::printed() {
  std::vector<std::string> texts;
  for (const auto& job : pages().jobs()) {
    for (const auto& piece : job.pieces) texts.push_back(piece.text);
  }
  return texts;
}

bool Propagation::wasPrinted(std::string_view text) {
  const std::vector<std::string> all = printed();
  return std::any_of(all.begin(), all.end(), [text](const std::string& piece) {
    return piece.find(text) != std::string::npos;
  });
}

std::vector<std::string> Propagation::callsOfRun() {
  std::vector<std::string> run;
  for (const testing_support::Call& call : store_.calls()) {
    const bool written = call.kind == CallKind::DBWrite && call.file == "ORGPRISECHARGE";
    if ((written || !run.empty()) && !ofLetter(call)) run.push_back(call.told());
  }
  return run;
}

std::vector<std::string> Propagation::journal() {
  std::vector<std::string> words;
  for (const Entry& entry : desktop_.journal()) words.push_back(told(entry));
  return words;
}

void Propagation::expectUsable(Caller at) {
  const auto trace = called("expectUsable", at);
  EXPECT_EQ(desktop_.pointer(), toolkit::Pointer::Normal);
  EXPECT_TRUE(control_->surface().enabled());
}

void Propagation::expectListsDeleted(Caller at) {
  const auto trace = called("expectListsDeleted", at);
  EXPECT_TRUE(store_.ids("TEMPO").empty());
}

void Propagation::restartOn(toolkit::Desktop& desktop, Caller at) {
  const auto trace = called("restartOn", at);
  user_.reset();
  control_ = std::make_unique<control::Ctr_OrgPriseCharge>(desktop);
  user_ = std::make_unique<toolkit::headless::User>(control_->surface());
  start();
  show();
}

}  // namespace behaviour
