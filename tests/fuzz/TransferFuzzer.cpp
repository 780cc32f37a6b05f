// CSV and JSON Lines: any text is read, or refused with the line; what is written reads back as the
// same record, byte for byte. An input is a file's text, and a record too: the key up to the first
// line end, and its text.
#include <algorithm>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <vector>

#include "multivalue/RecordText.h"
#include "store/DynamicArray.h"
#include "storetool/Csv.h"
#include "storetool/JsonLines.h"
#include "tests/fuzz/Fuzz.h"
#include "text/Utf8.h"

namespace fuzz {
namespace {

using store::kAttributeMark;
using store::kValueMark;
using storetool::FormatError;
using storetool::TextRecord;

struct Format {
  void (*readFrom)(std::istream& text, const storetool::RecordVisitor& visitor,
                   const storetool::TextFormat& format);
  std::string (*write)(std::string_view id, std::string_view record);
  bool withHeader;

  void read(std::string_view text, const storetool::RecordVisitor& visitor) const {
    std::istringstream stream{std::string(text)};
    readFrom(stream, visitor, {});
  }
};

constexpr Format kCsv{
    storetool::readCsv,
    [](std::string_view id, std::string_view record) { return storetool::csvRow(id, record); },
    true};
constexpr Format kJsonLines{storetool::readJsonLines, storetool::jsonLine, false};

std::string fileOf(const Format& format, const TextRecord& record) {
  std::string header;
  if (format.withHeader) {
    const auto marks = std::count(record.text.begin(), record.text.end(), kAttributeMark);
    header = storetool::csvHeader(static_cast<int>(marks) + 1) + "\n";
  }
  return header + format.write(record.id, record.text) + "\n";
}

void checkWritten(const Format& format, const TextRecord& record) {
  const std::string text = fileOf(format, record);
  int count = 0;
  try {
    format.read(text, [&](const TextRecord& back, std::size_t) {
      ++count;
      expectSame("a written key reads back", back.id, record.id);
      expectSame("a written record reads back", back.text, record.text);
    });
  } catch (const FormatError& error) {
    broken("what was written reads back", readable(text) + ": " + error.what());
  }
  expect(count == 1, "a written record reads back as one", readable(text));
}

// The text behind so many lines.
std::string_view behindLines(std::string_view text, std::size_t lines) {
  for (; lines > 0; --lines) upTo('\n', text);
  return text;
}

// The first line that is not blank, without a byte order mark.
std::string firstLine(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  const std::size_t begin = text.find_first_not_of("\r\n");
  if (begin == std::string_view::npos) return {};
  std::string_view line = text.substr(begin);
  return std::string(upTo('\n', line)) + "\n";
}

bool refuses(const Format& format, const std::string& text) {
  try {
    format.read(text, [](const TextRecord&, std::size_t) {});
  } catch (const FormatError&) {
    return true;
  }
  return false;
}

// "line 3: ...": what stands before that line is read, what begins there is not.
void checkRefusal(const Format& format, const std::string& message, std::string_view text) {
  expect(message.starts_with("line "), "a refusal names a line", message);
  const std::size_t line = std::strtoul(message.c_str() + 5, nullptr, 10);
  const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
  expect(line >= 1 && line <= lines, "a refusal names a line of the text", message);
  const std::string_view rest = behindLines(text, line - 1);
  const std::string before(text.substr(0, text.size() - rest.size()));
  // A blank line keeps a byte order mark in the middle from becoming the first of the text.
  const std::string header = format.withHeader ? firstLine(before) : "\n";
  if (header.empty()) {
    expect(refuses(format, firstLine(text)), "what begins at the line is refused", message);
    return;
  }
  expect(!refuses(format, before), "what stands before the line is read", message);
  expect(refuses(format, header + std::string(rest)), "what begins at the line is refused",
         message);
}

void checkText(const Format& format, std::string_view text) {
  std::vector<TextRecord> records;
  std::size_t behind = 0;
  try {
    format.read(text, [&](const TextRecord& record, std::size_t offset) {
      expect(offset > behind && offset <= text.size(), "each record moves on in the text");
      behind = offset;
      records.push_back(record);
    });
  } catch (const FormatError& error) {
    checkRefusal(format, error.what(), text);
  }
  for (const TextRecord& record : records) {
    expect(!record.id.empty(), "a record that was read has a key");
    checkWritten(format, record);
  }
}

// A byte that is no UTF-8 comes back from UTF-16 as a character.
bool isUtf8(std::string text) {
  std::replace(text.begin(), text.end(), kAttributeMark, ' ');
  std::replace(text.begin(), text.end(), kValueMark, ' ');
  return text::fromUtf16(text::toUtf16(text)) == text;
}

bool canComeBack(const std::string& text) {
  return isUtf8(text) && !multivalue::holdsMarkCharacter(text);
}

void checkRecord(const TextRecord& record) {
  const bool comesBack = canComeBack(record.id) && canComeBack(record.text);
  for (const Format& format : {kCsv, kJsonLines}) {
    if (comesBack) {
      checkWritten(format, record);
      continue;
    }
    std::string text;
    try {
      text = fileOf(format, record);
    } catch (const FormatError& error) {
      expect(!format.withHeader, "CSV is written of any text", error.what());
      continue;
    }
    expect(refuses(format, text), "what cannot come back is refused", readable(text));
  }
}

}  // namespace

void check(std::string_view input) {
  checkText(kCsv, input);
  checkText(kJsonLines, input);
  std::string_view text = input;
  std::string id(upTo('\n', text));
  std::erase(id, kAttributeMark);
  std::erase(id, kValueMark);
  if (!id.empty()) checkRecord({id, std::string(text)});
}

}  // namespace fuzz
