// An object of the system's component model, let go of at its end. Windows sources only.
#pragma once

#include <memory>
#include <windows.h>
// After windows.h, which it needs.
#include <unknwn.h>

namespace quillet {

struct ReleaseObject {
  void operator()(IUnknown* object) const { object->Release(); }
};

template <class Interface>
using ComPointer = std::unique_ptr<Interface, ReleaseObject>;

}  // namespace quillet
