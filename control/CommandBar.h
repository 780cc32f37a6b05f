#pragma once

#include <functional>
#include <string>

#include "control/AcronymList.h"
#include "control/Context.h"
#include "control/RecordView.h"
#include "control/Save.h"

namespace control {

// The bar's buttons but the save. None of them traps anything: a failure is traced and announced to
// the host, and ends the command.
class CommandBar {
 public:
  CommandBar(Context& context, RecordView& view, AcronymList& list, Save& save,
             std::function<void(bool)> setSortir);

  void Cmd_Ajouter_Click();
  void Cmd_Annuler_Click();
  // A search that fails ends it, and nothing is deleted.
  void Cmd_Supprimer_Click();
  // Asks to save only what the user has changed.
  void Cmd_Sortir_Click();

 private:
  void ajouter();
  void valeursParDefaut();
  void supprimer();
  bool refusParFichier(const std::string& file, std::string_view message);
  void sortir();
  bool modifie();
  void enregistrerEtSortir();

  Context& context_;
  RecordView& view_;
  AcronymList& list_;
  Save& save_;
  std::function<void(bool)> setSortir_;
};

}  // namespace control
