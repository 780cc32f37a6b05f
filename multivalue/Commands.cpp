#include "multivalue/Commands.h"

#include <algorithm>
#include <string>

#include "multivalue/AgreementUpdate.h"
#include "store/StoreError.h"
#include "text/Utf8.h"

namespace multivalue {

namespace {

// Settings of a session: this store reads numbers with either decimal sign and keeps dates as day
// numbers, so that none of them changes what it does.
constexpr std::string_view kSettings[] = {"SET-DEC ,", "DATE.FORMAT", "UDT.OPTIONS 11 ON"};

}  // namespace

void runCommand(Engine& engine, Catalogue& catalogue, std::string_view command) {
  const std::string_view trimmed = text::trim(command);
  if (std::find(std::begin(kSettings), std::end(kSettings), trimmed) != std::end(kSettings)) return;
  if (isAgreementUpdate(trimmed)) return updateAgreements(engine, catalogue, trimmed);
  // Only the command's name is told: its arguments may be anyone's data.
  const std::string_view name = trimmed.substr(0, trimmed.find(' '));
  throw store::StoreError(store::kBadSentence,
                          "character 1: unknown command \"" + std::string(name) + "\"");
}

}  // namespace multivalue
