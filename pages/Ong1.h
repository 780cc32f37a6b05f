// The contact details page: acronym, company name, address, contacts.
#pragma once

#include <vector>

#include "pages/AddressPort.h"
#include "pages/Onglet.h"
#include "pages/ShownAttribute.h"

namespace pages {

class Ong1 : public Onglet {
 public:
  Ong1(PageContext context, AddressPort& adresse);

  void Afficher_Ong1();
  void Ecrire_Ong1();
  bool Verif_Ong1();

  void afficher() override { Afficher_Ong1(); }
  void ecrire() override { Ecrire_Ong1(); }
  void vider() override;

 private:
  struct Field {
    toolkit::TextBox* box;
    int attribute;
    ShownAttribute shown;
  };

  void montrer(Field& field, std::string_view attribute);

  AddressPort& adresse_;
  std::vector<Field> fields_;
};

}  // namespace pages
