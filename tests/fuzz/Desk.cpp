#include "tests/fuzz/Desk.h"

#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>

#include "store/Layouts.h"
#include "storetool/JsonLines.h"
#include "toolkit/Window.h"

namespace fuzz {
namespace {

class AllRights : public screen::Rights {
 public:
  std::shared_ptr<screen::RightsEntry> entry(std::string_view) override {
    class Entry : public screen::RightsEntry {
      long Level() override { return 2; }
    };
    return std::make_shared<Entry>();
  }
};

void load(testing_support::MemoryStore& store, const std::string& file,
          const std::function<bool(const std::string& id)>& wanted) {
  const auto path = std::filesystem::path(TESSALINE_SAMPLE) / (file + ".jsonl");
  std::ifstream text(path, std::ios::binary);
  if (!text) throw std::runtime_error("no sample " + path.string());
  storetool::readJsonLines(text, [&](const storetool::TextRecord& record, std::size_t) {
    if (!wanted(record.id)) return;
    store.put(file, record.id, store::DynamicArray(record.text));
  });
}

}  // namespace

SampleStore::SampleStore() {
  // A body of each kind: what it shows is told at the end of docs/record-layouts.md.
  const std::set<std::string> kBodies{"001", "002", "004", "010", "101", "102", "110", "120"};
  load(store_, "ORGPRISECHARGE", [&](const std::string& id) { return kBodies.contains(id); });
  for (const char* file : {"PARAMBORDORGCHG", "COMPTEUR", "TABLES", "ACTIVITES", "ASSOCIATION",
                           "PERIODESPAIE", "NATUREVOIE", "PLANCOMPTABLE"}) {
    load(store_, file, [](const std::string&) { return true; });
  }
  store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "O");
  bodies_ = store_.ids(store::orgprisecharge::kFile);
  for (const std::string& id : bodies_) {
    kept_.emplace(id, store_.record(store::orgprisecharge::kFile, id));
  }
  counter_ = store_.record("COMPTEUR", "999");
}

std::string SampleStore::body(std::string_view code) const {
  return store_.record(store::orgprisecharge::kFile, code).text();
}

void SampleStore::restore() {
  store_.failAt(0);
  store_.stopFailing();
  store_.forgetCalls();
  store_.releases().clear();
  for (const std::string& id : store_.ids(store::orgprisecharge::kFile)) {
    if (!kept_.contains(id)) store_.erase(store::orgprisecharge::kFile, id);
  }
  for (const auto& [id, record] : kept_) store_.put(store::orgprisecharge::kFile, id, record);
  store_.put("COMPTEUR", "999", counter_);
}

Desk::Desk(testing_support::MemoryStore& store) {
  desktop_.onBox = [this](const toolkit::headless::Entry& box) {
    if (box.buttons == toolkit::Buttons::Ok) return;
    desktop_.answer(answers ? answers(box.buttons) : toolkit::Answer::No);
  };
  desktop_.onModal = [](toolkit::Window& form) { form.userClose(); };
  control_.setTheClient(std::make_shared<int>(0));
  control_.setTheDatabase(store.connect());
  control_.setDroitsUtilisateur(std::make_shared<AllRights>());
  control_.Init();
  desktop_.clearJournal();
}

void Desk::lookUp(std::string_view code) {
  user_.fill(child<toolkit::TextBox>("Txt_CodOrgChg"), code);
}

bool Desk::press(std::string_view button) {
  return user_.click(child<toolkit::CommandButton>(button));
}

std::string Desk::takeBoxes() {
  std::string texts;
  for (const toolkit::headless::Entry& box : desktop_.takeBoxes()) texts += box.text + "\n";
  return texts;
}

}  // namespace fuzz
