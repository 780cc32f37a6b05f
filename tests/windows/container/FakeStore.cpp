#include "tests/windows/container/FakeStore.h"

#include <oleauto.h>

#include <algorithm>
#include <utility>

#include "tests/windows/container/BoxWatcher.h"

namespace container {

using Microsoft::WRL::ComPtr;
using State = std::shared_ptr<FakeStoreState>;

namespace {

constexpr HRESULT kNoSuchRecord = static_cast<HRESULT>(0x8004000B);

std::vector<std::wstring> split(const std::wstring& text, wchar_t mark) {
  std::vector<std::wstring> parts(1);
  for (const wchar_t c : text) {
    if (c == mark)
      parts.emplace_back();
    else
      parts.back() += c;
  }
  return parts;
}

std::wstring textOf(const VARIANT& value) {
  VARIANT copy;
  VariantInit(&copy);
  std::wstring text;
  if (SUCCEEDED(VariantChangeType(&copy, const_cast<VARIANT*>(&value), 0, VT_BSTR)) &&
      copy.bstrVal != nullptr)
    text.assign(copy.bstrVal, SysStringLen(copy.bstrVal));
  VariantClear(&copy);
  return text;
}

// What an answer holds of a record: its key (0) or the first value of an attribute.
std::wstring column(const std::wstring& key, const std::wstring& record, size_t number) {
  if (number == 0) return key;
  const std::vector<std::wstring> attributes = split(record, kAttributeMark);
  return number > attributes.size() ? L"" : split(attributes[number - 1], kValueMark)[0];
}

// One "AVEC field operator value" of a sentence.
struct Condition {
  size_t attribute = 1;
  std::wstring wanted;
  bool prefix = false;
  bool atLeast = false;

