#include <gtest/gtest.h>

#include "media/picture_link.h"
#include "media/scraped_image.h"
#include "media/video_link.h"
#include "platform/utf8.h"

namespace quillet {
namespace {

using Texts = std::initializer_list<std::u16string_view>;

const MediaHosts kHosts{.shorteners = {u"one.example", u"two.example", u"", u"four.example"},
                        .photoShort = u"photo.example",
                        .pageShort = u"page.example",
                        .imageShortener = u"at.example",
                        .images = u"main.example",
                        .pagedImages = u"paged.example",
                        .blogImages = u"blog.example",
                        .video = {u"video.example", u"vid.example", {}, {}}};

// `link` is `media` and becomes `rewritten`.
void Expect(LinkMedia media, std::u16string_view link, std::u16string_view rewritten,
            const MediaHosts& hosts = kHosts) {
  std::u16string text(link);
  EXPECT_EQ(ClassifyLink(text, hosts), media) << Utf8FromUtf16(link);
  EXPECT_EQ(text, rewritten) << Utf8FromUtf16(link);
}

void ExpectEach(LinkMedia media, Texts links) {
  for (const std::u16string_view link : links)
    Expect(media, link, link);
}

TEST(PictureLinkTest, EachRuleAnswersInItsTurn) {
  ExpectEach(LinkMedia::kNone, {u"", u"a.jpg", u"http://x.example/a.JPG?b", u"http://x.example/a.jpgx",
                                u"http://x.example/a.jpg/b", u"http://one.example/a.html",
                                u"https://paged.example/a", u"https://photo.example/s/a"});
  ExpectEach(LinkMedia::kPicture,
             {u"http://x.example/a.JpEg", u"http://x.example/a.b.bmp", u"http://x.example/a.png",
              u"http://x.example/a.gif", u"http://x.example/a.jpg?b=c/d.e", u"http://x.example/?a=.jpg&b",
              u"https://i.paged.example/a.jpg", u"http://paged.example/a.jpg",
              u"http://x.example/?https://paged.example/a.jpg", u"https://blog.example/media/a?format=b",
              u"https://vid.example/abc-EFG_123.jpg"});
  ExpectEach(LinkMedia::kShortened,
             {u"https://one.example/a", u"http://two.example/a/b", u"hTTp://fOUR.example/"});
  ExpectEach(LinkMedia::kPicturePage,
             {u"https://photo.example/p/a", u"https://page.example/a", u"https://main.example/a/b"});
  ExpectEach(LinkMedia::kVideo,
             {u"https://vid.example/abc-EFG_123", u"https://video.example/watch?v=abc-EFG_123&a=b.c"});
  constexpr std::u16string_view kRewritten[][2] = {
      {u"http://x.example/a.gIfV", u"http://x.example/a.gIf"},
      {u"https://paged.example/a.gifv", u"https://paged.example/a.gif"},
      {u"https://paged.example/a.png", u"https://i.paged.example/a.png"},
      {u"HTTPS://Paged.Example/a.jpg?b", u"HTTPS://i.Paged.Example/a.jpg?b"},
      {u"https://at.example/a", u"https://at.example/a@.jpg"},
      {u"https://main.example/a", u"https://main.example/a.jpg"},
      {u"https://I.main.example/a.", u"https://I.main.example/a..jpg"},
      {u"http://m.main.example/a", u"http://m.main.example/a.jpg"}};
  for (const auto& [link, rewritten] : kRewritten)
    Expect(LinkMedia::kPicture, link, rewritten);
}

TEST(PictureLinkTest, OnlyAWholeHostIsAService) {
  ExpectEach(LinkMedia::kNone,
             {u"https://notmain.example/a", u"https://main.example.evil.example/a",
              u"https://www.main.example/a", u"https://main.example@evil.example/a",
              u"https://evil.example\\@main.example/a", u"https://main.example:8443/a",
              u"https://main.example?/a", u"https://main%2Eexample/a", u"https://mäin.example/a",
              u"https://evil.example/https://main.example/a", u"ftp://main.example/a", u"https:///a"});
  Expect(LinkMedia::kNone, u"https://i./a", u"https://i./a", {});
}

TEST(PictureLinkTest, VideosAreToldByTheirIdAlone) {
  static constexpr std::u16string_view kId = u"abc-EFG_123";
  const auto idBetween = [](std::u16string_view before, std::u16string_view behind) {
    return std::u16string(VideoId(std::u16string(before).append(kId).append(behind), kHosts.video));
  };
  constexpr std::u16string_view kVideos[][2] = {{u"https://vid.example/", u"?t=1"},
                                                {u"https://VID.example/", u"/"},
                                                {u"https://m.video.example/shorts/", u"#a"},
                                                {u"http://www.video.example/watch?a=b&v=", u"&v=c"},
                                                {u"https://video.example/watch?&=&v=", u""}};
  for (const auto& [before, behind] : kVideos)
    EXPECT_EQ(idBetween(before, behind), kId) << Utf8FromUtf16(before);
  for (const std::u16string_view before :
       {u"https://video.example/watch?v=c&v=", u"https://video.example/watch?av=",
        u"https://video.example/watch?a#v=", u"https://video.example/Watch?v=", u"https://video.example/",
        u"https://vid.example/a/", u"https://vid.example/4", u"https://www.vid.example/",
        u"https://x.example/watch?v="})
    EXPECT_EQ(idBetween(before, u""), u"") << Utf8FromUtf16(before);
  EXPECT_EQ(VideoId(u"https://vid.example/abc-EFG_12%", kHosts.video), u"");
}

TEST(ScrapedImageTest, PicturesAreTakenAndPartsOfThePageAreNot) {
  const std::u16string manyDigits(5000, u'9');
  for (const std::u16string& name : std::initializer_list<std::u16string>{
           u"1.jpg", u"Photo.jpg", u"200x200.jpg", u"100x100", u"0x50", u"1x", u"x1", u"x" + manyDigits,
           manyDigits + u"x2", u"1x" + manyDigits, u"4294967297x1", u"head_1"})
    EXPECT_TRUE(AcceptScrapedImage(u"https://x.example/" + name)) << Utf8FromUtf16(name);
  for (const std::u16string& name : std::initializer_list<std::u16string>{
           u"",           u".JPG",     u"photo.jpg",    u"photo.JPG",
           u"100x90.jpg", u"a100X90b", u"x1000x1000x9", u"00000000000000099x0101",
           u"1-SSS",      u"Ad_1",     u"Icon1",        u"1menu",
           u"1logo",      u"1button",  u"1code",        u"1left",
           u"1right",     u"group1",   u"1down",        u"1.png",
           u"gif/1",      u"core/1",   u"paste/1",      u"data:1"})
    EXPECT_FALSE(AcceptScrapedImage(u"https://x.example/" + name)) << Utf8FromUtf16(name);
  EXPECT_TRUE(AcceptScrapedImage(u"http://x.example/icon/BigPic/logo.jpg"));
  EXPECT_FALSE(AcceptScrapedImage(u"http://x.example/BigPic/a.png"));
  EXPECT_FALSE(AcceptScrapedImage(u""));
}

}  // namespace
}  // namespace quillet
