// Where a shared store is: "odbc:" and a connection string of ODBC, "odbc:DSN=Tessaline" or
// "odbc:Driver=PostgreSQL Unicode;Servername=host1,host2;Database=tessaline".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sharedstore {

// The connection string; nothing for what is no such address. "odbc:" in any case.
std::optional<std::string> connectionOf(std::string_view address);

// A text without the passwords that the connection string holds.
std::string withoutPasswords(std::string text, std::string_view connection);

}  // namespace sharedstore
