// A user's rights: a level for each right by its name.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "storecom/Automation.h"

namespace storecom {

// Shared by the rights and the entries handed out: an entry's level is always the current one.
using Levels = std::map<std::string, long, std::less<>>;

// A right without a level has level 0.
class RightsObject final : public Automation {
 public:
  RightsObject();

 private:
  int mostArguments(DISPID member, bool isPut) const override;
  com::Variant call(DISPID member, const Arguments& arguments) override;

  std::shared_ptr<Levels> levels_;
};

class RightsEntryObject final : public Automation {
 public:
  RightsEntryObject(std::shared_ptr<const Levels> levels, std::string name);

 private:
  int mostArguments(DISPID member, bool isPut) const override;
  com::Variant call(DISPID member, const Arguments& arguments) override;

  std::shared_ptr<const Levels> levels_;
  std::string name_;
};

}  // namespace storecom
