#include "multivalue/ParticipationScale.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <utility>

#include "multivalue/RecordText.h"
#include "store/Layouts.h"
#include "text/Utf8.h"

namespace multivalue {

namespace {

namespace organisme = store::orgprisecharge;

constexpr std::string_view kSingle = "S";
constexpr std::string_view kHousehold = "M";
constexpr long long kWithoutEnd = std::numeric_limits<long long>::max();

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The whole number at the start of a text, and what follows it.
std::pair<std::optional<long long>, std::string_view> numberAt(std::string_view text) {
  constexpr std::ptrdiff_t kMostDigits = 18;
  long long number = 0;
  const char* const start = text.data();
  const char* const end = start + text.size();
  const auto [stop, error] = std::from_chars(start, end, number);
  if (error != std::errc() || stop - start > kMostDigits) return {std::nullopt, {}};
  return {number, {stop, static_cast<std::size_t>(end - stop)}};
}

// Where a period that begins on a day goes in a history of days: 0 in front, else the position of
// the one that it replaces. Nothing when a day is later or cannot be read.
std::optional<int> placeOf(std::string_view days, long day) {
  int place = 0;
  for (int position = 1; !days.empty(); ++position) {
    const std::size_t mark = days.find(store::kValueMark);
    const std::optional<long long> since = storedDay(days.substr(0, mark));
    if (!since || *since > day) return std::nullopt;
    if (*since == day && place == 0) place = position;
    if (mark == std::string_view::npos) break;
    days.remove_prefix(mark + 1);
    // A mark at the end has one more value behind it, which is empty.
    if (days.empty()) return std::nullopt;
  }
  return place;
}

// One attribute of the history, with the value in front or in the place of another one.
void addHistory(std::string& text, std::string_view held, int place, std::string_view value) {
  if (place == 0) {
    text += value;
    if (!held.empty()) text += store::kValueMark;
    text += held;
    return;
  }
  for (int position = 1; position < place; ++position) {
    const std::size_t mark = held.find(store::kValueMark);
    text += held.substr(0, mark);
    text += store::kValueMark;
    held = mark == std::string_view::npos ? std::string_view() : held.substr(mark + 1);
  }
  text += value;
  const std::size_t mark = held.find(store::kValueMark);
  if (mark != std::string_view::npos) text += held.substr(mark);
}

// A record's text up to an attribute, with the marks that it lacks. What is left of it, from that
// attribute on.
std::string_view addUpTo(std::string& text, std::string_view record, int attribute) {
  std::size_t at = 0;
  for (int missing = attribute - 1; missing > 0; --missing) {
    const std::size_t size = attributeEnd(record.substr(at));
    if (size == std::string_view::npos) {
      text += record;
      text.append(static_cast<std::size_t>(missing), store::kAttributeMark);
      return {};
    }
    at += size + 1;
  }
  text += record.substr(0, at);
  return record.substr(at);
}

}  // namespace

std::optional<long long> storedNumber(std::string_view text) {
  const auto [number, rest] = numberAt(text::trim(text));
  return rest.empty() ? number : std::nullopt;
}

std::optional<long long> storedDay(std::string_view text) {
  const auto [number, rest] = numberAt(text::trim(text));
  const bool fraction = rest.size() > 1 && (rest[0] == '.' || rest[0] == ',') &&
                        std::all_of(rest.begin() + 1, rest.end(), isDigit);
  return rest.empty() || fraction ? number : std::nullopt;
}

ParticipationScale::ParticipationScale(const store::DynamicArray& body, long day)
    : day_(day),
      rate_(rateOn(body, day)),
      single_(brackets(body, organisme::DebRevSeulOrgChg, organisme::FinRevSeulOrgChg)),
      household_(brackets(body, organisme::DebRevMenOrgChg, organisme::FinRevMenOrgChg)) {
  const std::size_t rows = std::max(single_.size(), household_.size());
  for (std::size_t row = 1; row <= rows; ++row) {
    const std::string_view held = body.get(organisme::BaremCoursOrgChg, static_cast<int>(row));
    participations_.push_back(text::trim(held).empty() ? Amount(0) : storedNumber(held));
  }
}

std::optional<Period> ParticipationScale::periodOf(std::string_view income,
                                                   std::string_view household) const {
  const std::string_view kind = text::trim(household);
  if (!kind.empty() && kind != kSingle && kind != kHousehold) return std::nullopt;
  const Amount amount = storedNumber(income);
  if (!amount || !rate_) return std::nullopt;
  const std::vector<Bracket>& rows = kind == kHousehold ? household_ : single_;
  const auto found = std::find_if(rows.begin(), rows.end(),
                                  [&](const Bracket& row) { return row.holds(*amount); });
  if (found == rows.end()) return std::nullopt;
  const auto row = static_cast<std::size_t>(found - rows.begin());
  const Amount participation = participations_[row];
  if (!participation) return std::nullopt;
  return Period{*rate_, day_, static_cast<int>(row) + 1, *participation};
}

bool ParticipationScale::Bracket::holds(long long income) const {
  if (!start || !end || income < *start) return false;
  return endsInside ? income <= *end : income < *end;
}

std::vector<ParticipationScale::Bracket> ParticipationScale::brackets(
    const store::DynamicArray& body, int starts, int ends) {
  int count = body.DCount(starts);
  while (count > 0 && text::trim(body.get(starts, count)).empty()) --count;
  std::vector<Bracket> rows(static_cast<std::size_t>(count));
  for (std::size_t row = 0; row < rows.size(); ++row) {
    rows[row].start = storedNumber(body.get(starts, static_cast<int>(row) + 1));
  }
  for (std::size_t row = 0; row < rows.size(); ++row) {
    const bool last = row + 1 == rows.size();
    const std::string_view held = body.get(ends, static_cast<int>(row) + 1);
    rows[row].end = text::trim(held).empty() ? Amount(0) : storedNumber(held);
    // Without an end of its own a row goes as far as the next one begins.
    if (rows[row].end == 0) rows[row].end = last ? kWithoutEnd : rows[row + 1].start;
    rows[row].endsInside = last;
  }
  return rows;
}

std::optional<std::string> ParticipationScale::rateOn(const store::DynamicArray& body, long day) {
  const int rows = body.DCount(organisme::DateRembOrgChg);
  for (int row = 1; row <= rows; ++row) {
    const std::optional<long long> since = storedDay(body.get(organisme::DateRembOrgChg, row));
    if (!since || *since > day) continue;
    const std::string_view held = text::trim(body.get(organisme::TxRembOrgChg, row));
    if (held.empty()) return std::string();
    const Amount rate = storedNumber(held);
    return rate ? std::optional(std::to_string(*rate)) : std::nullopt;
  }
  return std::string();
}

std::optional<std::string> beginPeriod(std::string_view agreement, const Period& period) {
  using namespace store::accord;
  const std::optional<int> place = placeOf(attributeOf(agreement, DatePartAcc), period.day);
  if (!place) return std::nullopt;
  const std::string values[] = {period.rate, std::to_string(period.day), std::to_string(period.row),
                                std::to_string(period.participation)};
  std::string text;
  text.reserve(agreement.size() + 32);
  std::string_view left = addUpTo(text, agreement, TxRembAcc);
  for (int attribute = TxRembAcc; attribute <= PartBenefAcc; ++attribute) {
    const std::size_t mark = attributeEnd(left);
    addHistory(text, left.substr(0, mark), *place, values[attribute - TxRembAcc]);
    const bool ends = mark == std::string_view::npos;
    left = ends ? std::string_view() : left.substr(mark + 1);
    if (attribute < PartBenefAcc) {
      text += store::kAttributeMark;
    } else if (!ends) {
      (text += store::kAttributeMark) += left;
    }
  }
  return text;
}

}  // namespace multivalue
