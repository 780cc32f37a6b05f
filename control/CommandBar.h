#pragma once

#include <functional>
#include <string>

#include "control/AcronymList.h"
#include "control/Context.h"
#include "control/RecordView.h"
#include "control/Save.h"

namespace control {

// The bar's buttons but the save.
class CommandBar {
 public:
  CommandBar(Context& context, RecordView& view, AcronymList& list, Save& save,
             std::function<void(bool)> setSortir);

  void Cmd_Ajouter_Click();
  void Cmd_Annuler_Click();
  // Not trapped, but traced: a search that fails ends it, and nothing is deleted.
  void Cmd_Supprimer_Click();
  // Asks to save only what the user has changed. Not trapped.
  void Cmd_Sortir_Click();

 private:
  void valeursParDefaut();
  void supprimer();
  bool refusParFichier(const std::string& file, std::string_view message);
  bool modifie();
  void enregistrerEtSortir();

  Context& context_;
  RecordView& view_;
  AcronymList& list_;
  Save& save_;
  std::function<void(bool)> setSortir_;
};

}  // namespace control
