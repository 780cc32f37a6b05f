#include "multivalue/AgreementUpdate.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "multivalue/ParticipationScale.h"
#include "multivalue/RecordText.h"
#include "multivalue/Records.h"
#include "multivalue/Sentence.h"
#include "store/Dates.h"
#include "store/Layouts.h"
#include "store/StoreError.h"
#include "text/Utf8.h"

namespace multivalue {

namespace {

constexpr std::string_view kName = "MAJTXACCGENE";

// The arguments, and where they stand in the command.
struct Arguments {
  std::string_view command;
  long day = 0;
  std::string_view code;
  std::size_t codeOffset = 0;
};

Arguments argumentsOf(std::string_view command) {
  std::vector<std::size_t> bars;
  for (std::size_t at = command.find('|'); at != std::string_view::npos;
       at = command.find('|', at + 1)) {
    bars.push_back(at);
  }
  if (bars.size() != 2) {
    refuseSentence(command, bars.size() < 2 ? command.size() : bars[2],
                   std::string(kName) + " takes a date and a body's code, each after a \"|\"");
  }
  const auto day = store::dayOfText(command.substr(bars[0] + 1, bars[1] - bars[0] - 1));
  if (!day) refuseSentence(command, bars[0] + 1, "a date dd/mm/yyyy is expected");
  const std::string_view code = text::trim(command.substr(bars[1] + 1));
  if (code.empty()) refuseSentence(command, bars[1] + 1, "a body's code is expected");
  return {command, *day, code, bars[1] + 1};
}

// The code that even a command with wrong arguments names; "" when it names none.
std::string_view codeNamed(std::string_view command) {
  for (int argument = 0; argument < 2; ++argument) {
    const std::size_t bar = command.find('|');
    if (bar == std::string_view::npos) return {};
    command.remove_prefix(bar + 1);
  }
  return text::trim(command.substr(0, command.find('|')));
}

std::string listId(std::string_view word, std::string_view code) {
  return std::string(word) + std::string(code);
}

// What an earlier command has left for that body.
void removeLists(Engine& engine, Catalogue& catalogue, std::string_view code) {
  if (code.empty()) return;
  Records lists(engine, catalogue.forWriting(store::tempo::kFile));
  lists.remove(listId(store::tempo::kAccordsModifies, code));
  lists.remove(listId(store::tempo::kAccordsLimite, code));
}

// Keys as a record holds them, one an attribute.
class KeyList {
 public:
  void add(std::string_view key) {
    if (!text_.empty()) text_ += store::kAttributeMark;
    text_ += key;
  }
  // An empty list leaves no record.
  void write(Records& records, std::string_view word, std::string_view code) const {
    if (!text_.empty()) records.write(listId(word, code), text_);
  }

 private:
  std::string text_;
};

// Lives inside the transaction.
class Update {
 public:
  Update(Engine& engine, Catalogue& catalogue, const Arguments& arguments)
      : engine_(engine),
        catalogue_(catalogue),
        arguments_(arguments),
        scale_(body(), arguments.day),
        agreements_(catalogue.forWriting(store::accord::kFile)),
        elements_(catalogue.forWriting(store::eltsfactaide::kFile)) {}

  void run() {
    throughAgreements();
    Records lists(engine_, catalogue_.forWriting(store::tempo::kFile));
    modified_.write(lists, store::tempo::kAccordsModifies, arguments_.code);
    limit_.write(lists, store::tempo::kAccordsLimite, arguments_.code);
  }

 private:
  store::DynamicArray body() {
    Records bodies(engine_, catalogue_.forWriting(store::orgprisecharge::kFile));
    const std::optional<std::string> record = bodies.readLocked(arguments_.code);
    if (!record) {
      refuseSentence(arguments_.command, arguments_.codeOffset, "no funding body has this code");
    }
    return store::DynamicArray(*record);
  }

