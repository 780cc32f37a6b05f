// How the characters and the columns of a text file are written.
#pragma once

namespace storetool {

enum class Encoding { Utf8, Windows1252 };

struct TextFormat {
  Encoding encoding = Encoding::Utf8;
  // Of CSV alone: between cells a comma, or a semicolon as French spreadsheets have it.
  char separator = ',';

  // Between the values of a cell.
  char valueSeparator() const { return separator == ';' ? '|' : ';'; }
};

}  // namespace storetool
