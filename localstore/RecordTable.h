// The records of one file and the index entries that follow them.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "localstore/Catalogue.h"

namespace localstore {

// An attribute (from 1) of a record's text, with its value marks; "" past the end.
std::string_view attributeOf(std::string_view record, int attribute);
// The first value of an attribute's text.
std::string_view firstValue(std::string_view attribute);

// Not empty and without marks.
bool isIdentifier(std::string_view id);

class RecordTable {
 public:
  RecordTable(Connection& connection, std::shared_ptr<const FileDescription> file)
      : connection_(connection),
        file_(std::move(file)),
        reading_("SELECT record FROM " + file_->recordTable() + " WHERE id = ?1"),
        writing_("INSERT INTO " + file_->recordTable() +
                 " VALUES(?1, ?2) ON CONFLICT(id) DO UPDATE SET record = ?2") {}

  // Nothing when no record has the identifier.
  std::optional<std::string> read(std::string_view id);
  // Creates or replaces. Both join the transaction that is open, and need one.
  void write(std::string_view id, std::string_view record);
  // The same for a record that has just been read; `before` is its text.
  void replace(std::string_view id, std::string_view before, std::string_view record);
  // False when there was none.
  bool remove(std::string_view id);
  // In the order of the keys, byte by byte. The views live until the visitor returns.
  void forEach(const std::function<void(std::string_view id, std::string_view record)>& visitor);

 private:
  // Makes an attribute's index entries those of `after` where they were those of `before`.
  void reindex(int attribute, std::string_view id, std::string_view before, std::string_view after);

  Connection& connection_;
  std::shared_ptr<const FileDescription> file_;
  std::string reading_;
  std::string writing_;
};

}  // namespace localstore
