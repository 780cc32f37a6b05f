// Records of any content, shown and saved: showing says nothing and writes nothing, and shows what
// a control shows that has never shown anything else; a save keeps what no field shows, and the
// next one changes nothing more.
//
// An input is two bodies, shown one after the other, with a line "-" between them. A body begins as
// the one of the sample whose code is its first line, if there is one; each further line "24=M"
// sets an attribute, with "|" for a value mark, and any other one is a text of its own at the end.
#include <algorithm>
#include <charconv>

#include "store/Layouts.h"
#include "tests/behaviour/Snapshot.h"
#include "tests/fuzz/Desk.h"
#include "tests/fuzz/Fuzz.h"

namespace fuzz {
namespace {

namespace attribut = store::orgprisecharge;
using store::DynamicArray;

constexpr int kMostAttributes = 80;

void addLine(DynamicArray& body, std::string_view line) {
  std::string text(line);
  std::replace(text.begin(), text.end(), '|', store::kValueMark);
  int number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool sets = error == std::errc() && stop != text.data() + text.size() && *stop == '=' &&
                    number >= 1 && number <= kMostAttributes;
  if (sets) {
    body.set(number, std::string_view(text).substr(line.find('=') + 1));
  } else {
    body.setText(body.text() + text);
  }
}

// Takes the lines up to "-" away from the input.
DynamicArray takeBody(const SampleStore& sample, std::string_view& input) {
  const std::string_view like = upTo('\n', input);
  DynamicArray body(sample.body(like));
  while (!input.empty()) {
    const std::string_view line = upTo('\n', input);
    if (line == "-") break;
    addLine(body, line);
  }
  return body;
}

// Those that no field shows: they stay as they are, whatever is saved.
std::string unshown(const DynamicArray& body) {
  std::string all;
  for (int i = 1; i <= std::max(body.DCount(), kMostAttributes); ++i) {
    const bool kept = i == 13 || i == 14 || i == attribut::DelaiPaiement || i > attribut::Dernier;
    if (kept) all += std::to_string(i) + "=" + std::string(body.get(i)) + "\n";
  }
  while (all.ends_with("=\n")) all.erase(all.find_last_of('\n', all.size() - 2) + 1);
  return all;
}

class Records {
 public:
  explicit Records(SampleStore& sample) : sample_(sample), store_(sample.store()) {}

  // The user looks it up.
  void show(Desk& desk, std::string_view code) {
    const bool empty = sample_.body(code).empty();
    desk.lookUp(code);
    const std::string said = desk.takeBoxes();
    if (empty) {
      expectSame("an empty body is said not to exist", said,
                 "Cet organisme de prise en charge n'existe pas.\n");
    } else {
      expectSame("showing a body says nothing", said, "");
    }
    expectNothingWritten("showing a body writes nothing");
  }

  // A body that is saved, twice if the first one is not refused.
  void save(Desk& desk, std::string_view code) {
    const DynamicArray before(sample_.body(code));
    if (before.empty()) return;
    desk.press("Cmd_OK");
    const std::string said = desk.takeBoxes();
    const std::string saved = sample_.body(code);
    if (store_.calls(testing_support::CallKind::DBWrite).empty()) {
      expect(!said.empty(), "a save that is refused says why");
      expectSame("a save that is refused changes nothing", saved, before.text());
      return;
    }
    expectSame("a save keeps what no field shows", unshown(DynamicArray(saved)), unshown(before));
    store_.forgetCalls();
    show(desk, code);
    desk.press("Cmd_OK");
    const std::string again = desk.takeBoxes();
    expect(!store_.calls(testing_support::CallKind::DBWrite).empty(),
           "what was saved can be saved again", again);
    expectSame("the second save equals the first", sample_.body(code), saved);
  }

 private:
  void expectNothingWritten(const char* rule) {
    expect(store_.calls(testing_support::CallKind::DBWrite).empty(), rule);
    expect(store_.calls(testing_support::CallKind::DeleteRecord).empty(), rule);
    store_.forgetCalls();
  }

  SampleStore& sample_;
  testing_support::MemoryStore& store_;
};

}  // namespace

void check(std::string_view input) {
  static SampleStore sample;
  Records records(sample);
  sample.store().put(attribut::kFile, "Y01", takeBody(sample, input));
  sample.store().put(attribut::kFile, "Z01", takeBody(sample, input));
  {
    Desk used(sample.store());
    Desk fresh(sample.store());
    sample.store().forgetCalls();
    records.show(used, "Y01");
    records.show(used, "Z01");
    records.show(fresh, "Z01");
    // Which line of the acronyms is chosen depends on how the body was found.
    const std::string difference =
        behaviour::difference(behaviour::snapshotOf(fresh.control().surface()),
                              behaviour::snapshotOf(used.control().surface()), {"Cbo_SigleOrgChg"});
    expect(difference.empty(), "a body is shown as by a control that has shown nothing else",
           difference);
    records.save(used, "Z01");
  }
  sample.restore();
}

}  // namespace fuzz
