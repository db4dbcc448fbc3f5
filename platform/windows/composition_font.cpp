#include "platform/composition_font.h"

#include <algorithm>
#include <windows.h>
// After windows.h, which it needs.
#include <imm.h>

namespace quillet {

bool SetCompositionFont(std::uintptr_t window, const std::u16string& face, int height) {
  const auto handle = reinterpret_cast<HWND>(window);
  const HIMC context = ImmGetContext(handle);
  if (context == nullptr) return false;
  LOGFONTW font{};
  font.lfHeight = height;
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  font.lfOutPrecision = OUT_STROKE_PRECIS;
  font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
  // Ends with a NUL.
  std::copy_n(face.begin(), std::min<std::size_t>(face.size(), LF_FACESIZE - 1), font.lfFaceName);
  const bool isTaken = ImmSetCompositionFontW(context, &font) != 0;
  ImmReleaseContext(handle, context);
  return isTaken;
}

}  // namespace quillet
