// JSON Lines: one record a line, {"id":"001","fields":["CD01","NAME",["v1","v2"]]}. fields[i] is
// attribute i + 1: a string, or an array of strings for an attribute of several values.
#pragma once

#include <istream>
#include <string>
#include <string_view>

#include "storetool/TextFormat.h"
#include "storetool/TextRecord.h"

namespace storetool {

// Visits the records of a file's text in order, a line in memory at a time; blank lines and a byte
// order mark are passed over. Throws FormatError ("line 3: ...").
void readJsonLines(std::istream& text, const RecordVisitor& visitor, const TextFormat& format = {});

// One line, without its end. Throws FormatError for a text that is no UTF-8.
std::string jsonLine(std::string_view id, std::string_view record);

}  // namespace storetool
