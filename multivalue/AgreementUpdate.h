// The command MAJTXACCGENE: a body's new scale carried into its agreements. The rule and the
// records that it reads: docs/local-store.md.
#pragma once

#include <string_view>

#include "multivalue/Catalogue.h"

namespace multivalue {

// Is this text the command's name, with or without arguments?
bool isAgreementUpdate(std::string_view command);

// Runs "MAJTXACCGENE |dd/mm/yyyy|code": deletes what an earlier one has left in TEMPO for that
// body, rewrites the body's live agreements that end on or after the date, and leaves in TEMPO the
// keys of those changed and of those that could not be. All of it in one transaction, or nothing.
// Throws StoreError: kBadSentence for missing or surplus arguments, a text that is no date, a code
// that no body has (the old lists of a code that is named go all the same); and whatever a read or
// write throws.
void updateAgreements(Engine& engine, Catalogue& catalogue, std::string_view command);

}  // namespace multivalue
