#include "forms/PrinterChoice.h"

#include <optional>

#include "forms/Frm_ImpressionA4.h"

namespace forms {

std::string choisirImprimanteA4(toolkit::Desktop& desktop) {
  Frm_ImpressionA4 form(desktop);
  const std::optional<int> position = form.choisir();
  if (!position) return std::string(kAucuneImprimante);
  desktop.setCurrentPrinter(*position);
  return std::to_string(*position);
}

}  // namespace forms
