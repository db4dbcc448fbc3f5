// Why a picture is not shown. Its words stand with the sentences for the user. A plain value; any thread.
#pragma once

#include <cstdint>

namespace quillet {

enum class PictureFault : std::uint8_t {
  kNone,
  kBadAddress,         // the link is no web address, or longer than one may be
  kNotAPicture,        // the link shows nothing: no picture, no page of a known service, no video
  kPrivateAddress,     // it leads to this computer or its own network, which is never asked
  kHostNotFound,       // nobody knows the host's address
  kRefused,            // the host does not take the connection
  kNotSecure,          // no secure connection: the certificate, or what both sides speak
  kLessSecure,         // led from https to http, or to something that is no web address
  kTooManyRedirects,   // led on and on
  kTooSlow,            // nothing came for too long, or all of it takes too long
  kCutShort,           // the connection ended in the middle
  kNetwork,            // any other fault of the connection
  kAnsweredWithError,  // the host has no such thing (404), or does not give it
  kEmpty,              // the host's answer is empty
  kTooManyBytes,       // the file is larger than it may be
  kNoPictureInPage,    // a web page without a picture that could be told as its own
  kUnknownFormat,      // no picture, or one of a format that is not shown
  kTooManyPixels,      // larger than is decoded
  kDamaged,            // the file is a picture's, and its content is broken
  kOutOfMemory
};

}  // namespace quillet
