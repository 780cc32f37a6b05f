#include "store/CodeTable.h"

namespace store {
namespace {

constexpr int kCodes = 2;
constexpr int kLabels = 3;

}  // namespace

int ChercherCodeTable(const DynamicArray& table, std::string_view value) {
  for (int attribute = 1; attribute <= table.DCount(); ++attribute) {
    if (table.get(attribute, 1) == value) return attribute;
  }
  return 0;
}

int positionOfCode(const DynamicArray& table, std::string_view code) {
  std::string_view left = table.get(kCodes);
  for (int value = 1; !left.empty(); ++value) {
    const std::string_view own = takeValue(left);
    if (own.empty()) return 0;
    if (own == code) return value;
  }
  return 0;
}

std::string labelOfCode(const DynamicArray& table, std::string_view code) {
  const int position = positionOfCode(table, code);
  return position == 0 ? std::string() : std::string(table.get(kLabels, position));
}

std::string codeOfLabel(const DynamicArray& table, std::string_view label) {
  if (label.empty()) return {};
  for (int value = 1; value <= table.DCount(kLabels); ++value) {
    if (table.get(kLabels, value) == label) return std::string(table.get(kCodes, value));
  }
  return {};
}

}  // namespace store
