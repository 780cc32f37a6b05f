#include "tests/behaviour/Snapshot.h"

#include <sstream>

#include "toolkit/Buttons.h"
#include "toolkit/ComboBox.h"
#include "toolkit/ListBox.h"
#include "toolkit/ScrollBar.h"
#include "toolkit/TextBox.h"

namespace behaviour {
namespace {

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

std::string told(const toolkit::ComboBox& combo) {
  std::string out = quoted(combo.text()) + " line " + std::to_string(combo.listIndex()) + " of";
  for (const toolkit::ListItem& line : combo.items().all()) out += " " + quoted(line.text);
  return out;
}

std::string told(const toolkit::ListBox& list) {
  std::string out = "lines";
  for (int line = 0; line < list.listCount(); ++line) {
    out += (list.selected(line) ? " >" : " ") + quoted(list.list(line)) + "#" +
           std::to_string(list.itemData(line));
  }
  return out;
}

std::string told(const toolkit::ScrollBar& bar) {
  return std::to_string(bar.value()) + " of " + std::to_string(bar.min()) + ".." +
         std::to_string(bar.max());
}

std::string content(const toolkit::Control& control) {
  if (const auto* box = dynamic_cast<const toolkit::TextBox*>(&control)) return quoted(box->text());
  if (const auto* combo = dynamic_cast<const toolkit::ComboBox*>(&control)) return told(*combo);
  if (const auto* list = dynamic_cast<const toolkit::ListBox*>(&control)) return told(*list);
  if (const auto* bar = dynamic_cast<const toolkit::ScrollBar*>(&control)) return told(*bar);
  if (const auto* option = dynamic_cast<const toolkit::OptionButton*>(&control)) {
    return option->value() ? "set" : "not set";
  }
  if (const auto* check = dynamic_cast<const toolkit::CheckBox*>(&control)) {
    return check->value() ? "checked" : "not checked";
  }
  return "";
}

std::string told(const toolkit::Control& control) {
  std::string out = content(control);
  if (!control.enabled()) out += " disabled";
  if (!control.visible()) out += " hidden";
  if (!control.caption().empty()) out += " caption " + quoted(control.caption());
  if (control.color() != toolkit::kBlack) out += " coloured";
  return out;
}

void collect(const toolkit::Container& container, Snapshot& all) {
  for (const toolkit::Control* child : container.children()) {
    all[child->name()] = told(*child);
    if (const auto* inner = dynamic_cast<const toolkit::Container*>(child)) collect(*inner, all);
  }
}

}  // namespace

Snapshot snapshotOf(const toolkit::Container& container) {
  Snapshot all;
  collect(container, all);
  return all;
}

std::string difference(const Snapshot& expected, const Snapshot& actual,
                       const std::set<std::string>& apartFrom) {
  std::ostringstream out;
  for (const auto& [name, text] : expected) {
    const auto found = actual.find(name);
    const std::string now = found == actual.end() ? "missing" : found->second;
    if (now == text || apartFrom.contains(name)) continue;
    out << name << ": " << now << "\n  instead of " << text << "\n";
  }
  for (const auto& [name, text] : actual) {
    if (!expected.contains(name)) out << name << ": " << text << "\n";
  }
  return out.str();
}

}  // namespace behaviour
