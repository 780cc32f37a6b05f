#include "multivalue/AgreementUpdate.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
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
      take(entry);
      if (block_.size() == kBlock) updateBlock();
    }
    updateBlock();
  }

  // Into the block, when it is of those to be changed. One whose last day cannot be read is told of
  // as one that could not be.
  void take(const Entry& entry) {
    if (!attributeOf(entry.record, store::accord::ClotureAcc).empty()) return;
    const std::string_view last = attributeOf(entry.record, store::accord::DateFinAcc);
    if (last.empty()) return;
    const std::optional<long long> lastDay = storedDay(last);
    if (lastDay && *lastDay < arguments_.day) return;
    block_.push_back({std::string(entry.id), std::string(entry.record), {}});
    beneficiaries_.push_back(lastDay ? std::optional(beneficiaryOf(entry.id)) : std::nullopt);
  }

  // The place of its beneficiary's number among those of the block. Mostly the one before has the
  // same.
  std::size_t beneficiaryOf(std::string_view key) {
    const std::size_t size = text::left(key, store::accord::kNumeroAide).size();
    const std::string_view number = key.substr(0, size);
    if (!numbers_.empty() && numbers_.back() == number) return numbers_.size() - 1;
    const auto [place, isNew] = places_.try_emplace(std::string(number), numbers_.size());
    if (isNew) numbers_.push_back(place->first);
    return place->second;
  }

  void updateBlock() {
    const std::vector<std::optional<Period>> periods = periodsOfBlock();
    std::vector<Replacement> changed;
    changed.reserve(block_.size());
    for (std::size_t i = 0; i < block_.size(); ++i) {
      Replacement& each = block_[i];
      const std::optional<std::size_t> beneficiary = beneficiaries_[i];
      std::optional<std::string> after;
      if (beneficiary) {
        const std::optional<Period>& period = periods[*beneficiary];
        if (period) after = beginPeriod(each.textBefore(), *period);
      }
      (after ? modified_ : limit_).add(each.id);
      if (!after) continue;
      each.after = std::move(*after);
      changed.push_back(std::move(each));
    }
    forgetBlock();
    if (!engine_.exchangeAll(*agreements_, changed)) {
      throw store::StoreError(store::kBusy, "an agreement was changed during the update");
    }
  }

  // Aligned with the numbers.
  std::vector<std::optional<Period>> periodsOfBlock() {
    std::vector<std::optional<Period>> periods;
    periods.reserve(numbers_.size());
    for (const auto& elements : engine_.readAllLocked(*elements_, numbers_)) {
      const std::string_view record = elements ? std::string_view(*elements) : "";
      periods.push_back(scale_.periodOf(attributeOf(record, store::eltsfactaide::RevenuElt),
                                        attributeOf(record, store::eltsfactaide::FoyerElt)));
    }
    return periods;
  }

  void forgetBlock() {
    block_.clear();
    beneficiaries_.clear();
    numbers_.clear();
    places_.clear();
  }

  Engine& engine_;
  Catalogue& catalogue_;
  const Arguments& arguments_;
  const ParticipationScale scale_;
  const std::shared_ptr<const FileDescription> agreements_;
  const std::shared_ptr<const FileDescription> elements_;
  std::vector<Replacement> block_;                         // `after` is not known yet
  std::vector<std::optional<std::size_t>> beneficiaries_;  // of it; aligned, places in numbers_
  std::vector<std::string> numbers_;                       // each once
  std::unordered_map<std::string, std::size_t> places_;    // of numbers in numbers_
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
