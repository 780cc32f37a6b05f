#include "com/RegistrationJournal.h"

#include <algorithm>
#include <set>

namespace com {

namespace {

// As it stands in the registry: the default value lists the created keys. A value named "=key|name"
// holds the former contents, "+key|name" says that there were none, "!key|name" what was written.
constexpr wchar_t kFormer = L'=';
constexpr wchar_t kNone = L'+';
constexpr wchar_t kWritten = L'!';
constexpr const wchar_t* kFile = L"File";

bool isBelow(std::wstring_view key, std::wstring_view folder) {
  return key == folder || (key.starts_with(folder) && key[folder.size()] == L'\\');
}

RegistryValue listValue(const std::vector<std::wstring>& texts) {
  std::wstring all;
  for (const std::wstring& text : texts) {
    all += text;
    all += L'\0';
  }
  RegistryValue value = registryText(all);
  value.type = REG_MULTI_SZ;
  return value;
}

std::vector<std::wstring> listOf(const RegistryValue& value) {
  std::vector<std::wstring> texts;
  std::wstring all = textOf(value);
  while (!all.empty()) {
    const std::size_t end = all.find(L'\0');
    texts.push_back(all.substr(0, end));
    all.erase(0, end == std::wstring::npos ? end : end + 1);
  }
  return texts;
}

Journal readJournal(RegistryRoot& root, const std::wstring& key) {
  Journal journal;
  if (!root.exists(key)) return journal;
  for (const std::wstring& name : root.names(key)) {
    const std::optional<RegistryValue> value = root.read(key, name);
    if (!value) continue;
    const std::size_t bar = name.rfind(L'|');
    if (name.empty()) {
      journal.created = listOf(*value);
    } else if (name == kFile) {
      journal.file = textOf(*value);
    } else if (bar != std::wstring::npos) {
      const RegistryPlace place{name.substr(1, bar - 1), name.substr(bar + 1)};
      if (name.front() == kWritten) {
        journal.written[place] = *value;
      } else {
        journal.former[place] = name.front() == kFormer ? value : std::nullopt;
      }
    }
  }
  return journal;
}

std::map<std::wstring, RegistryValue> valuesOf(const Journal& journal) {
  const auto named = [](wchar_t mark, const RegistryPlace& place) {
    return mark + place.first + L"|" + place.second;
  };
  std::map<std::wstring, RegistryValue> values{{L"", listValue(journal.created)}};
  if (!journal.file.empty()) values[kFile] = registryText(journal.file);
  for (const auto& [place, former] : journal.former) {
    values[named(former ? kFormer : kNone, place)] = former.value_or(RegistryValue{REG_NONE, {}});
  }
  for (const auto& [place, written] : journal.written) values[named(kWritten, place)] = written;
  return values;
}

// The file goes last: without it nobody would know whose journal is left after a refusal.
void removeJournal(RegistryRoot& root, const std::wstring& key) {
  if (!root.exists(key)) return;
  for (const std::wstring& name : root.names(key)) {
    if (name != kFile) root.erase(key, name);
  }
  root.erase(key, kFile);
  root.eraseIfEmpty(key);
}

// What a refusal has left of a journal that was being removed.
bool isBlank(const Journal& journal) {
  return journal.created.empty() && journal.former.empty() && journal.file.empty();
}

void writeJournal(RegistryRoot& root, const std::wstring& key, const Journal& journal) {
  const std::map<std::wstring, RegistryValue> values = valuesOf(journal);
  if (!root.exists(key)) root.create(key);
  for (const auto& [name, value] : values) root.write(key, name, value);
  for (const std::wstring& name : root.names(key)) {
    if (!values.contains(name)) root.erase(key, name);
  }
}

// The part of a journal that `wanted` holds for, and the rest.
template <class Wanted>
Journal take(Journal& from, const Wanted& wanted) {
  Journal taken;
  std::copy_if(from.created.begin(), from.created.end(), std::back_inserter(taken.created), wanted);
  std::erase_if(from.created, wanted);
  for (auto at = from.former.begin(); at != from.former.end();) {
    if (!wanted(at->first.first)) {
      ++at;
      continue;
    }
    taken.former.insert(*at);
    at = from.former.erase(at);
  }
  return taken;
}

std::set<std::wstring> platformsIn(const Journal& journal) {
  std::set<std::wstring> found;
  for (const wchar_t* platform : kPlatforms) {
    const auto named = [platform](const auto& entry) {
      return isOfPlatform(entry.first.first, platform);
    };
    if (std::any_of(journal.former.begin(), journal.former.end(), named)) found.insert(platform);
  }
  return found;
}

void takeApart(Journals& journals) {
  const std::set<std::wstring> platforms = platformsIn(journals.shared);
  const Journal all = take(journals.shared, [](const std::wstring& key) { return !isShared(key); });
  for (const std::wstring& platform : platforms) {
    if (journals.own.contains(platform)) continue;
    Journal rest = all;
    for (const std::wstring other : kPlatforms) {
      if (other != platform) {
        take(rest, [other](const std::wstring& key) { return isOfPlatform(key, other); });
      }
    }
    journals.own[platform] = std::move(rest);
  }
}

std::wstring ownKey(const std::wstring& key, const std::wstring& platform) {
  return key + L"\\" + platform;
}

}  // namespace

bool isOfPlatform(std::wstring_view key, std::wstring_view platform) {
  const std::wstring end = L"\\" + std::wstring(platform);
  return isBelow(key, L"TypeLib") && key.ends_with(end);
}

bool isShared(std::wstring_view key) {
  return !isBelow(key, L"CLSID") && !isBelow(key, L"Interface") &&
         !isOfPlatform(key, kPlatforms[0]) && !isOfPlatform(key, kPlatforms[1]);
}

Journals readJournals(RegistryRoot& root, const std::wstring& key) {
  Journals journals;
  journals.shared = readJournal(root, key);
  for (const wchar_t* platform : kPlatforms) {
    Journal own = readJournal(root, ownKey(key, platform));
    if (!isBlank(own)) journals.own[platform] = std::move(own);
  }
  takeApart(journals);
  return journals;
}

// The shared one comes last: it is what an older version's parts are taken from.
void writeJournals(RegistryRoot& root, const std::wstring& key, const Journals& journals) {
  if (!journals.own.empty() && !root.exists(key)) root.create(key);
  for (const wchar_t* platform : kPlatforms) {
    const auto own = journals.own.find(platform);
    if (own != journals.own.end()) {
      writeJournal(root, ownKey(key, platform), own->second);
    } else {
      removeJournal(root, ownKey(key, platform));
    }
  }
  if (journals.own.empty()) {
    removeJournal(root, key);
  } else {
    writeJournal(root, key, journals.shared);
  }
}

}  // namespace com
