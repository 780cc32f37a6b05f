// Both widths of each library on a model of 64-bit Windows: names and type libraries are shared,
// the keys CLSID and Interface are not.
#include <gtest/gtest.h>

#include <functional>

#include "com/ComBorder.h"
#include "ocx/ControlRegistration.h"
#include "storecom/StoreRegistration.h"
#include "tests/windows/registration/ScratchRoot.h"

namespace {

using com::Width;
using Contents = std::map<std::wstring, std::wstring>;

// A root as programs of one width see it.
class View final : public com::RegistryRoot {
 public:
  View(ScratchRoot& root, Width width) : root_(root), width_(width) {}

  bool exists(const std::wstring& key) override { return root_.exists(seen(key)); }
  void create(const std::wstring& key) override { root_.create(seen(key)); }
  void eraseIfEmpty(const std::wstring& key) override { root_.eraseIfEmpty(seen(key)); }
  std::vector<std::wstring> names(const std::wstring& key) override {
    return root_.names(seen(key));
  }
  std::optional<com::RegistryValue> read(const std::wstring& key,
                                         const std::wstring& name) override {
    return root_.read(seen(key), name);
  }
  void write(const std::wstring& key, const std::wstring& name,
             const com::RegistryValue& value) override {
    root_.write(seen(key), name, value);
  }
  void erase(const std::wstring& key, const std::wstring& name) override {
    root_.erase(seen(key), name);
  }

 private:
  std::wstring seen(const std::wstring& key) const {
    const bool own = key == L"CLSID" || key.starts_with(L"CLSID\\") || key == L"Interface" ||
                     key.starts_with(L"Interface\\");
    return own && width_ == Width::Bits32 ? L"Wow6432Node\\" + key : key;
  }

  ScratchRoot& root_;
  Width width_;
};

struct Library {
  const char* name;
  std::function<com::RegistryTable(const std::wstring& file, Width width)> table;
};

void PrintTo(const Library& library, std::ostream* out) { *out << library.name; }

class Widths : public testing::TestWithParam<Library> {
 protected:
  Widths() {
    for (const wchar_t* key :
         {L"CLSID", L"Interface", L"TypeLib", L"Wow6432Node\\CLSID", L"Wow6432Node\\Interface"}) {
      root_.putText(key, L"", L"the system's");
    }
    empty_ = root_.contents();
  }

  com::RegistryTable table(Width width, const std::wstring& folder = L"") const {
    const std::wstring standard = width == Width::Bits64 ? L"C:\\x64" : L"C:\\x86";
    return GetParam().table((folder.empty() ? standard : folder) + L"\\the library", width);
  }
  View& view(Width width) { return width == Width::Bits64 ? wide_ : narrow_; }
  void apply(Width width, const std::wstring& folder = L"") {
    com::applyTable(view(width), table(width, folder));
  }
  void undo(Width width, const std::wstring& folder = L"") {
    com::undoTable(view(width), table(width, folder));
  }
  // Everything that the table says stands in the registry as that width sees it.
  bool whole(Width width, const std::wstring& folder = L"") {
    for (const com::RegistryEntry& entry : table(width, folder).entries) {
      const bool there = entry.value ? view(width).read(entry.key, entry.name) == entry.value
                                     : view(width).exists(entry.key);
      if (!there) return false;
    }
    return true;
  }
  static Width other(Width width) { return width == Width::Bits64 ? Width::Bits32 : Width::Bits64; }

