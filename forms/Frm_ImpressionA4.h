#pragma once

#include <optional>
#include <string>
#include <vector>

#include "toolkit/Buttons.h"
#include "toolkit/ComboBox.h"
#include "toolkit/Desktop.h"
#include "toolkit/Frame.h"
#include "toolkit/Window.h"

namespace forms {

// What the window remembers from one opening to the next.
struct ImprimanteParDefaut {
  bool premierChargementFait = false;
  std::optional<std::string> nom;  // device name; none while no page printer has been seen
};

// The one that lasts as long as the library stays loaded. A test starts afresh by assigning {}.
ImprimanteParDefaut& imprimanteParDefaut();

// The form's child controls.
struct Controles {
  explicit Controles(toolkit::Surface& surface);

  toolkit::Frame Fra_Imprimante;
  toolkit::Label Etq_Nom;
  toolkit::ComboBox Cbo_Imprimante;
  // Hidden: line for line, positions among the desktop's printers.
  toolkit::ComboBox Cbo_ImpSelect;
  toolkit::Label Etq_LibEtat;
  toolkit::Label Etq_Etat;
  toolkit::Label Etq_LibOu;
  toolkit::Label Etq_Ou;
  toolkit::CommandButton Cmd_Ok;
  toolkit::CommandButton Cmd_Annuler;
};

// Offers the page printers: those whose device name, in upper case, does not contain "MATRIC". The
// default is the system's current printer when the window is first loaded, or the first page
// printer when that one is none; where it is not offered any more, the first one stands in for it.
// Enter is OK; Escape and the title bar cancel.
class Frm_ImpressionA4 {
 public:
  // Lists the printers and chooses the default; shows nothing yet, and leaves the current printer
  // alone. Throws what the desktop throws.
  explicit Frm_ImpressionA4(toolkit::Desktop& desktop);
  Frm_ImpressionA4(const Frm_ImpressionA4&) = delete;
  Frm_ImpressionA4& operator=(const Frm_ImpressionA4&) = delete;
  ~Frm_ImpressionA4() = default;

  // Modal. The position of the chosen printer among the desktop's; none when it was cancelled.
  std::optional<int> choisir();

 private:
  void placer();
  void lier();
  void charger();
  std::optional<std::string> nomParDefaut();  // none while no page printer has been seen
  void retenirImprimanteCourante(ImprimanteParDefaut& parDefaut);
  void afficherChoix();
  void confirmer();

  toolkit::Desktop& desktop_;
  toolkit::Window window_;
  Controles controles_;

  std::vector<toolkit::PrinterInfo> imprimantes_;
  int positionParDefaut_ = 0;  // in Cbo_Imprimante
  std::optional<int> choisie_;
};

}  // namespace forms
