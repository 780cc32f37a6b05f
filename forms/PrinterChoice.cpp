#include "forms/PrinterChoice.h"

#include <optional>

#include "forms/Frm_ImpressionA4.h"

namespace forms {

namespace {

constexpr const char* kRefused = "-1";

}  // namespace

std::string choisirImprimanteA4(toolkit::Desktop& desktop) {
  Frm_ImpressionA4 form(desktop);
  const std::optional<int> position = form.choisir();
  if (!position) return kRefused;
  desktop.setCurrentPrinter(*position);
  return std::to_string(*position);
}

}  // namespace forms
