#include "com/Registration.h"

#include <ole2.h>

#include <algorithm>
#include <exception>

#include "com/ComBorder.h"
#include "com/RegistrationJournal.h"

namespace com {

namespace {

bool sameFile(std::wstring_view one, std::wstring_view other) {
  return CompareStringOrdinal(one.data(), static_cast<int>(one.size()), other.data(),
                              static_cast<int>(other.size()), TRUE) == CSTR_EQUAL;
}

// The file that stands in the registry where the table has its own; "" when there is none.
std::wstring registeredFile(RegistryRoot& root, const RegistryTable& table) {
  const RegistryValue own = registryText(table.file);
  for (const RegistryEntry& entry : table.entries) {
    if (isShared(entry.key) || entry.value != own) continue;
    const std::optional<RegistryValue> found = root.read(entry.key, entry.name);
    return found ? textOf(*found) : std::wstring();
  }
  return {};
}

void createMissing(RegistryRoot& root, const std::vector<std::wstring>& keys) {
  for (const std::wstring& key : keys) {
    if (!root.exists(key)) root.create(key);
  }
}

// What a table is about to change, for the case that it is refused half-way.
class Snapshot {
 public:
  Snapshot(RegistryRoot& root, const RegistryTable& table) : root_(root) {
    journals_.push_back(table.journal);
    for (const wchar_t* platform : kPlatforms) {
      journals_.push_back(table.journal + L"\\" + platform);
    }
    for (const std::wstring& key : journals_) {
      noteKey(key);
      if (!root.exists(key)) continue;
      for (const std::wstring& name : root.names(key)) noteValue({key, name});
    }
    for (const RegistryEntry& entry : table.entries) {
      noteKey(entry.key);
      if (entry.value) noteValue({entry.key, entry.name});
    }
  }

  void restore() noexcept {
    try {
      putBack();
    } catch (const Error&) {
      // What refused the table may refuse this too; the journal stays where it could be written.
      return;
    }
  }

 private:
  void noteKey(const std::wstring& key) {
    for (std::size_t end = key.find(L'\\');; end = key.find(L'\\', end + 1)) {
      const std::wstring part = key.substr(0, end);
      if (std::find(missing_.begin(), missing_.end(), part) == missing_.end() &&
          !root_.exists(part)) {
        missing_.push_back(part);
      }
      if (end == std::wstring::npos) return;
    }
  }
  void noteValue(const RegistryPlace& place) {
    values_[place] = root_.read(place.first, place.second);
  }

  void putBack() {
    for (const auto& [place, value] : values_) {
      if (value) {
        root_.write(place.first, place.second, *value);
      } else {
        root_.erase(place.first, place.second);
      }
    }
    for (const std::wstring& key : journals_) {
      if (!root_.exists(key)) continue;
      for (const std::wstring& name : root_.names(key)) {
        if (!values_.contains({key, name})) root_.erase(key, name);
      }
    }
    for (auto key = missing_.rbegin(); key != missing_.rend(); ++key) root_.eraseIfEmpty(*key);
  }

  RegistryRoot& root_;
  std::vector<std::wstring> journals_;
  std::vector<std::wstring> missing_;  // parents first
  std::map<RegistryPlace, std::optional<RegistryValue>> values_;
};

// Notes in the journals what the table is about to change. Where this very file stands already
// without a journal, an older version has written it: nothing of it comes back.
class Noting {
 public:
  Noting(RegistryRoot& root, const RegistryTable& table, Journals& journals)
      : root_(root),
        journals_(journals),
        own_(journals.own[platformOf(table.width)]),
        adopted_(own_.created.empty() && own_.former.empty() &&
                 sameFile(registeredFile(root, table), table.file)) {}

  void note(const RegistryTable& table) {
    noteOlderOther(table);
    own_.file = table.file;
    own_.written.clear();
    for (const RegistryEntry& entry : table.entries) {
      noteKeys(entry.key);
      if (entry.value) noteValue({entry.key, entry.name}, *entry.value);
    }
  }

