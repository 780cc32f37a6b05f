// How the sentence language compares texts: number-aware sizes, and the marks "[" and "]" of a
// value.
#pragma once

#include <string>
#include <string_view>

#include "multivalue/Sentence.h"

namespace multivalue {

// Below, at or above zero. By size, exactly, when both are numbers ("9" < "10", "1" = "1,0");
// otherwise byte by byte.
int compareSizes(std::string_view a, std::string_view b);

// The order of PAR: the empty text, then the numbers by size, then the other texts, accented
// letters as their base letters, byte by byte; texts that are alike so, byte by byte as they are.
// Numbers of the same size written differently are equal here.
int compareForOrder(std::string_view a, std::string_view b);

// The same order as a text that compares byte by byte as the given one does in it: the given text
// itself where it can be, else one in `room`.
std::string_view orderKey(std::string_view text, std::string& room);

// The right-hand side of a condition.
class Criterion {
 public:
  enum class Match { Whole, Begins, Ends, Contains };

  // With = and #, a value that ends with "]" means "begins with", one that starts with "[" means
  // "ends with", and both together "contains". Other operators take the brackets as they are.
  Criterion(Operator comparison, std::string_view value);

  bool holdsForValue(std::string_view value) const;
  // For an attribute: when one of its values satisfies it. = "" asks for an attribute that is
  // empty as a whole, # "" for one that is not.
  bool holdsForAttribute(std::string_view attribute) const;

  Operator comparison() const { return comparison_; }
  Match match() const { return match_; }
  const std::string& text() const { return text_; }

 private:
  Operator comparison_;
  Match match_ = Match::Whole;
  std::string text_;
};

}  // namespace multivalue
