#include "storetool/Transfer.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "store/DynamicArray.h"
#include "store/StoreError.h"
#include "storetool/Csv.h"
#include "storetool/JsonLines.h"
#include "storetool/TextRecord.h"

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

bool isCsv(const fs::path& path) { return path.extension() == ".csv"; }
bool isJsonLines(const fs::path& path) { return path.extension() == ".jsonl"; }

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

long long importFile(multivalue::Database& database, const fs::path& path,
                     const std::function<void(std::size_t offset)>& listener) {
  std::ifstream content(path, std::ios::binary);
  if (!content) failOn(path, "the file cannot be read");
  const std::string file = textOf(path.stem());
  database.createFile(file);
  long long count = 0;
  const RecordVisitor take = [&](const TextRecord& record, std::size_t offset) {
    database.write(file, record.id, record.text);
    if (++count % kStep == 0) listener(offset);
  };
  try {
    isCsv(path) ? readCsv(content, take) : readJsonLines(content, take);
  } catch (const FormatError& error) {
    throw FormatError(textOf(path) + ", " + error.what());
  }
  if (content.bad()) failOn(path, "the file cannot be read");
  return count;
}

// A file being written; whatever fails is known when it is closed.
class TextFile {
 public:
  explicit TextFile(const fs::path& path) : path_(path), stream_(path, std::ios::binary) {
    if (!stream_) failOn(path_, "the file cannot be written");
  }

  void line(std::string_view text) { stream_ << text << '\n'; }

  void close() {
    stream_.close();
    if (!stream_) failOn(path_, "the file could not be written to its end");
  }

 private:
  fs::path path_;
  std::ofstream stream_;
};

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

long long importFiles(multivalue::Database& database, const std::vector<std::string>& paths,
                      const ProgressListener& listener) {
  const std::vector<fs::path> files = filesOf(paths);
  double total = 1;
  for (const fs::path& path : files) total += sizeOf(path);
  double before = 0;
  long long count = 0;
  const auto transaction = database.begin();
  for (const fs::path& path : files) {
    count += importFile(database, path, [&](std::size_t offset) {
      listener((before + static_cast<double>(offset)) / total);
    });
    before += sizeOf(path);
  }
  transaction->commit();
  return count;
}

long long exportFile(multivalue::Database& database, std::string_view file, const std::string& path,
                     const ProgressListener& listener) {
  const fs::path target = pathOf(path);
  checkFormat(target);
  const bool csv = isCsv(target);
  const auto total = static_cast<double>(std::max(database.recordCount(file), 1LL));
  long long count = 0;
  std::size_t widest = 0;
  // The header of a CSV file tells the widest record, known at the end alone.
  std::vector<std::string> lines;
  database.forEachRecord(file, [&](std::string_view id, std::string_view record) {
    if (csv) widest = std::max(widest, partsOf(record, store::kAttributeMark).size());
    lines.push_back(csv ? csvRow(id, record) : jsonLine(id, record));
    if (++count % kStep == 0) listener(static_cast<double>(count) / total);
  });
  TextFile out(target);
  if (csv) out.line(csvHeader(static_cast<int>(widest)));
  for (const std::string& line : lines) out.line(line);
  out.close();
  return count;
}

}  // namespace storetool