 private:
  // What stands there in common is an older version's of the other width, which has not noted it.
  void noteOlderOther(const RegistryTable& table) {
    for (auto& [platform, other] : journals_.own) {
      if (&other == &own_ || !other.written.empty()) continue;
      for (const RegistryEntry& entry : table.entries) {
        const auto now = root_.read(entry.key, entry.name);
        if (isShared(entry.key) && entry.value && now) {
          other.written[{entry.key, entry.name}] = *now;
        }
      }
    }
  }

  Journal& journalOf(const std::wstring& key) { return isShared(key) ? journals_.shared : own_; }

  void noteKeys(const std::wstring& key) {
    for (std::size_t end = key.find(L'\\');; end = key.find(L'\\', end + 1)) {
      const std::wstring part = key.substr(0, end);
      std::vector<std::wstring>& created = journalOf(part).created;
      if (std::find(created.begin(), created.end(), part) == created.end() &&
          (adopted_ || !root_.exists(part))) {
        created.push_back(part);
      }
      if (end == std::wstring::npos) return;
    }
  }

  void noteValue(const RegistryPlace& place, const RegistryValue& value) {
    own_.written[place] = value;
    auto& former = journalOf(place.first).former;
    if (former.contains(place)) return;
    former[place] = adopted_ ? std::nullopt : root_.read(place.first, place.second);
  }

