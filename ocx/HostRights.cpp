#include "ocx/HostRights.h"

#include <utility>

#include "com/LateBound.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

namespace {

constexpr long kConsultation = 0;

class HostRightsEntry final : public screen::RightsEntry {
 public:
  explicit HostRightsEntry(ComPtr<IDispatch> object) : object_(std::move(object), "rights entry") {}
  long Level() override {
    return com::wholeNumberOf(object_.call(L"Level").get()).value_or(kConsultation);
  }

 private:
  com::LateBound object_;
};

class HostRights final : public screen::Rights {
 public:
  explicit HostRights(ComPtr<IDispatch> object) : object_(std::move(object), "rights") {}

  std::shared_ptr<screen::RightsEntry> entry(std::string_view right) override {
    std::vector<com::Variant> arguments;
    arguments.push_back(com::Variant::ofText(com::wide(right)));
    return std::make_shared<HostRightsEntry>(object_.callForObject(L"", arguments));
  }

 private:
  com::LateBound object_;
};

}  // namespace

std::shared_ptr<screen::Rights> rightsOf(IDispatch* object) {
  return object == nullptr ? nullptr : std::make_shared<HostRights>(object);
}

}  // namespace ocx
