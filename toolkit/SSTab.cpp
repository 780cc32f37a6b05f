#include "toolkit/SSTab.h"

#include <stdexcept>
#include <utility>

namespace toolkit {

namespace {

std::string pageName(const std::string& tabs, int number) {
  return tabs + "_" + std::to_string(number);
}

}  // namespace

TabPage::TabPage(SSTab* tabs, std::string name, std::string_view caption)
    : Container(tabs, Kind::TabPage, std::move(name)) {
  setCaption(caption);
}

SSTab::SSTab(Container* parent, std::string name, const std::vector<std::string>& captions)
    : Container(parent, Kind::SSTab, std::move(name)) {
  for (const std::string& caption : captions) {
    pages_.push_back(std::make_unique<TabPage>(this, pageName(this->name(), tabs() + 1), caption));
  }
}

const TabPage& SSTab::page(int tab) const {
  if (tab < 0 || tab >= tabs()) throw std::invalid_argument("no such tab");
  return *pages_[static_cast<std::size_t>(tab)];
}

TabPage& SSTab::page(int tab) { return const_cast<TabPage&>(std::as_const(*this).page(tab)); }

bool SSTab::holdsInView(const Control& page) const {
  return tab_ < tabs() && pages_[static_cast<std::size_t>(tab_)].get() == &page;
}

void SSTab::setTab(int tab) {
  TabPage& next = page(tab);
  if (tab == tab_) return;
  TabPage& before = page(std::exchange(tab_, tab));
  changed(Aspect::Value);
  viewChanged(before);
  viewChanged(next);
  fire(onClick);
  usabilityChanged();
}

bool SSTab::userSelectTab(int tab) {
  bool done = false;
  if (tabEnabled(tab)) {
    userDoes(FocusFirst::Yes, [&] {
      if (!tabEnabled(tab)) return;
      done = true;
      setTab(tab);
    });
  }
  if (!done) changed(Aspect::Value);
  return done;
}

}  // namespace toolkit
