// The store that a test of this suite works on. Of which engine it is, says the program that the
// suite is linked into (Suite.cmake): any engine behind multivalue/Engine.h passes the same cases.
#pragma once

#include <memory>

#include "multivalue/Database.h"

struct Connecting {
  int busyTimeout = 5000;  // milliseconds
  // So little memory that what is written goes to the disk before its transaction ends.
  bool littleMemory = false;
};

class StoreUnderTest {
 public:
  StoreUnderTest() = default;
  StoreUnderTest(const StoreUnderTest&) = delete;
  StoreUnderTest& operator=(const StoreUnderTest&) = delete;
  virtual ~StoreUnderTest() = default;

  // A client more. What a process has connected is not used by those that it forks.
  virtual std::shared_ptr<multivalue::Database> connect(const Connecting& how) const = 0;
  // What is not whole: the first of the faults, "" without one.
  virtual std::string fault() const = 0;
};

// An empty store with the standard files, gone with the object.
std::unique_ptr<StoreUnderTest> newStore();
