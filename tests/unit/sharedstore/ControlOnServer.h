// The control as its user has it, on a store of a server that is reached through a relay.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Relay.h"
#include "SharedStoreUnderTest.h"
#include "sharedstore/SharedDatabase.h"
#include "tests/behaviour/ControlTest.h"

class ControlOnServer : public behaviour::ControlTest {
 protected:
  // Body 001 of three is whole: three accounts, 20 activities, of which the entity has 10.
  ControlOnServer();
  ~ControlOnServer() override;

  // A body is then whole without them.
  void withoutAccounts() { store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, ""); }
  // Carries all of store_ to the server.
  void carry();
  // A new control with a session of its own, without Init.
  void connectToServer();
  // Both, and Init; the journal starts empty.
  void startOnServer();

  // A scale in two rows for body 001, carried with the rest.
  void putScale();
  // Of 001, each for a beneficiary of its own, from 10000 on; every tenth has a person responsible.
  // Every seventh may have an income beyond the scale. At once to the server.
  void putAgreements(int count, bool someBeyond);
  // The user enters a scale of that day; a save asks about the agreements then.
  void enterScale(const std::string& date);

  // Messages that go to the server meanwhile.
  template <class Action>
  int messagesOf(const Action& action) const {
    const int before = relay_.messages();
    action();
    return relay_.messages() - before;
  }
  // As the server has it, "none" without a record.
  std::string stored(std::string_view file, std::string_view id) const;
  int storedCount(std::string_view file) const;

  SharedStoreUnderTest server_;
  Relay relay_;
  std::shared_ptr<multivalue::Database> direct_ = server_.connect({});
  behaviour::Lines told_;  // the host, from Init on: "Enregistre 001", "Echec 80040007"
};
