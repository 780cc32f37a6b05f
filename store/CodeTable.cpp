#include "store/CodeTable.h"

namespace store {
namespace {

constexpr int kCodes = 2;
constexpr int kLabels = 3;

std::string partner(const DynamicArray& table, int from, int to, std::string_view wanted) {
  for (int value = 1; !table.get(from, value).empty(); ++value) {
    if (table.get(from, value) == wanted) return std::string(table.get(to, value));
  }
  return {};
}

}  // namespace

int ChercherCodeTable(const DynamicArray& table, std::string_view value) {
  for (int attribute = 1; attribute <= table.DCount(); ++attribute) {
    if (table.get(attribute, 1) == value) return attribute;
  }
  return 0;
}

std::string labelOfCode(const DynamicArray& table, std::string_view code) {
  return partner(table, kCodes, kLabels, code);
}

std::string codeOfLabel(const DynamicArray& table, std::string_view label) {
  return partner(table, kLabels, kCodes, label);
}

}  // namespace store
