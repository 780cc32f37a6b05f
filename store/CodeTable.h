// Code tables: records of TABLES that hold codes in attribute 2 and labels in attribute 3, value by
// value.
#pragma once

#include <string>
#include <string_view>

#include "store/DynamicArray.h"

namespace store {

// First attribute whose value 1 equals the text, from 1 to DCount(); 0 when none does. Also where a
// key stands in the answer to a selection.
int ChercherCodeTable(const DynamicArray& table, std::string_view value);

// Where a code stands: attribute 2 is walked from value 1 until it equals the code or is empty.
// 0 when the walk ends at the empty value.
int positionOfCode(const DynamicArray& table, std::string_view code);
// Its label; "" for none.
std::string labelOfCode(const DynamicArray& table, std::string_view code);
// Code of a label: of the first that equals it; codes without a label are passed by. "" when none
// does.
std::string codeOfLabel(const DynamicArray& table, std::string_view label);

}  // namespace store
