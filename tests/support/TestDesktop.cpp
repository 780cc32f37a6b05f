#include "tests/support/TestDesktop.h"

#include <utility>

#include "toolkit/SSTab.h"

namespace toolkit {
namespace {

const char* nameOf(Icon icon) {
  switch (icon) {
    case Icon::None:
      return "no icon";
    case Icon::Information:
      return "information";
    case Icon::Exclamation:
      return "exclamation";
    case Icon::Question:
      return "question";
  }
  return "?";
}

const char* nameOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::Ok:
      return "OK";
    case Buttons::YesNo:
      return "Yes/No";
    case Buttons::YesNoCancel:
      return "Yes/No/Cancel";
  }
  return "?";
}

}  // namespace

void PrintTo(Icon icon, std::ostream* out) { *out << nameOf(icon); }
void PrintTo(Buttons buttons, std::ostream* out) { *out << nameOf(buttons); }

namespace headless {

void PrintTo(const Entry& entry, std::ostream* out) {
  switch (entry.what) {
    case Entry::What::Box:
      *out << "box «" << entry.text << "», " << nameOf(entry.icon) << ", " << nameOf(entry.buttons);
      if (!entry.where.empty()) *out << ", " << entry.where;
      return;
    case Entry::What::Beep:
      *out << "beep";
      return;
    case Entry::What::Pointer:
      *out << (entry.pointer == Pointer::Hourglass ? "hourglass" : "normal pointer");
      return;
    case Entry::What::Events:
      *out << "pending events";
      return;
    case Entry::What::Shown:
      *out << "form " << entry.text << " shown";
      return;
    case Entry::What::Closed:
      *out << "form " << entry.text << " closed";
      return;
  }
}

}  // namespace headless
}  // namespace toolkit

namespace testing_support {
namespace {

const toolkit::SSTab* tabsOf(const toolkit::Container& container) {
  for (const toolkit::Control* child : container.children()) {
    if (child->kind() == toolkit::Kind::SSTab) return static_cast<const toolkit::SSTab*>(child);
  }
  return nullptr;
}

std::string listed(const std::vector<toolkit::headless::Entry>& boxes) {
  std::string told;
  for (const toolkit::headless::Entry& box : boxes) told += "\n  " + testing::PrintToString(box);
  return told;
}

}  // namespace

std::string whereaboutsOf(const toolkit::Surface& surface) {
  std::string told;
  if (const toolkit::SSTab* tabs = tabsOf(surface)) {
    told = "tab \"" + toolkit::withoutMnemonic(tabs->page(tabs->tab()).caption()) + "\", ";
  }
  const toolkit::Control* focus = surface.focus();
  return told + "focus " + (focus ? focus->name() : "nowhere");
}

TestDesktop::TestDesktop() {
  onFault = [](const std::string& fault) { ADD_FAILURE() << fault; };
}

void TestDesktop::follow(std::function<const toolkit::headless::User*()> user) {
  whereabouts = [user] {
    const toolkit::headless::User* now = user();
    return now ? whereaboutsOf(now->surface()) : std::string();
  };
  onFault = [this, user = std::move(user)](const std::string& fault) {
    const toolkit::headless::User* now = user();
    const toolkit::headless::Caller at = now ? now->caller() : toolkit::headless::Caller{};
    ADD_FAILURE_AT(at.file, at.line) << fault << "\n" << whereabouts();
  };
}

testing::AssertionResult noBoxes(const char*, const std::vector<toolkit::headless::Entry>& boxes) {
  if (boxes.empty()) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "Nothing should have been shown:" << listed(boxes);
}

testing::AssertionResult boxCount(const char*, const char*,
                                  const std::vector<toolkit::headless::Entry>& boxes,
                                  std::size_t count) {
  if (boxes.size() == count) return testing::AssertionSuccess();
  return testing::AssertionFailure() << boxes.size() << " boxes instead of " << count
                                     << (boxes.empty() ? "" : ":") << listed(boxes);
}

}  // namespace testing_support