  RegistryRoot& root_;
  Journals& journals_;
  Journal& own_;
  bool adopted_;
};

void noteInto(Journals& journals, RegistryRoot& root, const RegistryTable& table) {
  Noting(root, table, journals).note(table);
}

void write(RegistryRoot& root, const RegistryTable& table, const Journals& journals) {
  writeJournals(root, table.journal, journals);
  createMissing(root, journals.shared.created);
  createMissing(root, journals.own.at(platformOf(table.width)).created);
  for (const RegistryEntry& entry : table.entries) {
    if (entry.value) root.write(entry.key, entry.name, *entry.value);
  }
}

// Has somebody else written there since? What an older version wrote is not known: it counts as
// ours.
bool isOurs(RegistryRoot& root, const RegistryPlace& place, const Journal& own) {
  const auto written = own.written.find(place);
  return written == own.written.end() || root.read(place.first, place.second) == written->second;
}

void putBack(RegistryRoot& root, const Journal& before, const Journal& own) {
  for (const auto& [place, former] : before.former) {
    if (!isOurs(root, place, own)) continue;
    if (former) {
      root.write(place.first, place.second, *former);
    } else {
      root.erase(place.first, place.second);
    }
  }
  for (auto key = before.created.rbegin(); key != before.created.rend(); ++key) {
    root.eraseIfEmpty(*key);
  }
}

// Shared values that differ between the widths (the folder) become those of the one that stays.
void handOver(RegistryRoot& root, const Journal& own, const Journal& other) {
  for (const auto& [place, value] : other.written) {
    if (isShared(place.first) && own.written.contains(place) && isOurs(root, place, own)) {
      root.write(place.first, place.second, value);
    }
  }
}

}  // namespace

std::wstring platformOf(Width width) {
  return width == Width::Bits64 ? kPlatforms[0] : kPlatforms[1];
}

void applyTable(RegistryRoot& root, const RegistryTable& table) {
  Snapshot before(root, table);
  Journals journals = readJournals(root, table.journal);
  noteInto(journals, root, table);
  try {
    write(root, table, journals);
  } catch (const Error&) {
    before.restore();
    throw;
  }
}

// The journal goes after everything else, so that a refusal leaves it for the next attempt.
void undoTable(RegistryRoot& root, const RegistryTable& table) {
  Journals journals = readJournals(root, table.journal);
  const std::wstring platform = platformOf(table.width);
  if (journals.own.empty() && root.exists(table.journal)) {
    writeJournals(root, table.journal, {});  // what a refusal has left
    journals = {};
  }
  const auto found = journals.own.find(platform);
  const bool known = found != journals.own.end() && !found->second.file.empty();
  const std::wstring file = known ? found->second.file : registeredFile(root, table);
  if (!sameFile(file, table.file)) return;
  if (!known) {
    noteInto(journals, root, table);
    journals.own[platform].written.clear();
    writeJournals(root, table.journal, journals);
  }
  const Journal own = journals.own[platform];
  journals.own.erase(platform);
  putBack(root, own, own);
  if (journals.own.empty()) {
    putBack(root, journals.shared, own);
  } else {
    handOver(root, own, journals.own.begin()->second);
  }
  writeJournals(root, table.journal, journals);
}

void applyToFirst(const std::vector<RegistryRoot*>& roots, const RegistryTable& table) {
  for (RegistryRoot* root : roots) {
    try {
      applyTable(*root, table);
      return;
    } catch (const Error& refusal) {
      if (refusal.code() != E_ACCESSDENIED || root == roots.back()) throw;
    }
  }
}

void undoInAll(const std::vector<RegistryRoot*>& roots, const RegistryTable& table) {
  std::exception_ptr first;
  for (RegistryRoot* root : roots) {
    try {
      undoTable(*root, table);
    } catch (const Error&) {
      first = first ? first : std::current_exception();
    }
  }
  if (first) std::rethrow_exception(first);
}

namespace {

constexpr const wchar_t* kClasses = L"Software\\Classes";

}  // namespace

void registerLibrary(const RegistryTable& table) {
  WindowsRegistry machine(HKEY_LOCAL_MACHINE, kClasses);
  WindowsRegistry user(HKEY_CURRENT_USER, kClasses);
  applyToFirst({&machine, &user}, table);
}

void unregisterLibrary(const RegistryTable& table) {
  WindowsRegistry machine(HKEY_LOCAL_MACHINE, kClasses);
  WindowsRegistry user(HKEY_CURRENT_USER, kClasses);
  undoInAll({&machine, &user}, table);
}

void installLibrary(bool install, const wchar_t* commandLine, const RegistryTable& table) {
  const std::wstring_view asked = commandLine == nullptr ? L"" : commandLine;
  if (asked.empty()) {
    install ? registerLibrary(table) : unregisterLibrary(table);
  } else if (sameFile(asked, L"user")) {
    WindowsRegistry user(HKEY_CURRENT_USER, kClasses);
    install ? applyTable(user, table) : undoTable(user, table);
  } else {
    throw Error(E_INVALIDARG, "what is to be installed is told by \"user\" or nothing");
  }
}

std::wstring guidText(const GUID& guid) {
  constexpr int kLength = 39;
  std::wstring text(kLength, L'\0');
  text.resize(static_cast<std::size_t>(StringFromGUID2(guid, text.data(), kLength) - 1));
  return text;
}

namespace {

// The type library marshaler of Windows, and the one of IDispatch.
constexpr const wchar_t* kAutomationMarshaler = L"{00020424-0000-0000-C000-000000000046}";
constexpr const wchar_t* kDispatchMarshaler = L"{00020420-0000-0000-C000-000000000046}";

}  // namespace

std::vector<RegistryEntry> typeLibraryEntries(const GUID& library, const std::wstring& version,
                                              const std::wstring& name, const std::wstring& file,
                                              unsigned flags, Width width) {
  const std::wstring key = L"TypeLib\\" + guidText(library) + L"\\" + version;
  const std::wstring folder = file.substr(0, file.find_last_of(L'\\'));
  return {{key, L"", registryText(name)},
          {key + L"\\FLAGS", L"", registryText(std::to_wstring(flags))},
          {key + L"\\0\\" + platformOf(width), L"", registryText(file)},
          {key + L"\\HELPDIR", L"", registryText(folder)}};
}

std::vector<RegistryEntry> interfaceEntries(const GUID& interfaceId, const std::wstring& name,
                                            const GUID& library, const std::wstring& version,
                                            Interface kind) {
  const std::wstring key = L"Interface\\" + guidText(interfaceId);
  const std::wstring marshaler =
      kind == Interface::Dual ? kAutomationMarshaler : kDispatchMarshaler;
  return {{key, L"", registryText(name)},
          {key + L"\\ProxyStubClsid32", L"", registryText(marshaler)},
          {key + L"\\TypeLib", L"", registryText(guidText(library))},
          {key + L"\\TypeLib", L"Version", registryText(version)}};
}

}  // namespace com
