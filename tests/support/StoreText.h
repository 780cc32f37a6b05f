// Records' texts and the errors of a store, for tests of stores.
#pragma once

#include <initializer_list>
#include <string>

#include "store/DynamicArray.h"
#include "store/StoreError.h"

// A record's text from attributes in which ";" stands between values.
inline std::string recordText(std::initializer_list<std::string> attributes) {
  std::string text;
  bool first = true;
  for (std::string attribute : attributes) {
    for (char& c : attribute) {
      if (c == ';') c = store::kValueMark;
    }
    if (!first) text += store::kAttributeMark;
    text += attribute;
    first = false;
  }
  return text;
}

// Code of the StoreError that an action throws, 0 when it throws none.
template <typename Action>
unsigned errorOf(const Action& action) {
  try {
    action();
  } catch (const store::StoreError& error) {
    return error.code();
  }
  return 0;
}

template <typename Action>
std::string messageOf(const Action& action) {
  try {
    action();
  } catch (const store::StoreError& error) {
    return error.what();
  }
  return "no error";
}
