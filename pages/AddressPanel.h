#pragma once

#include <array>
#include <string>

#include "pages/AddressPort.h"
#include "pages/ShownAttribute.h"
#include "screen/EditSession.h"
#include "screen/Screen.h"

namespace pages {

// The address control: complement, number, kind, name of the street, locality, postal code, town,
// telephone, fax and e-mail address, in the attributes that store/Layouts.h numbers.
//
// The kind of street is chosen from the records of NATUREVOIE, shown by its label and written as
// its key. A kind that is in no record is shown and written as it stands, as are all kinds in a
// store that does not know that file.
//
// Settings:
//   1  the kinds of street are offered for choice; without it the field takes free text alone
//   2  the address can be typed; without it its fields are disabled
//   3  what is typed becomes capitals, as sorting machines want it
class AddressPanel : public AddressPort {
 public:
  AddressPanel(screen::Adresse& fields, screen::EditSession& session);

  void setTheDatabase(std::shared_ptr<store::Database> database) override;
  void setReglage(int number, bool value) override;
  void initialiser() override;
  void afficher(store::DynamicArray& record, int firstAttribute) override;
  void ecrire(store::DynamicArray& record, int firstAttribute) override;
  void vider() override;

 private:
  struct Field {
    toolkit::TextBox* box;
    int step;  // from the address's first attribute
    ShownAttribute shown;
  };

  void capitale(char32_t& key) const;
  void montrerNature(std::string_view key);
  std::string_view nature() const;  // as the attribute holds it

  screen::Adresse& fields_;
  screen::EditSession& session_;
  std::array<Field, 9> boxes_;
  std::shared_ptr<store::Database> database_;
  std::array<bool, 3> settings_{};
  store::DynamicArray natures_;  // columns "0 1" of NATUREVOIE
  ShownAttribute nature_;        // a key
  int ligneNature_ = -1;         // of its kind, -1 for none
};

}  // namespace pages
