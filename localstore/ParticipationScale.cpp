#include "localstore/ParticipationScale.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <utility>

#include "store/Layouts.h"
#include "text/Utf8.h"

namespace localstore {

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
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop - text.data() > kMostDigits) return {std::nullopt, {}};
  return {number, {stop, static_cast<std::size_t>(end - stop)}};
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
  if (!participations_[row]) return std::nullopt;
  return Period{*rate_, day_, static_cast<int>(row) + 1, *participations_[row]};
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

bool beginPeriod(store::DynamicArray& agreement, const Period& period) {
  using namespace store::accord;
  int same = 0;
  for (int i = agreement.DCount(DatePartAcc); i >= 1; --i) {
    const std::optional<long long> since = storedDay(agreement.get(DatePartAcc, i));
    if (!since || *since > period.day) return false;
    if (*since == period.day) same = i;
  }
  const std::pair<int, std::string> values[] = {
      {TxRembAcc, period.rate},
      {DatePartAcc, std::to_string(period.day)},
      {TrancheAcc, std::to_string(period.row)},
      {PartBenefAcc, std::to_string(period.participation)}};
  for (const auto& [attribute, value] : values) {
    if (same > 0) {
      agreement.set(attribute, same, value);
    } else {
      agreement.Insert(attribute, 1, value);
    }
  }
  return true;
}

}  // namespace localstore