  bool holds(const std::wstring& key, const std::wstring& record) const {
    const std::wstring value = column(key, record, attribute);
    if (atLeast)
      return value.size() == wanted.size() ? value >= wanted : value.size() > wanted.size();
    return prefix ? value.starts_with(wanted) : value == wanted;
  }
};

// Numbers stand for themselves; every name that the control uses but one is that of attribute 1.
size_t attributeNamed(const std::wstring& field) {
  if (field == L"@ID") return 0;
  if (field == L"CodAssoActivite") return 2;
  return iswdigit(field[0]) != 0 ? std::stoul(field) : 1;
}

std::vector<Condition> conditionsOf(const std::wstring& sentence) {
  static const std::wstring kWith = L" AVEC ";
  std::vector<Condition> all;
  for (size_t at = sentence.find(kWith); at != std::wstring::npos;
       at = sentence.find(kWith, at + 1)) {
    const size_t field = at + kWith.size();
    const size_t operation = sentence.find(L' ', field) + 1;
    const size_t open = sentence.find(L'"', operation);
    size_t close = sentence.find(L'"', open + 1);
    while (close != std::wstring::npos && close + 1 < sentence.size() &&
           sentence[close + 1] != L' ')
      close = sentence.find(L'"', close + 1);
    Condition made;
    made.attribute = attributeNamed(sentence.substr(field, operation - 1 - field));
    made.atLeast = sentence.compare(operation, 2, L">=") == 0;
    made.wanted = sentence.substr(open + 1, close - open - 1);
    made.prefix = made.wanted.ends_with(L"]");
    if (made.prefix) made.wanted.pop_back();
    all.push_back(std::move(made));
  }
  return all;
}

void setText(VARIANT* result, const std::wstring& text) {
  if (result == nullptr) return;
  VariantInit(result);
  result->vt = VT_BSTR;
  result->bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

// One late-bound object: a handful of names, each a call with its arguments in order.
class Object : public IDispatch {
 public:
  Object(State state, std::string name) : state_(std::move(state)), name_(std::move(name)) {
    ++state_->alive;
  }
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() {
    --state_->alive;
    state_->releases.push_back(name_);
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) final {
    if (out == nullptr) return E_POINTER;
    *out = id == IID_IUnknown || id == IID_IDispatch ? static_cast<IDispatch*>(this) : nullptr;
    if (*out == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() final { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() final {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) final {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) final { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) final {
    if (count != 1) return E_INVALIDARG;
    const std::vector<const wchar_t*> known = members();
    for (size_t i = 0; i < known.size(); ++i) {
      if (lstrcmpiW(known[i], names[0]) != 0) continue;
      ids[0] = static_cast<DISPID>(i + 1);
      return S_OK;
    }
    ids[0] = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* args,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) final {
    const ComPtr<IDispatch> alive(this);
    const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    exception_ = exception;
    std::vector<std::wstring> texts;
    for (UINT i = args->cArgs; i > 0; --i) texts.push_back(textOf(args->rgvarg[i - 1]));
    const std::size_t noted = state_->calls.size();
    const HRESULT done = call(id, put, texts, result);
    if (SUCCEEDED(done) && result != nullptr && state_->answer && state_->calls.size() > noted) {
      state_->answer(state_->calls.back(), *result);
    }
    return done;
  }

 protected:
  virtual std::vector<const wchar_t*> members() const = 0;
  virtual HRESULT call(DISPID id, bool put, const std::vector<std::wstring>& args,
                       VARIANT* result) = 0;

  FakeStoreState& state() const { return *state_; }
  const State& shared() const { return state_; }

  // Notes the call; a fault becomes what the style says.
  HRESULT note(const std::string& line) {
    state_->calls.push_back(line);
    const HRESULT code = state_->fault ? state_->fault(line) : S_OK;
    return FAILED(code) ? fail(code) : S_OK;
  }

  HRESULT fail(HRESULT code) {
    if (state_->faultStyle == FaultStyle::Hresult || exception_ == nullptr) return code;
    *exception_ = {};
    switch (state_->faultStyle) {
      case FaultStyle::ExceptionWithoutScode:
        exception_->wCode = static_cast<WORD>(code & 0xFFFF);
        break;
      case FaultStyle::DeferredException:
        exception_->pvReserved =
            reinterpret_cast<void*>(static_cast<ULONG_PTR>(static_cast<ULONG>(code)));
        exception_->pfnDeferredFillIn = &Object::fillIn;
        break;
      default:
        exception_->scode = code;
        exception_->bstrDescription = SysAllocString(L"le serveur ne répond pas");
        break;
    }
    return DISP_E_EXCEPTION;
  }

  void give(VARIANT* result, ComPtr<IDispatch> object) {
    if (result == nullptr) return;
    VariantInit(result);
    if (state_->resultStyle == ResultStyle::Unknown) {
      result->vt = VT_UNKNOWN;
      result->punkVal = object.Detach();
    } else if (state_->resultStyle == ResultStyle::ByReference) {
      // The object that is referred to belongs to this one and goes with it.
      lent_.push_back(object);
      lentPointers_.push_back(std::make_unique<IDispatch*>(object.Get()));
      result->vt = VT_DISPATCH | VT_BYREF;
      result->ppdispVal = lentPointers_.back().get();
    } else {
      result->vt = VT_DISPATCH;
      result->pdispVal = object.Detach();
    }
  }

 private:
  static HRESULT STDMETHODCALLTYPE fillIn(EXCEPINFO* exception) {
    const auto code = static_cast<ULONG>(reinterpret_cast<ULONG_PTR>(exception->pvReserved));
    exception->scode = static_cast<SCODE>(code);
    exception->bstrDescription = SysAllocString(L"le serveur ne répond pas");
    return S_OK;
  }

  State state_;
  std::string name_;
  ULONG references_ = 0;
  EXCEPINFO* exception_ = nullptr;
  std::vector<ComPtr<IDispatch>> lent_;
  std::vector<std::unique_ptr<IDispatch*>> lentPointers_;
};

template <class Made, class... Arguments>
ComPtr<IDispatch> make(Arguments&&... arguments) {
  return ComPtr<IDispatch>(new Made(std::forward<Arguments>(arguments)...));
}

class Array final : public Object {
 public:
  Array(State state, std::wstring text)
      : Object(std::move(state), "answer"), text_(std::move(text)) {}
  Array(State state, std::wstring file, std::wstring id, std::wstring text, bool found)
      : Object(std::move(state), "record " + narrow(file) + " " + narrow(id)),
        text_(std::move(text)),
        file_(std::move(file)),
        id_(std::move(id)),
        found_(found) {}

 protected:
  std::vector<const wchar_t*> members() const override {
    if (!state().offersStatus) return {L"DBWrite"};
    return {L"DBWrite", L"Status"};
  }
  HRESULT call(DISPID id, bool put, const std::vector<std::wstring>& args,
               VARIANT* result) override {
    if (id == DISPID_VALUE && put && args.size() == 1) {
      const HRESULT noted = note("PutText " + where());
      if (FAILED(noted)) return noted;
      text_ = args[0];
      return S_OK;
    }
    if (id == DISPID_VALUE && !put && args.empty()) {
      const HRESULT noted = note("GetText " + where());
      if (SUCCEEDED(noted)) setText(result, text_);
      return noted;
    }
    if (id == 1) {
      if (file_.empty()) return fail(E_ACCESSDENIED);
      const HRESULT noted = note("DBWrite " + where());
      if (SUCCEEDED(noted)) state().files[file_][id_] = text_;
      return noted;
    }
    if (id == 2 && state().offersStatus && result != nullptr) {
      VariantInit(result);
      result->vt = VT_I4;
      result->lVal = found_ ? 0 : static_cast<LONG>(kNoSuchRecord);
      return S_OK;
    }
    return DISP_E_MEMBERNOTFOUND;
  }

 private:
  std::string where() const { return file_.empty() ? "answer" : narrow(file_ + L" " + id_); }

  std::wstring text_;
  std::wstring file_;
  std::wstring id_;
  bool found_ = true;
};

class FileObject final : public Object {
 public:
  FileObject(State state, std::wstring name)
      : Object(std::move(state), "file " + narrow(name)), file_(std::move(name)) {}

 protected:
  std::vector<const wchar_t*> members() const override { return {L"ReadRecord", L"DeleteRecord"}; }
  HRESULT call(DISPID id, bool, const std::vector<std::wstring>& args, VARIANT* result) override {
    if (args.size() != 1 || (id != 1 && id != 2)) return DISP_E_BADPARAMCOUNT;
    const std::string where = narrow(file_ + L" " + args[0]);
    const HRESULT noted = note((id == 1 ? "ReadRecord " : "DeleteRecord ") + where);
    if (FAILED(noted)) return noted;
    FakeStoreState::Records& records = state().files[file_];
    if (id == 2) {
      records.erase(args[0]);
      if (result != nullptr) {
        VariantInit(result);
        result->vt = VT_I4;
        result->lVal = 0;
      }
      return S_OK;
    }
    const auto found = records.find(args[0]);
    if (found == records.end() && !state().offersStatus) return fail(kNoSuchRecord);
    give(result, make<Array>(shared(), file_, args[0], found == records.end() ? L"" : found->second,
                             found != records.end()));
    return S_OK;
  }

 private:
  std::wstring file_;
};

class DatabaseObject final : public Object {
 public:
  explicit DatabaseObject(State state) : Object(std::move(state), "database") {}

 protected:
  std::vector<const wchar_t*> members() const override { return {L"OpenFile", L"ExecuteSentence"}; }
  HRESULT call(DISPID id, bool, const std::vector<std::wstring>& args, VARIANT* result) override {
    if (args.size() != 1 || (id != 1 && id != 2)) return DISP_E_BADPARAMCOUNT;
    const std::wstring first = split(args[0], kAttributeMark)[0];
    const HRESULT noted = note(narrow((id == 1 ? L"OpenFile " : L"ExecuteSentence ") + first));
    if (FAILED(noted)) return noted;
    give(result,
         id == 1 ? make<FileObject>(shared(), args[0]) : make<Array>(shared(), select(args[0])));
    return S_OK;
  }

 private:
  // Sorted by attribute 1, then by key.
  std::wstring select(const std::wstring& request) {
    const std::vector<std::wstring> parts = split(request, kAttributeMark);
    if (parts.size() < 3) return L"";
    const std::vector<Condition> conditions = conditionsOf(parts[0]);
    std::vector<std::pair<std::wstring, std::wstring>> found;  // attribute 1, key
    for (const auto& [key, text] : state().files[parts[1]]) {
      const bool holds =
          std::all_of(conditions.begin(), conditions.end(),
                      [&](const Condition& condition) { return condition.holds(key, text); });
      if (holds) found.emplace_back(column(key, text, 1), key);
    }
    std::sort(found.begin(), found.end());
    std::wstring answer;
    for (const auto& [value, key] : found) {
      if (!answer.empty()) answer += kAttributeMark;
      const std::wstring& text = state().files[parts[1]][key];
      bool first = true;
      for (const std::wstring& number : split(parts[2], L' ')) {
        if (!first) answer += kValueMark;
        first = false;
        answer += column(key, text, std::stoul(number));
      }
    }
    return answer;
  }
};

class EntryObject final : public Object {
 public:
  explicit EntryObject(State state) : Object(std::move(state), "entry") {}

 protected:
  std::vector<const wchar_t*> members() const override { return {L"Level"}; }
  HRESULT call(DISPID id, bool put, const std::vector<std::wstring>&, VARIANT* result) override {
    if (id != 1 || put || result == nullptr) return DISP_E_MEMBERNOTFOUND;
    const HRESULT noted = note("Level");
    VariantInit(result);
    result->vt = VT_I4;
    result->lVal = state().rightsLevel;
    return noted;
  }
};

class RightsObject final : public Object {
 public:
  explicit RightsObject(State state) : Object(std::move(state), "rights") {}

 protected:
  std::vector<const wchar_t*> members() const override { return {}; }
  HRESULT call(DISPID id, bool put, const std::vector<std::wstring>& args,
               VARIANT* result) override {
    if (id != DISPID_VALUE || put || args.size() != 1) return DISP_E_MEMBERNOTFOUND;
    const HRESULT noted = note("Right " + narrow(args[0]));
    if (SUCCEEDED(noted)) give(result, make<EntryObject>(shared()));
    return noted;
  }
};

class ClientObject final : public Object {
 public:
  explicit ClientObject(State state) : Object(std::move(state), "client") {}

 protected:
  std::vector<const wchar_t*> members() const override { return {}; }
  HRESULT call(DISPID, bool, const std::vector<std::wstring>&, VARIANT*) override {
    return DISP_E_MEMBERNOTFOUND;
  }
};

}  // namespace

int FakeStoreState::count(const std::string& prefix) const {
  return static_cast<int>(std::count_if(calls.begin(), calls.end(), [&](const std::string& call) {
    return call.starts_with(prefix);
  }));
}

std::wstring FakeStoreState::attribute(const std::wstring& file, const std::wstring& id,
                                       int number) const {
  const auto records = files.find(file);
  if (records == files.end()) return L"";
  const auto record = records->second.find(id);
  if (record == records->second.end()) return L"";
  const std::vector<std::wstring> parts = split(record->second, kAttributeMark);
  const auto index = static_cast<size_t>(number - 1);
  return index < parts.size() ? parts[index] : L"";
}

FakeStore::FakeStore() : state_(std::make_shared<FakeStoreState>()) {}

ComPtr<IDispatch> FakeStore::client() { return make<ClientObject>(state_); }
ComPtr<IDispatch> FakeStore::database() { return make<DatabaseObject>(state_); }
ComPtr<IDispatch> FakeStore::rights() { return make<RightsObject>(state_); }

void FakeStore::put(const std::wstring& file, const std::wstring& id,
                    const std::vector<std::wstring>& attributes) {
  std::wstring text;
  for (size_t i = 0; i < attributes.size(); ++i) {
    if (i > 0) text += kAttributeMark;
    text += attributes[i];
  }
  state_->files[file][id] = text;
}

void FakeStore::set(const std::wstring& file, const std::wstring& id, size_t number,
                    const std::wstring& text) {
  std::vector<std::wstring> attributes = split(state_->files[file][id], kAttributeMark);
  if (attributes.size() < number) attributes.resize(number);
  attributes[number - 1] = text;
  put(file, id, attributes);
}

namespace {

void fillTables(FakeStore& store, const std::wstring& lastCode) {
  const std::wstring v(1, kValueMark);
  store.put(L"COMPTEUR", L"999", {L"", L"", L"", L"", L"", L"", L"", L"", L"", lastCode});
  store.put(L"TABLES", L"PIECESRENOUV",
            {L"", L"A" + v + L"B", L"Avis d'imposition" + v + L"Bulletin de pension"});
  store.put(L"TABLES", L"STATORGCHG", {L"", L"01" + v + L"02", L"Régime général" + v + L"Autres"});
  store.put(L"ASSOCIATION", L"100", {L"ASSOCIATION DE TEST"});
  store.put(L"ACTIVITES", L"100P01", activity(L"Aide ménagère", L"100"));
  store.put(L"PARAMBORDORGCHG", L"1", {L"Nom", L"30"});
  store.put(L"PERIODESPAIE", L"1", {L"202601"});
}

// Complete, so that it can be saved: principal, in hours at a rate, with an activity and a slip
// parameter.
std::vector<std::wstring> body(const std::wstring& acronym, const std::wstring& name) {
  std::vector<std::wstring> attributes(attribut::ParamSelecOrgChg);
  const std::pair<size_t, const wchar_t*> set[] = {{attribut::InterlocDossOrgChg, L"Mme Durand"},
                                                   {attribut::InterlocFactOrgChg, L"M. Petit"},
                                                   {attribut::PeriodFactOrgChg, L"M"},
                                                   {attribut::TypeOrgChg, L"P"},
                                                   {attribut::PlafondOrg, L"3"},
                                                   {attribut::RenouvOrgChg, L"0"},
                                                   {attribut::AttribOrgChg, L"H"},
                                                   {attribut::DemAccordOrgChg, L"0"},
                                                   {attribut::TypeBordOrgChg, L"I"},
                                                   {attribut::Entite, L"100"},
                                                   {attribut::CodActSelect, L"100P01"},
                                                   {attribut::NbExemplOrgChg, L"1"},
                                                   {attribut::IncidCompta, L"0"},
                                                   {attribut::GestionExclu, L"0"},
                                                   {attribut::FactAnticip, L"0"},
                                                   {attribut::DesFacture, L"Prise en charge"},
                                                   {attribut::DateRembOrgChg, L"21186"},
                                                   {attribut::TxRembOrgChg, L"2000"},
                                                   {attribut::TxRembMajOrgChg, L"2500"},
                                                   {attribut::PrestServOrgChg, L"1500"},
                                                   {attribut::Bareme, L"R"},
                                                   {attribut::GestPartBenef, L"M"},
                                                   {attribut::Abonnement, L"0"},
                                                   {attribut::AjusTarif, L"0"},
                                                   {attribut::CoutGlobal, L"0"},
                                                   {attribut::ParamSelecOrgChg, L"1"}};
  attributes[0] = acronym;
  attributes[1] = name;
  for (const auto& [number, text] : set) attributes[number - 1] = text;
  return attributes;
}

}  // namespace

std::vector<std::wstring> activity(const std::wstring& label, const std::wstring& entity,
                                   const std::wstring& type, const std::wstring& service) {
  std::vector<std::wstring> attributes(13);
  attributes[0] = label;
  attributes[1] = entity;
  attributes[11] = type;
  attributes[12] = service;
  return attributes;
}

void fillWithThreeBodies(FakeStore& store) {
  fillTables(store, L"003");
  store.put(L"ORGPRISECHARGE", L"001", body(L"CAF", L"Caisse d'allocations familiales"));
  store.put(L"ORGPRISECHARGE", L"002", body(L"CARSAT", L"Caisse d'assurance retraite"));
  store.put(L"ORGPRISECHARGE", L"003", body(L"MSA", L"Mutualité sociale agricole"));
  store.put(L"ACCORD", L"7001", {L"002"});
  store.put(L"DEMANDACC", L"9001", {L"003"});
}

void fillWithOneBody(FakeStore& store) {
  fillTables(store, L"001");
  store.put(L"ORGPRISECHARGE", L"001", body(L"CAF", L"Caisse d'allocations familiales"));
}

}  // namespace container
