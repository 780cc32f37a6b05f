#include "ocx/Theme.h"

#include "com/Module.h"

namespace ocx {

namespace {

constexpr int kManifestResource = 17;  // in Tessaline.rc, which tells why

bool hostIsThemed() {
  ACTCTX_SECTION_KEYED_DATA found{};
  found.cbSize = sizeof found;
  return FindActCtxSectionStringW(0, nullptr, ACTIVATION_CONTEXT_SECTION_DLL_REDIRECTION,
                                  L"comctl32.dll", &found) != 0;
}

HANDLE contextOfModule() {
  if (!hostIsThemed()) return INVALID_HANDLE_VALUE;
  const std::wstring path = com::modulePath();
  ACTCTXW wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
  wanted.lpSource = path.c_str();
  wanted.lpResourceName = MAKEINTRESOURCEW(kManifestResource);
  wanted.hModule = com::module();
  return CreateActCtxW(&wanted);
}

}  // namespace

Theme::Theme() {
  static const HANDLE context = contextOfModule();
  active_ = context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie_) != 0;
}

Theme::~Theme() {
  if (active_) DeactivateActCtx(0, cookie_);
}

}  // namespace ocx
