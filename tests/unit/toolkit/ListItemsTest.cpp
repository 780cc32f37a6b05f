#include "toolkit/ListItems.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace toolkit {
namespace {

TEST(ListItems, ReadingPastTheEndGivesNothing) {
  ListItems items;
  items.assign({{"a", 1}, {"b", 2}});
  EXPECT_EQ(items.text(1), "b");
  EXPECT_EQ(items.data(1), 2);
  EXPECT_EQ(items.text(2), "");
  EXPECT_EQ(items.data(2), 0);
  EXPECT_EQ(items.text(-1), "");
}

TEST(ListItems, ChangesMindTheirEnds) {
  ListItems items;
  EXPECT_THROW(items.insert(1, {"x"}), std::invalid_argument);
  EXPECT_THROW(items.insert(-1, {"x"}), std::invalid_argument);
  items.insert(0, {"b", 2});
  items.insert(0, {"a", 1});
  items.insert(2, {"c", 3});
  EXPECT_THROW(items.replace(3, {"x"}), std::invalid_argument);
  EXPECT_THROW(items.erase(3), std::invalid_argument);
  items.replace(2, {"C", 4});
  items.erase(0);
  EXPECT_EQ(items.all(), (std::vector<ListItem>{{"b", 2}, {"C", 4}}));
}

TEST(ListItems, FindsTheFirstLineThatEqualsTheTextExactly) {
  ListItems items;
  items.assign({{"ab"}, {"a"}, {"a"}});
  EXPECT_EQ(items.find("a"), 1);
  EXPECT_EQ(items.find("A"), -1);
  EXPECT_EQ(items.find(""), -1);
}

}  // namespace
}  // namespace toolkit
