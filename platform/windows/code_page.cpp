// The code pages that web pages in Chinese, Japanese and Korean were written in, in this system's calls.
#include "platform/code_page.h"

#include <array>
#include <windows.h>

namespace quillet {
namespace {

// One character, which some code pages tell by two units. The count of UTF-8 bytes made, or a negative.
template <UINT kCodePage>
int DecodeCharacter(const unsigned char* in, int size, unsigned char* out, int room) {
  std::array<wchar_t, 2> units{};
  const int count = MultiByteToWideChar(kCodePage, MB_ERR_INVALID_CHARS, reinterpret_cast<const char*>(in),
                                        size, units.data(), static_cast<int>(units.size()));
  if (count == 0) return kNoSuchCharacter;
  // With no room at all the call would tell how much it takes.
  const int made = room == 0 ? 0
                             : WideCharToMultiByte(CP_UTF8, 0, units.data(), count,
                                                   reinterpret_cast<char*>(out), room, nullptr, nullptr);
  return made == 0 ? kNoRoomForMore : made;
}

template <UINT kCodePage>
int Decode(unsigned char* out, int* outSize, const unsigned char* in, int* inSize) {
  int taken = 0, made = 0, outcome = 0;
  while (outcome == 0 && taken < *inSize) {
    const int size = IsDBCSLeadByteEx(kCodePage, in[taken]) ? 2 : 1;
    const int bytes = taken + size > *inSize
                          ? kHalfACharacter
                          : DecodeCharacter<kCodePage>(in + taken, size, out + made, *outSize - made);
    if (bytes < 0) {
      outcome = bytes;
    } else {
      taken += size;
      made += bytes;
    }
  }
  *inSize = taken;
  *outSize = made;
  return outcome;
}

}  // namespace

std::span<const CodePage> CodePages() {
  static constexpr CodePage kPages[] = {
      {"BIG5", Decode<950>},          {"BIG5-HKSCS", Decode<950>}, {"GB2312", Decode<936>},
      {"GBK", Decode<936>},           {"SHIFT_JIS", Decode<932>},  {"EUC-KR", Decode<949>},
      {"WINDOWS-1252", Decode<1252>},
  };
  return kPages;
}

}  // namespace quillet
