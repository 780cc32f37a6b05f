// What the control's registration consists of.
#pragma once

#include <string>

#include "com/Registration.h"

namespace ocx {

inline constexpr const wchar_t* kProgId = L"Tessaline.Ctr_OrgPriseCharge";
inline constexpr const wchar_t* kVersionedProgId = L"Tessaline.Ctr_OrgPriseCharge.1";
inline constexpr const wchar_t* kUserType = L"Organismes de prise en charge";

// Recompose on resize, cannot link inside, inside out, activate when visible, set client site
// first.
inline constexpr DWORD kMiscStatus = 131473;

// `file` is the full path of the library of that width.
com::RegistryTable controlTable(const std::wstring& file, com::Width width = com::kOwnWidth);

}  // namespace ocx
