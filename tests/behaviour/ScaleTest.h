// The participation page as its user has it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/behaviour/CoverageTest.h"

namespace behaviour {

inline constexpr int kFirstScaleAttribute = attribut::DebRevSeulOrgChg;
inline constexpr std::size_t kScaleColumns = 6;

// The lists of the scale, from the start for single persons to the current participation.
inline constexpr const char* kScaleLists[] = {"Lst_DebRevSeulOrgChg", "Lst_FinRevSeulOrgChg",
                                              "Lst_DebRevMenOrgChg",  "Lst_FinRevMenOrgChg",
                                              "Lst_BaremPrecOrgChg",  "Lst_BaremCoursOrgChg"};
inline constexpr const char* kScaleZones[] = {"Txt_DebRevSeulOrgChg", "Txt_FinRevSeulOrgChg",
                                              "Txt_DebRevMenOrgChg", "Txt_FinRevMenOrgChg",
                                              "Txt_BaremCoursOrgChg"};

inline constexpr const char* kNouveauBaremeQuestion = "Souhaitez-vous créer un nouveau barème ?";

// Asked by a save of a new scale.
std::string questionBareme(std::string_view date);

class Scale : public ControlTest {
 protected:
  // Body 001 has three brackets and two dates, 002 has no scale, 003 has one bracket in per cent.
  // 001 is on screen, with the participation page in front.
  Scale();
  void putScale(std::string_view code, const Rows& rows, std::string_view previous,
                std::string_view current);
  // Looks the body up anew; what was changed is lost.
  void show(std::string_view code = "001", Caller at = Caller::here());

  TextBox& current() { return box("Txt_DatBaremCours"); }
  TextBox& previous() { return box("Txt_DatBaremPrec"); }
  std::string caption(std::string_view name) { return control_->surface().find(name)->caption(); }

  Rows rows();
  std::vector<int> selected();  // the selected row of each list
  Row zones();
  // Into the zones of the open row, from the first on.
  void fillZones(const Row& row, Caller at = Caller::here());
  void add(const Row& row, Caller at = Caller::here());
  bool open(int row, std::string_view list = "Lst_DebRevSeulOrgChg");
  bool rowOpen() { return button("Cmd_OKPart").usable(); }
  // Presses the new-scale button, answers Yes, types the date.
  void beginScale(std::string_view date = "", Caller at = Caller::here());
  // Will saving ask whether the agreements are to follow?
  bool asksAboutAgreements();
  // Saves the body with Cmd_OK, which must accept it. A new scale stays out of the agreements.
  void save(Caller at = Caller::here());
};

}  // namespace behaviour
