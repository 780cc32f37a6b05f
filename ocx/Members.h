// Late-bound calls of the control's members.
#pragma once

#include <ole2.h>

#include "ocx/TessalineTypes.h"

namespace ocx {

// DISPIDs of the members that are no plain procedures.
inline constexpr DISPID kSortir = 1;
inline constexpr DISPID kDroits = 2;
inline constexpr DISPID kClient = 31;
inline constexpr DISPID kDatabase = 32;
inline constexpr DISPID kAjoutLists = 51;

// IDispatch::Invoke over the dual interface: arguments are unwrapped, converted and written back; a
// member that fails gives DISP_E_EXCEPTION with what it left in IErrorInfo.
HRESULT invokeMember(_Ctr_OrgPriseCharge& control, DISPID member, WORD how, DISPPARAMS* parameters,
                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument);

}  // namespace ocx