  // In the order of the keys. Only agreements are written meanwhile, and none of them changes the
  // attribute that the index is of.
  void throughAgreements() {
    constexpr std::size_t kBlock = 500;
    AccessPath path;
    path.attribute = store::accord::OrgChgAcc;
    path.low = arguments_.code;
    path.exact = true;
    Scan scan{*agreements_, &path};
    scan.locked = true;
    const auto cursor = engine_.scan(scan);
    Entry entry;
    while (cursor->next(entry)) {
      if (!isConcerned(entry.record)) continue;
      block_.push_back({std::string(entry.id), std::string(entry.record), {}});
      if (block_.size() == kBlock) updateBlock();
    }
    updateBlock();
  }

  static std::optional<long long> lastDayOf(std::string_view record) {
    return storedDay(attributeOf(record, store::accord::DateFinAcc));
  }

  bool isConcerned(std::string_view record) const {
    if (!attributeOf(record, store::accord::ClotureAcc).empty()) return false;
    if (attributeOf(record, store::accord::DateFinAcc).empty()) return false;
    const std::optional<long long> lastDay = lastDayOf(record);
    return !lastDay || *lastDay >= arguments_.day;
  }

  void updateBlock() {
    const std::map<std::string, std::optional<Period>> periods = periodsOfBlock();
    std::vector<Replacement> changed;
    for (Replacement& each : block_) {
      std::optional<std::string> after;
      if (lastDayOf(each.textBefore())) {
        const std::optional<Period>& period = periods.at(numberOf(each));
        if (period) after = beginPeriod(each.textBefore(), *period);
      }
      (after ? modified_ : limit_).add(each.id);
      if (!after) continue;
      each.after = *after;
      changed.push_back(std::move(each));
    }
    block_.clear();
    if (!engine_.exchangeAll(*agreements_, changed)) {
      throw store::StoreError(store::kBusy, "an agreement was changed during the update");
    }
  }

  static std::string numberOf(const Replacement& agreement) {
    return text::left(agreement.id, store::accord::kNumeroAide);
  }

  // By beneficiary; an agreement whose last day cannot be read asks for none.
  std::map<std::string, std::optional<Period>> periodsOfBlock() {
    std::map<std::string, std::optional<Period>> periods;
    for (const Replacement& each : block_) {
      if (lastDayOf(each.textBefore())) periods.try_emplace(numberOf(each));
    }
    std::vector<std::string> numbers;
    numbers.reserve(periods.size());
    for (const auto& [number, period] : periods) numbers.push_back(number);
    const auto elements = engine_.readAllLocked(*elements_, numbers);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      const std::string record = elements[i].value_or("");
      periods[numbers[i]] = scale_.periodOf(attributeOf(record, store::eltsfactaide::RevenuElt),
                                            attributeOf(record, store::eltsfactaide::FoyerElt));
    }
    return periods;
  }

  Engine& engine_;
  Catalogue& catalogue_;
  const Arguments& arguments_;
  const ParticipationScale scale_;
  const std::shared_ptr<const FileDescription> agreements_;
  const std::shared_ptr<const FileDescription> elements_;
  std::vector<Replacement> block_;  // `after` is not known yet
  KeyList modified_;
  KeyList limit_;
};

}  // namespace

bool isAgreementUpdate(std::string_view command) {
  return text::trim(command.substr(0, command.find('|'))) == kName;
}

void updateAgreements(Engine& engine, Catalogue& catalogue, std::string_view command) {
  const auto whole = engine.begin();
  removeLists(engine, catalogue, codeNamed(command));
  Arguments arguments;
  std::optional<Update> update;
  try {
    arguments = argumentsOf(command);
    update.emplace(engine, catalogue, arguments);
  } catch (const store::StoreError& error) {
    // Who reads on all the same must not find an earlier command's answer.
    if (error.code() == store::kBadSentence) whole->commit();
    throw;
  }
  update->run();
  whole->commit();
}

}  // namespace multivalue
