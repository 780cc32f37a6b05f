// The port to the address control of the first page: whatever stands behind it decides by itself
// how many attributes an address takes, from the first one that it is given.
#pragma once

#include <memory>

#include "store/Database.h"

namespace pages {

class AddressPort {
 public:
  AddressPort() = default;
  AddressPort(const AddressPort&) = delete;
  AddressPort& operator=(const AddressPort&) = delete;
  virtual ~AddressPort() = default;

  // The calls below are made in this order: the database, the settings, initialiser; then the
  // others as often as needed. A null database releases the one it has.
  virtual void setTheDatabase(std::shared_ptr<store::Database> database) = 0;
  // The settings 1 to 3; std::invalid_argument for any other number.
  virtual void setReglage(int number, bool value) = 0;
  // Throws what its store calls throw.
  virtual void initialiser() = 0;

  // The address held from that attribute on, to the screen and back.
  virtual void afficher(store::DynamicArray& record, int firstAttribute) = 0;
  virtual void ecrire(store::DynamicArray& record, int firstAttribute) = 0;
  virtual void vider() = 0;
};

}  // namespace pages