  ScratchRoot root_{L"widths"};
  View wide_{root_, Width::Bits64};
  View narrow_{root_, Width::Bits32};
  Contents empty_;
};

constexpr Width kWidths[] = {Width::Bits64, Width::Bits32};

INSTANTIATE_TEST_SUITE_P(Of, Widths,
                         testing::Values(Library{"Control", &ocx::controlTable},
                                         Library{"Store", &storecom::storeTable}),
                         [](const auto& given) { return given.param.name; });

TEST_P(Widths, EachAloneLeavesNothing) {
  for (const Width width : kWidths) {
    apply(width);
    EXPECT_TRUE(whole(width));
    undo(width);
    EXPECT_EQ(root_.contents(), empty_);
  }
}

// Both orders of registering, both of unregistering.
TEST_P(Widths, OneGoneLeavesTheOtherWhole) {
  for (const Width first : kWidths) {
    for (const Width gone : kWidths) {
      apply(first);
      apply(other(first));
      undo(gone);
      EXPECT_TRUE(whole(other(gone)));
      for (const com::RegistryEntry& entry : table(gone).entries) {
        if (entry.key.ends_with(L"InprocServer32")) {
          EXPECT_FALSE(view(gone).exists(entry.key));
        }
      }
      undo(other(gone));
      EXPECT_EQ(root_.contents(), empty_);
    }
  }
}

TEST_P(Widths, MayBeAppliedAndUndoneTwice) {
  for (const Width first : kWidths) {
    apply(first);
    apply(first);
    apply(other(first));
    apply(first);
    apply(other(first));
    undo(first);
    undo(first);
    EXPECT_TRUE(whole(other(first)));
    undo(other(first));
    undo(other(first));
    EXPECT_EQ(root_.contents(), empty_);
  }
}

TEST_P(Widths, BringBackWhatStoodThereBeforeTheFirst) {
  const com::RegistryTable names = table(Width::Bits64);
  for (const com::RegistryEntry& entry : names.entries) {
    if (entry.value && entry.key.starts_with(L"Tessaline")) {
      root_.putText(entry.key, entry.name, L"an older one");
    }
  }
  const Contents before = root_.contents();
  for (const Width first : kWidths) {
    apply(first);
    apply(other(first));
    undo(first);
    EXPECT_TRUE(whole(other(first)));
    undo(other(first));
    EXPECT_EQ(root_.contents(), before);
  }
}

TEST_P(Widths, ASecondCopyOutlivesTheFirst) {
  for (const Width width : kWidths) {
    apply(other(width));
    apply(width);
    apply(width, L"D:\\copy");
    undo(width);
    EXPECT_TRUE(whole(width, L"D:\\copy"));
    undo(width, L"D:\\copy");
    EXPECT_TRUE(whole(other(width)));
    undo(other(width));
    EXPECT_EQ(root_.contents(), empty_);
  }
}

TEST_P(Widths, ARefusedUndoingCanBeRunAgain) {
  for (const Width width : kWidths) {
    apply(width);
    apply(other(width));
    root_.refuseFrom(0);
    undo(width);
    undo(other(width));
    const int changes = root_.changes();
    for (int refused = 1; refused <= changes; ++refused) {
      apply(width);
      apply(other(width));
      root_.refuseFrom(refused);
      for (const Width each : {width, other(width)}) {
        try {
          undo(each);
        } catch (const com::Error&) {
          EXPECT_GE(root_.changes(), refused);
        }
      }
      root_.accept();
      undo(width);
      undo(other(width));
      ASSERT_EQ(root_.contents(), empty_) << "change " << refused;
    }
  }
}

// A version that knew of no second width kept one journal of everything, in the key that is the
// shared one's now.
class OlderVersion : public Widths {
 protected:
  void registerOlder(Width width) {
    const com::RegistryTable now = table(width);
    std::wstring created = textOf(root_.read(now.journal, L""));
    View& seen = view(width);
    std::vector<std::wstring> missing;
    for (const com::RegistryEntry& entry : now.entries) {
      for (std::size_t end = entry.key.find(L'\\');; end = entry.key.find(L'\\', end + 1)) {
        const std::wstring part = entry.key.substr(0, end);
        if (!seen.exists(part)) {
          seen.create(part);
          created += part + L'\0';
        }
        if (end == std::wstring::npos) break;
      }
      if (!entry.value) continue;
      root_.putText(now.journal, L"+" + entry.key + L"|" + entry.name, L"");
      seen.write(entry.key, entry.name, *entry.value);
    }
    com::RegistryValue list = com::registryText(created);
    list.type = REG_MULTI_SZ;
    root_.write(now.journal, L"", list);
  }

 private:
  static std::wstring textOf(const std::optional<com::RegistryValue>& value) {
    const std::wstring text = value ? com::textOf(*value) : std::wstring();
    return text.empty() ? text : text + L'\0';
  }
};

INSTANTIATE_TEST_SUITE_P(Of, OlderVersion,
                         testing::Values(Library{"Control", &ocx::controlTable},
                                         Library{"Store", &storecom::storeTable}),
                         [](const auto& given) { return given.param.name; });

TEST_P(OlderVersion, IsReplacedAndUndone) {
  for (const Width width : kWidths) {
    registerOlder(width);
    apply(width);
    EXPECT_TRUE(whole(width));
    undo(width);
    EXPECT_EQ(root_.contents(), empty_);
  }
}

TEST_P(OlderVersion, IsUndoneWithoutHavingBeenReplaced) {
  for (const Width width : kWidths) {
    registerOlder(width);
    undo(width);
    EXPECT_EQ(root_.contents(), empty_);
  }
}

TEST_P(OlderVersion, OfBothWidthsIsReplacedOneByOne) {
  for (const Width first : kWidths) {
    // The folder in common is the last one's.
    registerOlder(first);
    registerOlder(other(first));
    ASSERT_TRUE(whole(other(first)));
    apply(first);
    undo(first);
    EXPECT_TRUE(whole(other(first)));
    apply(other(first));
    undo(other(first));
    EXPECT_EQ(root_.contents(), empty_);
  }
}

TEST_P(OlderVersion, OfTheOtherWidthStaysWhole) {
  for (const Width width : kWidths) {
    registerOlder(other(width));
    apply(width);
    undo(width);
    EXPECT_TRUE(whole(other(width)));
    undo(other(width));
    EXPECT_EQ(root_.contents(), empty_);
  }
}

// Nothing is known of it but that this very file stands there.
TEST_P(OlderVersion, WithoutAJournalIsAdopted) {
  for (const Width width : kWidths) {
    registerOlder(width);
    const std::wstring journal = table(width).journal;
    for (const std::wstring& name : root_.names(journal)) root_.erase(journal, name);
    root_.eraseIfEmpty(journal);
    apply(width);
    undo(width);
    EXPECT_EQ(root_.contents(), empty_);
  }
}

}  // namespace
