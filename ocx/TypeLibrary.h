// The type library inside the control's own file.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include "ocx/TessalineTypes.h"

namespace ocx {

const GUID& libraryId();

// com::Error when the file's type library cannot be read.
Microsoft::WRL::ComPtr<ITypeInfo> interfaceInfo();
Microsoft::WRL::ComPtr<ITypeInfo> classInfo();

}  // namespace ocx
