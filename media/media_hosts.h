// The sites whose links show pictures and videos, by what each of them is. The caller makes one from his
// configuration and hands it to the functions of this folder. A plain value.
#pragma once

#include <array>
#include <string>

namespace quillet {

// In all of these where nothing else is said: a host name in lower case without "www."; an empty one matches
// no host.
struct VideoHosts {
  std::u16string host;       // its pages, at HOST/watch?v=ID and HOST/shorts/ID; at "www." and "m." of it too
  std::u16string shortHost;  // HOST/ID
  // Addresses in which "{id}" stands for a video's; empty: there is none.
  std::u16string thumbnail;  // its still picture
  std::u16string info;       // JSON: "title" a text, "duration" (or "length_seconds") a number, where known
};

struct MediaHosts {
  std::array<std::u16string, 4> shorteners;  // lead to an address that nobody can tell from the link
  std::u16string photoShort;                 // short links to the pages of a photo-sharing site, HOST/p/ID
  std::u16string pageShort;                  // short links to the pages of an image host
  std::u16string imageShortener;             // gives the image itself for a link with "@.jpg" behind it
  std::u16string images;                     // the main image host: HOST/ID, at "i." and "m." of it too
  std::u16string pagedImages;  // shows a page for an image's address, and the image at "i." of it
  std::u16string blogImages;   // the images of a micro-blogging service
  VideoHosts video;
};

}  // namespace quillet
