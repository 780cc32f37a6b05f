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

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// What stands in braces at a text's beginning, in which "}}" stands for a brace. `end`: behind it.
std::string braced(std::string_view text, std::size_t& end) {
  std::string whole;
  std::size_t at = 1;
  for (; at < text.size(); ++at) {
    if (text[at] == '}' && text.substr(at + 1, 1) != "}") break;
    if (text[at] == '}') ++at;
    whole += text[at];
  }
  end = std::min(at + 1, text.size());
  return whole;
}

struct Setting {
  std::string name;  // in lower case
  std::string value;
  std::size_t begin;  // in the connection string
  std::size_t end;    // behind its semicolon
};

std::vector<Setting> settingsOf(std::string_view connection) {
  std::vector<Setting> found;
  for (std::size_t begin = 0; begin < connection.size();) {
    std::size_t end = std::min(connection.find(';', begin), connection.size());
    const std::size_t sign = connection.substr(0, end).find('=', begin);
    if (sign != std::string_view::npos) {
      Setting setting{lower(trimmed(connection.substr(begin, sign - begin))), {}, begin, end};
      const std::size_t value = connection.find_first_not_of(' ', sign + 1);
      if (value < connection.size() && connection[value] == '{') {
        setting.value = braced(connection.substr(value), end);
        end = std::min(connection.find(';', value + end), connection.size());
      } else {
        setting.value = trimmed(connection.substr(sign + 1, end - sign - 1));
      }
      setting.end = std::min(end + 1, connection.size());
      found.push_back(std::move(setting));
    }
    begin = end + 1;
  }
  return found;
}

// The driver takes the last of several.
std::string lastOf(const std::vector<Setting>& settings, const std::string& name) {
  for (auto each = settings.rbegin(); each != settings.rend(); ++each) {
    if (each->name == name) return each->value;
  }
  return {};
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
  std::size_t end = 0;
  std::string whole = braced(rest, end);
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

std::string withBounds(const std::string& connection, const DataSource& dataSource) {
  const std::vector<Setting> settings = settingsOf(connection);
  const std::string source = lastOf(settings, "dsn");
  const auto ofSource = [&](const char* name) {
    return source.empty() ? std::string() : dataSource(source, name);
  };
  const auto value = [&](const char* name) {
    const std::string own = lastOf(settings, name);
    return own.empty() ? ofSource(name) : own;
  };
  const bool unread =
      !source.empty() && ofSource("servername").empty() && ofSource("server").empty();
  if (unread || !lastOf(settings, "filedsn").empty()) return connection;
  const bool several = (value("servername") + value("server")).find(',') != std::string::npos;
  // Of several servers one that does not answer is passed over soon.
  std::string options =
      several ? "target_session_attrs=read-write connect_timeout=5" : "connect_timeout=15";
  options += " tcp_user_timeout=15000 keepalives_count=3";
  // The driver refuses what it has a setting of its own for, once that is set.
  if (value("keepalivetime").empty()) options += " keepalives_idle=10";
  if (value("keepaliveinterval").empty()) options += " keepalives_interval=3";
  const std::string own = value("pqopt");
  if (!own.empty()) options += " " + own;

  std::string whole = connection;
  for (auto each = settings.rbegin(); each != settings.rend(); ++each) {
    if (each->name == "pqopt") whole.erase(each->begin, each->end - each->begin);
  }
  if (!whole.empty() && whole.back() != ';') whole += ';';
  whole += "pqopt={";
  for (const char c : options) whole += c == '}' ? std::string("}}") : std::string(1, c);
  return whole + "}";
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
