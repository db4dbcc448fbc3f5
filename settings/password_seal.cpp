#include "settings/password_seal.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <optional>

namespace quillet {
namespace {

constexpr std::size_t kBlockLength = 16;
constexpr std::size_t kTagLength = kBlockLength - kSealedPasswordLength;
constexpr std::u16string_view kDigits = u"0123456789abcdef";

// Drawn at random once. Another key would make every remembered password unreadable.
constexpr std::array<unsigned char, 16> kKey = {0xCB, 0x49, 0x55, 0x74, 0x58, 0x58, 0x26, 0x03,
                                                0x2D, 0x96, 0x68, 0x53, 0x65, 0x4A, 0xF4, 0x30};

// The password's bytes, zeros, then the tag. Wiped when it goes.
struct Block {
  std::array<unsigned char, kBlockLength> bytes{};

  Block() = default;
  Block(const Block&) = delete;
  Block& operator=(const Block&) = delete;
  ~Block() { OPENSSL_cleanse(bytes.data(), bytes.size()); }
};

enum class Direction : int { kDecrypt = 0, kEncrypt = 1 };

bool Crypt(Direction direction, const Block& from, Block& to) {
  const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                EVP_CIPHER_CTX_free);
  int length = 0;
  return context &&
         EVP_CipherInit_ex(context.get(), EVP_aes_128_ecb(), nullptr, kKey.data(), nullptr,
                           static_cast<int>(direction)) == 1 &&
         EVP_CIPHER_CTX_set_padding(context.get(), 0) == 1 &&
         EVP_CipherUpdate(context.get(), to.bytes.data(), &length, from.bytes.data(),
                          static_cast<int>(kBlockLength)) == 1 &&
         length == static_cast<int>(kBlockLength);
}

std::u16string ToDigits(const Block& block) {
  std::u16string text;
  for (const unsigned char byte : block.bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xF];
  }
  return text;
}

bool FromDigits(std::u16string_view text, Block& block) {
  if (text.size() != 2 * kBlockLength) return false;
  for (std::size_t i = 0; i < kBlockLength; ++i) {
    const std::size_t high = kDigits.find(text[2 * i]);
    const std::size_t low = kDigits.find(text[2 * i + 1]);
    if (high == std::u16string_view::npos || low == std::u16string_view::npos) return false;
    block.bytes[i] = static_cast<unsigned char>(high << 4 | low);
  }
  return true;
}

}  // namespace

std::u16string SealPassword(std::u16string_view password, std::string_view tag) {
  if (tag.size() != kTagLength) return {};
  Block plain;
  std::transform(password.begin(), password.begin() + std::min(password.size(), kSealedPasswordLength),
                 plain.bytes.begin(), [](char16_t unit) { return static_cast<unsigned char>(unit & 0xFF); });
  std::copy(tag.begin(), tag.end(), plain.bytes.begin() + kSealedPasswordLength);
  Block sealed;
  return Crypt(Direction::kEncrypt, plain, sealed) ? ToDigits(sealed) : std::u16string();
}

std::u16string UnsealPassword(std::u16string_view sealed, std::string_view tag) {
  Block block;
  Block plain;
  if (tag.size() != kTagLength || !FromDigits(sealed, block) || !Crypt(Direction::kDecrypt, block, plain))
    return {};
  const auto tagStart = plain.bytes.begin() + kSealedPasswordLength;
  const bool sealedHere = std::equal(
      tagStart, plain.bytes.end(), tag.begin(),
      [](unsigned char byte, char expected) { return byte == static_cast<unsigned char>(expected); });
  if (!sealedHere) return {};
  return {plain.bytes.begin(), std::find(plain.bytes.begin(), tagStart, 0)};
}

}  // namespace quillet
