// The contact details page: acronym, company name, address, contacts.
#pragma once

#include "pages/AddressPort.h"
#include "pages/Page.h"

namespace pages {

class Ong1 : public Page {
 public:
  Ong1(PageContext context, AddressPort& adresse);

  void Afficher_Ong1();
  void Ecrire_Ong1();
  bool Verif_Ong1();

  void afficher() override { Afficher_Ong1(); }
  void ecrire() override { Ecrire_Ong1(); }
  bool verif() override { return Verif_Ong1(); }
  void vider() override;

 private:
  void refuser(std::string_view message);

  PageContext context_;
  AddressPort& adresse_;
};

}  // namespace pages
