// The tabbed dialog: pages of which one is in front.
#pragma once

#include <memory>

#include "toolkit/Control.h"

namespace toolkit {

class SSTab;

class TabPage : public Container {
 public:
  TabPage(SSTab* tabs, std::string name, std::string_view caption);
};

class SSTab : public Container {
 public:
  // One page a caption; the first is in front. The pages are named after the tabs: NAME_1, NAME_2.
  SSTab(Container* parent, std::string name, const std::vector<std::string>& captions);

  int tabs() const { return static_cast<int>(pages_.size()); }
  TabPage& page(int tab);  // 0-based; throws std::invalid_argument past the end
  const TabPage& page(int tab) const;

  int tab() const { return tab_; }
  // Brings a page forward by code, a disabled one too; moves no focus.
  void setTab(int tab);
  bool tabEnabled(int tab) const { return page(tab).enabled(); }
  void setTabEnabled(int tab, bool enabled) { page(tab).setEnabled(enabled); }

  // The user chooses a tab: nothing, and false, for a disabled one. The focus goes to the tabs
  // first; when a LostFocus handler keeps it away, the page stays, and the answer is false.
  bool userSelectTab(int tab);

  Handler onClick;  // another page has come to the front, by the user or by code

 private:
  bool holdsInView(const Control& page) const override;

  std::vector<std::unique_ptr<TabPage>> pages_;
  int tab_ = 0;
};

}  // namespace toolkit
