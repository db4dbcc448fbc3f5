// quillet_make_sound [--check] FILE: makes Data/PushUpdated.wav, or ends with 1 when FILE holds other bytes
// than it would make.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "tools/sound/chime.h"
#include "tools/sound/wave_file.h"

namespace {

int Say(const char* format, const char* file) {
  std::fprintf(stderr, format, file);
  return 1;
}

int Check(const char* file, const std::string& made) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return Say("%s cannot be read.\n", file);
  const std::string found{std::istreambuf_iterator<char>(stream), {}};
  return found == made ? 0 : Say("%s is not what this program makes.\n", file);
}

int Write(const char* file, const std::string& made) {
  std::ofstream stream(file, std::ios::binary);
  stream << made << std::flush;
  return stream ? 0 : Say("%s cannot be written.\n", file);
}

}  // namespace

int main(int argc, char** argv) {
  const bool check = argc == 3 && std::string_view(argv[1]) == "--check";
  if (argc != 2 && !check) {
    std::fputs("usage: quillet_make_sound [--check] FILE\n", stderr);
    return 2;
  }
  const std::string made = quillet::WaveFileBytes(quillet::MakeChime(), quillet::kChimeRate);
  return check ? Check(argv[2], made) : Write(argv[1], made);
}
