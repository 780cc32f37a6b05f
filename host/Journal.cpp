#include "host/Journal.h"

#include <stdexcept>

#include "com/Variant.h"

namespace host {

Journal::Journal(const std::string& path) {
  if (path.empty()) return;
  file_ = _wfopen(com::wide(path).c_str(), L"ab");
  if (file_ == nullptr) throw std::runtime_error(path + " : écriture impossible");
}

Journal::~Journal() {
  if (file_ != nullptr) std::fclose(file_);
}

void Journal::write(std::string_view line) {
  if (file_ != nullptr) {
    std::fwrite(line.data(), 1, line.size(), file_);
    std::fputc('\n', file_);
    std::fflush(file_);
  }
}

}  // namespace host
