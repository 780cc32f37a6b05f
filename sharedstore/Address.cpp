#include "sharedstore/Address.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace sharedstore {

namespace {

constexpr std::string_view kScheme = "odbc:";

std::string lower(std::string_view text) {
  std::string lowered(text);
  for (char& c : lowered) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lowered;
}

// A value stands in braces, goes to the next semicolon, or is one of several settings that together
// stand in braces: what any of these readings gives is a password.
void addPasswords(std::vector<std::string>& found, std::string_view rest) {
  if (!rest.starts_with('{')) {
    for (const std::string_view ends : {";", "; }"}) {
      const std::string_view value = rest.substr(0, rest.find_first_of(ends));
      if (!value.empty()) found.emplace_back(value);
    }
    return;
  }
  std::string whole;  // "}}" stands for a brace within
  for (std::size_t at = 1; at < rest.size(); ++at) {
    if (rest[at] == '}' && rest.substr(at + 1, 1) != "}") break;
    if (rest[at] == '}') ++at;
    whole += rest[at];
  }
  if (!whole.empty()) found.push_back(std::move(whole));
}

std::vector<std::string> passwordsOf(std::string_view connection) {
  std::vector<std::string> found;
  const std::string lowered = lower(connection);
  for (const std::string_view name : {"pwd", "password"}) {
    for (std::size_t at = lowered.find(name); at != std::string::npos;
         at = lowered.find(name, at + 1)) {
      const std::size_t sign = lowered.find_first_not_of(' ', at + name.size());
      if (sign == std::string::npos || lowered[sign] != '=') continue;
      const std::size_t value = lowered.find_first_not_of(' ', sign + 1);
      if (value != std::string::npos) addPasswords(found, connection.substr(value));
    }
  }
  std::sort(found.begin(), found.end(), [](const std::string& a, const std::string& b) {
    return a.size() != b.size() ? a.size() > b.size() : a < b;
  });
  return found;
}

}  // namespace

std::optional<std::string> connectionOf(std::string_view address) {
  if (lower(address.substr(0, kScheme.size())) != kScheme) return std::nullopt;
  return std::string(address.substr(kScheme.size()));
}

std::string withoutPasswords(std::string text, std::string_view connection) {
  constexpr std::string_view kHidden = "***";
  for (const std::string& password : passwordsOf(connection)) {
    for (std::size_t at = text.find(password); at != std::string::npos;
         at = text.find(password, at + kHidden.size())) {
      text.replace(at, password.size(), kHidden);
    }
  }
  return text;
}

}  // namespace sharedstore
