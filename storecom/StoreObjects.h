// The store outside: the client that opens it, the open store, its files.
#pragma once

#include <memory>

#include "store/Database.h"
#include "storecom/Automation.h"

namespace storecom {

class ClientObject final : public Automation {
 public:
  ClientObject();

 private:
  int mostArguments(DISPID member, bool isPut) const override;
  com::Variant call(DISPID member, const Arguments& arguments) override;
};

class DatabaseObject final : public Automation {
 public:
  explicit DatabaseObject(std::shared_ptr<store::Database> database);

 private:
  int mostArguments(DISPID member, bool isPut) const override;
  com::Variant call(DISPID member, const Arguments& arguments) override;

  std::shared_ptr<store::Database> database_;
};

class FileObject final : public Automation {
 public:
  explicit FileObject(std::shared_ptr<store::File> file);

 private:
  int mostArguments(DISPID member, bool isPut) const override;
  com::Variant call(DISPID member, const Arguments& arguments) override;

  std::shared_ptr<store::File> file_;
};

}  // namespace storecom
