// What the three list editors have in common while a row is open: all the rest is locked.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "tests/behaviour/CoverageTest.h"

namespace behaviour {

// A control, and where it is enabled: in list mode, while a row is changed, while one is added.
struct Lock {
  std::string name;
  bool listMode;
  bool changing;
  bool adding;
};

// Page is the fixture of the editor's page, with an existing body on screen.
template <class Page>
class EditMode : public Page {
 protected:
  // The page's number, from 0, and what of it is locked; the bar and the other pages always are.
  EditMode(int tab, std::initializer_list<Lock> ofThePage) : tab_(tab), locks_(ofThePage) {
    for (const char* name : {"Cmd_Supprimer", "Cmd_Sortir", "Cmd_OK", "Cmd_Annuler",
                             "Txt_CodOrgChg", "Cbo_SigleOrgChg", "Txt_SigleOrgChg"}) {
      locks_.push_back({name, true, false, false});
    }
    for (int page = 0; page < 6; ++page) {
      const bool own = page == tab;
      locks_.push_back({"Ong_OrgPriseChg_" + std::to_string(page + 1), true, own, own});
    }
  }
  // Enabled is what that mode says. Cmd_Ajouter works in the empty state alone.
  void expectLocks(bool Lock::*mode, Caller at = Caller::here()) {
    const auto trace = called("expectLocks", at);
    for (const Lock& lock : locks_) EXPECT_EQ(this->enabled(lock.name), lock.*mode) << lock.name;
    EXPECT_FALSE(this->enabled("Cmd_Ajouter"));
  }
  // Neither the bar, nor another page, nor these buttons.
  void expectTheRestOutOfReach(std::initializer_list<const char*> buttons,
                               Caller at = Caller::here()) {
    const auto trace = called("expectTheRestOutOfReach", at);
    for (int page = 0; page < 6; ++page) {
      if (page == tab_) continue;
      EXPECT_FALSE(this->user_->click(this->tabs(), page)) << page;
    }
    EXPECT_EQ(this->tabs().tab(), tab_);
    for (const char* name :
         {"Cmd_OK", "Cmd_Annuler", "Cmd_Supprimer", "Cmd_Sortir", "Cmd_Ajouter"}) {
      EXPECT_FALSE(this->press(name)) << name;
    }
    for (const char* name : buttons) EXPECT_FALSE(this->press(name)) << name;
    EXPECT_FALSE(this->user_->fill(this->code(), "002"));
    EXPECT_FALSE(this->user_->choose(this->sigles(), 0));
  }
  // What is enabled now has to be so again when the row is closed.
  void remember() { before_ = enabledBelow(this->control_->surface()); }
  void expectAsRemembered(Caller at = Caller::here()) {
    const auto trace = called("expectAsRemembered", at);
    EXPECT_PRED_FORMAT2(same, enabledBelow(this->control_->surface()), before_);
  }

 private:
  int tab_;
  std::vector<Lock> locks_;
  std::vector<std::pair<std::string, bool>> before_ = enabledBelow(this->control_->surface());
};

}  // namespace behaviour
