#include "media/page/page_picture.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

const std::string kAddress = "https://x.example/album/page.html?a=b";

std::string PictureOf(std::string_view page, const std::string& charset = {}) {
  return PictureOfPage(page, charset, kAddress);
}

TEST(PagePictureTest, ThePictureThatAPageNamesComesBeforeThoseInIt) {
  EXPECT_EQ(
      PictureOf("<img src='/1.jpg'><META Property='OG:Image' content=' a b.png?x=1&amp;y '><img src=2>"),
      "https://x.example/album/a%20b.png?x=1&y");
  EXPECT_EQ(PictureOf("<meta name=og:image content=//i.example/1><meta property=og:image content=2>"),
            "https://i.example/1");
  EXPECT_EQ(
      PictureOf("<meta property=og:image content='ftp://x.example/1'><meta property=og:image:url content=2>"),
      "https://x.example/album/2");
  EXPECT_EQ(PictureOf("<script>'<meta property=og:image content=1>'</script>"
                      "<!--<meta property=og:image content=2>--><meta property='og:image' content='3"),
            "");
}

TEST(PagePictureTest, ElseTheFirstThatIsNoPartOfThePage) {
  EXPECT_EQ(
      PictureOf("<p><img><img src=''><img src='logo1.jpg'><img src='1.gif'><img src='data:image/jpeg;1'>"
                "<img alt=x SRC='../A1.jpg'><img src='2.jpg'>"),
      "https://x.example/A1.jpg");
  EXPECT_EQ(PictureOf("<base href='http://other.example/b/'><base href='/no/'><img src=1.jpg>"),
            "http://other.example/b/1.jpg");
  EXPECT_EQ(
      PictureOf("<img src='javascript:1'><img src='http://user@x.example/1.jpg'><img src='http://[::1'>"),
      "");
}

TEST(PagePictureTest, APagesCharactersAreReadAsItSays) {
  const std::string big5 = "\xA4\xA4\x31.jpg";
  const std::string whole = "https://x.example/album/%E4%B8%AD1.jpg";
  EXPECT_EQ(PictureOf("<img src='" + big5 + "'>", "Big5"), whole);
  EXPECT_EQ(PictureOf("<meta charset=big5><img src='" + big5 + "'>"), whole);
  EXPECT_EQ(
      PictureOf("<meta http-equiv=Content-Type content='text/html; charset=big5'><img src='" + big5 + "'>"),
      whole);
  for (const std::string first : {"", "x"})
    EXPECT_EQ(
        PictureOf("<meta charset=big5>" + first + std::string(100'000, '\xA4') + "<img src='" + big5 + "'>"),
        whole)
        << "characters over the bounds of what is read at a time";
  EXPECT_EQ(PictureOf("<meta charset=utf-8><img src='\xE4\xB8\xAD\x31.jpg'>"), whole);
  EXPECT_EQ(PictureOf("<meta charset=big5><p>\xA4\xFF\x80<img src=1.jpg>"), "https://x.example/album/1.jpg")
      << "behind what the character set does not have";
  EXPECT_EQ(PictureOf("<img src=1.jpg>", "no-such-thing"), "https://x.example/album/1.jpg");
}

TEST(PagePictureTest, WhatWouldTakeForEverIsCutOff) {
  const std::string picture = "<meta property=og:image content=1>";
  std::string deep, marked = "<a", unnamed;
  for (int i = 0; i < 150'000; ++i) {
    deep += "<b><i>";
    marked += " a" + std::to_string(i);
    unnamed += "</x>";
  }
  for (const std::string& page : {deep + unnamed, marked + ">", std::string(kMostPageBytes, '<'),
                                  std::string(kMostPageBytes, '\0'), std::string(kMostPageBytes, ' ')}) {
    EXPECT_EQ(PictureOf(page + picture), "");
    EXPECT_EQ(PictureOf(picture + page), "https://x.example/album/1");
  }
}

}  // namespace
}  // namespace quillet
