// Where a shared store is: "odbc:" and a connection string of ODBC, "odbc:DSN=Tessaline" or
// "odbc:Driver=PostgreSQL Unicode;Servername=host1,host2;Database=tessaline".
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace sharedstore {

// The connection string; nothing for what is no such address. "odbc:" in any case.
std::optional<std::string> connectionOf(std::string_view address);

// What a data source has under the name of a setting; "" for nothing.
using DataSource =
    std::function<std::string(const std::string& source, const std::string& setting)>;

// The connection string with what a session asks of its way to the server, in pqopt: bounds, within
// which a server that has gone is noticed, and of several servers (Servername=a,b,c, in the string
// or its data source) the one that takes writes. What a user has set there himself holds. A
// connection in a file (FILEDSN), and one by a data source that cannot be read, are left as they
// are, since what is said here would take the place of what they say.
std::string withBounds(const std::string& connection, const DataSource& dataSource);

// A text without the passwords that the connection string holds.
std::string withoutPasswords(std::string text, std::string_view connection);

}  // namespace sharedstore
