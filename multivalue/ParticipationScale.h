// A funding body's participation scale, and the period that it begins in an agreement.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/DynamicArray.h"

namespace multivalue {

// What a period says: a position of attributes 10 to 13 of an agreement.
struct Period {
  std::string rate;             // hundredths, "" when the body has none
  long day = 0;                 // first day of the period
  int row = 0;                  // row of the scale, from 1
  long long participation = 0;  // hundredths
};

// A body's rows as they stand in its record, applied from a day on. Numbers that cannot be read
// make no period: a row with such a bracket holds no income, one with such a participation gives
// none.
class ParticipationScale {
 public:
  ParticipationScale(const store::DynamicArray& body, long day);

  // The period of a beneficiary: monthly income in hundredths and household kind as the billing
  // elements hold them ("S" or nothing a single person, "M" a household). Nothing when there is no
  // income, when it lies in no row, or when either cannot be read.
  std::optional<Period> periodOf(std::string_view income, std::string_view household) const;

 private:
  using Amount = std::optional<long long>;

  // Holds the incomes from the start up to the end, which is of the next row; the last row's own
  // end belongs to it.
  struct Bracket {
    Amount start;
    Amount end;
    bool endsInside = false;
    bool holds(long long income) const;
  };

  static std::vector<Bracket> brackets(const store::DynamicArray& body, int starts, int ends);
  // The rate that applies on the day; nothing when it cannot be read.
  static std::optional<std::string> rateOn(const store::DynamicArray& body, long day);

  long day_;
  std::optional<std::string> rate_;
  std::vector<Bracket> single_;
  std::vector<Bracket> household_;
  std::vector<Amount> participations_;
};

// The text of an agreement with a period put in front of its history, or in the place of the one
// that begins on the same day. Nothing when the history has a later day or one that cannot be read.
std::optional<std::string> beginPeriod(std::string_view agreement, const Period& period);

// The whole number of a stored text, blanks around it aside; a day's fraction is cut off. Nothing
// when it is none, or beyond 18 digits.
std::optional<long long> storedNumber(std::string_view text);
std::optional<long long> storedDay(std::string_view text);

}  // namespace multivalue
