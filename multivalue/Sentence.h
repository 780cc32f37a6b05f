// The sentence language, as text turned into its parts. What the names stand for is not known
// here.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace multivalue {

enum class Operator { Equal, Different, Less, AtMost, Greater, AtLeast };

// A name or number of the sentence and the place of its first byte in it, from 0.
struct Word {
  std::string text;
  std::size_t offset = 0;
};

struct Condition {
  Word field;
  Operator comparison = Operator::Equal;
  std::string value;
};

struct Sentence {
  Word file;
  std::vector<Condition> conditions;
  std::vector<Word> order;
};

// Does the text start with SSELECT or SELECT?
bool isSelection(std::string_view sentence);

// {SSELECT|SELECT} file [AVEC field operator value [AND AVEC field operator value]...]
// [PAR field [PAR field]...]. Keywords in upper or lower case.
// A value stands between double quotes and ends at the first one behind which, but for blanks, AND
// AVEC, PAR or the end of the sentence follows: every other double quote belongs to the value. A
// value without quotes is one word.
// Throws StoreError (kBadSentence) that tells the place in the sentence.
Sentence parseSentence(std::string_view sentence);

// Throws StoreError (kBadSentence) with a message that begins with the place: characters of the
// sentence, counted from 1.
[[noreturn]] void refuseSentence(std::string_view sentence, std::size_t offset,
                                 const std::string& reason);

}  // namespace multivalue
