#include "storetool/Transfer.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "multivalue/RecordText.h"
#include "store/DynamicArray.h"
#include "store/StoreError.h"
#include "storetool/Csv.h"
#include "storetool/Encodings.h"
#include "storetool/JsonLines.h"
#include "storetool/TextRecord.h"
#include "storetool/Writer.h"

namespace storetool {

namespace {

namespace fs = std::filesystem;

// Records between two words to the listener.
constexpr long long kStep = 1024;

fs::path pathOf(const std::string& utf8) { return {std::u8string(utf8.begin(), utf8.end())}; }

std::string textOf(const fs::path& path) {
  const std::u8string utf8 = path.u8string();
  return {utf8.begin(), utf8.end()};
}

// In capitals too, as old programs write them.
bool hasExtension(const fs::path& path, std::string_view wanted) {
  std::string extension = textOf(path.extension());
  for (char& c : extension) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return extension == wanted;
}
bool isCsv(const fs::path& path) { return hasExtension(path, ".csv"); }
bool isJsonLines(const fs::path& path) { return hasExtension(path, ".jsonl"); }

[[noreturn]] void failOn(const fs::path& path, const std::string& reason) {
  throw store::StoreError(store::kIoFailure, textOf(path) + ": " + reason);
}

void checkFormat(const fs::path& path) {
  if (!isCsv(path) && !isJsonLines(path)) {
    throw FormatError(textOf(path) + ": neither .jsonl nor .csv");
  }
}

std::vector<fs::path> filesOf(const std::vector<std::string>& paths) {
  std::vector<fs::path> files;
  for (const std::string& given : paths) {
    const fs::path path = pathOf(given);
    std::error_code ignored;
    if (!fs::is_directory(path, ignored)) {
      checkFormat(path);
      files.push_back(path);
      continue;
    }
    std::vector<fs::path> found;
    std::error_code error;
    fs::directory_iterator entry(path, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
      if (isCsv(entry->path()) || isJsonLines(entry->path())) found.push_back(entry->path());
    }
    if (error) failOn(path, "the folder cannot be read");
    if (found.empty()) failOn(path, "the folder holds no .jsonl and no .csv file");
    std::sort(found.begin(), found.end());
    files.insert(files.end(), found.begin(), found.end());
  }
  return files;
}

double sizeOf(const fs::path& path) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(path, error);
  return error ? 0 : static_cast<double>(size);
}

long long importFile(multivalue::Database& database, const fs::path& path, const TextFormat& format,
                     const std::function<void(std::size_t offset)>& listener) {
  std::ifstream content(path, std::ios::binary);
  if (!content) failOn(path, "the file cannot be read");
  const std::string file = textOf(path.stem());
  long long count = 0;
  Writer writer(database, file);
  const RecordVisitor take = [&](const TextRecord& record, std::size_t offset) {
    writer.add(record.id, record.text);
    if (++count % kStep == 0) listener(offset);
  };
  try {
    isCsv(path) ? readCsv(content, take, format) : readJsonLines(content, take, format);
  } catch (const FormatError& error) {
    writer.flush();  // what comes first in the file is refused first
    throw FormatError(textOf(path) + ", " + error.what());
  }
  writer.flush();
  if (content.bad()) failOn(path, "the file cannot be read");
  return count;
}

// A file being written under another name; gone unless it takes its own.
class Scratch {
 public:
  Scratch(const fs::path& target, const char* tail) : target_(target), path_(target) {
    path_ += tail;
    stream_.open(path_, std::ios::binary | std::ios::trunc);
    if (!stream_) failOn(target_, "the file cannot be written");
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() {
    stream_.close();
    std::error_code ignored;
    fs::remove(path_, ignored);
  }

  void line(std::string_view text) { stream_ << text << '\n'; }
  void append(Scratch& other) {
    other.close();
    if (fs::file_size(other.path_) > 0)
      stream_ << std::ifstream(other.path_, std::ios::binary).rdbuf();
  }
  void takeName() {
    close();
    std::error_code error;
    fs::rename(path_, target_, error);
    if (error) failOn(target_, "the file cannot be written");
  }

 private:
  void close() {
    stream_.close();
    if (!stream_) failOn(target_, "the file could not be written to its end");
  }

  const fs::path target_;
  fs::path path_;
  std::ofstream stream_;
};

std::string encoded(const std::string& line, std::string_view id, Encoding encoding) {
  if (encoding == Encoding::Utf8) return line;
  std::optional<std::string> bytes = toWindows1252(line);
  if (bytes) return *bytes;
  throw FormatError("record \"" + std::string(id) +
                    "\" holds a character that windows-1252 has not");
}

}  // namespace

std::vector<std::string_view> partsOf(std::string_view text, char mark) {
  std::vector<std::string_view> parts;
  while (!text.empty() || !parts.empty()) {
    const std::size_t end = text.find(mark);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  return parts;
}

void requireNoMarkCharacter(const TextRecord& record) {
  if (!multivalue::holdsMarkCharacter(record.id) && !multivalue::holdsMarkCharacter(record.text)) {
    return;
  }
  throw FormatError("a text holds U+00FD or U+00FE, which stand for the store's marks");
}

Imported importFiles(multivalue::Database& database, const std::vector<std::string>& paths,
                     const ProgressListener& listener, const TextFormat& format) {
  const std::vector<fs::path> files = filesOf(paths);
  double total = 1;
  for (const fs::path& path : files) total += sizeOf(path);
  double before = 0;
  Imported imported;
  const auto transaction = database.begin();
  std::vector<std::string> known = database.fileNames();
  for (const fs::path& path : files) {
    const std::string file = textOf(path.stem());
    if (std::find(known.begin(), known.end(), file) == known.end()) {
      database.createFile(file);
      known.push_back(file);
      imported.newFiles.push_back(file);
    }
    imported.records += importFile(database, path, format, [&](std::size_t offset) {
      listener((before + static_cast<double>(offset)) / total);
    });
    before += sizeOf(path);
  }
  transaction->commit();
  return imported;
}

long long exportFile(multivalue::Database& database, std::string_view file, const std::string& path,
                     const ProgressListener& listener, const TextFormat& format) {
  const fs::path target = pathOf(path);
  checkFormat(target);
  const bool csv = isCsv(target);
  const auto total = static_cast<double>(std::max(database.recordCount(file), 1LL));
  long long count = 0;
  std::size_t widest = 0;
  Scratch rows(target, ".part");
  database.forEachRecord(file, [&](std::string_view id, std::string_view record) {
    if (csv) widest = std::max(widest, partsOf(record, store::kAttributeMark).size());
    rows.line(
        encoded(csv ? csvRow(id, record, format) : jsonLine(id, record), id, format.encoding));
    if (++count % kStep == 0) listener(static_cast<double>(count) / total);
  });
  if (!csv) {
    rows.takeName();
    return count;
  }
  // The header tells the widest record, known at the end alone.
  Scratch whole(target, ".whole");
  whole.line(csvHeader(static_cast<int>(widest), format));
  whole.append(rows);
  whole.takeName();
  return count;
}

}  // namespace storetool
