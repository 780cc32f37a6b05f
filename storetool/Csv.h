// CSV: a header "id,1,2,..." and one record a row, of at most as many cells. Cells with a comma, a
// double quote or a line end stand between double quotes, doubled inside. In a cell, ";" stands
// between values; "\;" is a semicolon of the text and "\\" a backslash. A row ends with its last
// attribute, so that every record comes back exactly as it was. With ";" between the cells, "|"
// stands between values and "\\|" is one of the text.
#pragma once

#include <istream>
#include <string>
#include <string_view>

#include "storetool/TextFormat.h"
#include "storetool/TextRecord.h"

namespace storetool {

// Visits the records of a file's text in order, a row in memory at a time; blank lines and a byte
// order mark are passed over. Throws FormatError ("line 3: ..."), the line being the one on which
// the row starts.
void readCsv(std::istream& text, const RecordVisitor& visitor, const TextFormat& format = {});

std::string csvHeader(int attributes, const TextFormat& format = {});
// One row, without its end.
std::string csvRow(std::string_view id, std::string_view record, const TextFormat& format = {});

}  // namespace storetool
