#include "media/page/page_picture.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <libxml/HTMLparser.h>
#include <libxml/uri.h>
#include <memory>
#include <mutex>

#include "media/scraped_image.h"
#include "platform/code_page.h"
#include "platform/utf8.h"
#include "platform/web_address.h"

namespace quillet {
namespace {

static_assert(kMostPageBytes < INT_MAX);

// What an attribute may hold; a longer one is passed over.
constexpr std::size_t kLongestValue = 2 * kLongestWebAddress;

struct XmlFree {
  void operator()(xmlChar* text) const { xmlFree(text); }
};
using XmlText = std::unique_ptr<xmlChar, XmlFree>;

const xmlChar* XmlOf(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

std::string_view TextOf(const xmlChar* text) {
  return text == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(text));
}

bool IsName(std::string_view text, std::string_view name) {
  return text.size() == name.size() &&
         xmlStrncasecmp(reinterpret_cast<const xmlChar*>(text.data()),
                        reinterpret_cast<const xmlChar*>(name.data()), static_cast<int>(name.size())) == 0;
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n\f";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Of a pair of "name, value, name, value, null", as the parser tells an element's attributes.
std::string_view Attribute(const xmlChar** attributes, std::string_view name) {
  if (attributes == nullptr) return {};
  for (; attributes[0] != nullptr; attributes += 2)
    if (TextOf(attributes[0]) == name) {
      const std::string_view value = Trimmed(TextOf(attributes[1]));
      return value.size() <= kLongestValue ? value : std::string_view();
    }
  return {};
}

// Collects while the page is read; reading ends once nothing better can come.
class PageReader {
 public:
  explicit PageReader(const std::string& address) : base_(address) {}

  void Begin(std::string_view name, const xmlChar** attributes) {
    if (name == "meta")
      ReadMeta(attributes);
    else if (name == "base")
      ReadBase(Attribute(attributes, "href"));
    else if (name == "img" && first_.empty())
      ReadImage(attributes);
  }

  bool IsDone() const { return !named_.empty(); }
  const std::string& Picture() const { return named_.empty() ? first_ : named_; }

 private:
  static bool NamesPicture(std::string_view property) {
    constexpr std::array<std::string_view, 3> kNames = {"og:image", "og:image:secure_url", "og:image:url"};
    for (const std::string_view name : kNames)
      if (IsName(property, name)) return true;
    return false;
  }

  void ReadMeta(const xmlChar** attributes) {
    if (!named_.empty()) return;
    if (NamesPicture(Attribute(attributes, "property")) || NamesPicture(Attribute(attributes, "name")))
      named_ = Whole(Attribute(attributes, "content"));
  }

  void ReadBase(std::string_view href) {
    if (hasBase_ || href.empty()) return;
    hasBase_ = true;
    if (std::string whole = Whole(href); !whole.empty()) base_ = std::move(whole);
  }

  void ReadImage(const xmlChar** attributes) {
    const std::string whole = Whole(Attribute(attributes, "src"));
    if (AcceptScrapedImage(Utf16FromUtf8(whole).value_or(std::u16string()))) first_ = whole;
  }

  // Empty for what is no web address in the end.
  std::string Whole(std::string_view reference) const {
    if (reference.empty()) return {};
    // Blanks and the like, which the rules for addresses do not know and pages do.
    static const std::string kKept = "%:/?#[]@!$&'()*+,;=~";
    const std::string written(reference);
    const XmlText escaped(xmlURIEscapeStr(XmlOf(written), XmlOf(kKept)));
    const XmlText whole(xmlBuildURI(escaped.get(), XmlOf(base_)));
    return OpenableAddress(Utf16FromUtf8(TextOf(whole.get())).value_or(std::u16string()));
  }

  std::string base_;
  bool hasBase_ = false;
  std::string named_, first_;
};

// The parser compares each attribute of an element with all before it, and each end with all that is open:
// what would keep it busy for minutes is cut off.
constexpr std::size_t kLongestTag = 16 * 1024;
constexpr std::ptrdiff_t kMostMarksInTag = 1000;
constexpr int kDeepest = 1000;

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Between attributes stands one of these.
bool IsMark(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '/' || c == '"' || c == '\'';
}

bool IsOverlong(std::string_view tag) {
  return tag.size() > kLongestTag && std::count_if(tag.begin(), tag.end(), IsMark) > kMostMarksInTag;
}

// In time that grows with the page alone: of what ends with the same ">" the first beginning is the longest.
// One without an end is cut off too: half an address leads elsewhere.
std::string_view WithoutBadTags(std::string_view page) {
  std::size_t end = 0;
  for (std::size_t begin = page.find('<'); begin != page.npos; begin = page.find('<', begin + 1)) {
    if (begin < end || begin + 1 == page.size() || !IsLetter(page[begin + 1])) continue;
    end = page.find('>', begin);
    if (end == page.npos || IsOverlong(page.substr(begin, end - begin))) return page.substr(0, begin);
  }
  return page;
}

struct Parsing {
  htmlParserCtxtPtr parser;
  PageReader& reader;
  int depth = 0;
};

void OnBegin(void* user, const xmlChar* name, const xmlChar** attributes) {
  auto& parsing = *static_cast<Parsing*>(user);
  parsing.reader.Begin(TextOf(name), attributes);
  if (parsing.reader.IsDone() || ++parsing.depth > kDeepest) xmlStopParser(parsing.parser);
}

void OnEnd(void* user, const xmlChar* /*name*/) {
  --static_cast<Parsing*>(user)->depth;
}

void OnError(void* /*user*/, xmlErrorPtr /*error*/) {}

// While it lives the library says nothing on this thread, and notes where it cannot read a page's characters.
class CharacterWatch {
 public:
  CharacterWatch() : before_(xmlStructuredError), contextBefore_(xmlStructuredErrorContext) {
    xmlSetStructuredErrorFunc(this, [](void* watch, xmlErrorPtr error) {
      if (error->code == XML_I18N_CONV_FAILED || error->code == XML_IO_ENCODER)
        static_cast<CharacterWatch*>(watch)->hasFailed_ = true;
    });
  }
  ~CharacterWatch() { xmlSetStructuredErrorFunc(contextBefore_, before_); }
  CharacterWatch(const CharacterWatch&) = delete;
  CharacterWatch& operator=(const CharacterWatch&) = delete;

  bool HasFailed() const { return hasFailed_; }

 private:
  xmlStructuredErrorFunc before_;
  void* contextBefore_;
  bool hasFailed_ = false;
};

// The library keeps them for all threads, for as long as the program runs.
void AddCodePages() {
  static std::once_flag added;
  std::call_once(added, [] {
    xmlInitParser();
    for (const CodePage& page : CodePages())
      xmlNewCharEncodingHandler(page.name, page.decode, nullptr);
  });
}

struct ParserFree {
  void operator()(htmlParserCtxtPtr parser) const { htmlFreeParserCtxt(parser); }
};

// False where it ended because of characters that the character set does not have. No name of one: the page's
// own word counts.
bool Read(std::string_view page, const char* charset, PageReader& reader) {
  AddCodePages();
  const std::unique_ptr<htmlParserCtxt, ParserFree> parser(htmlNewParserCtxt());
  if (!parser) return true;
  Parsing parsing{parser.get(), reader};
  htmlSAXHandler handler{};
  handler.initialized = XML_SAX2_MAGIC;
  handler.startElement = OnBegin;
  handler.endElement = OnEnd;
  handler.serror = OnError;
  *parser->sax = handler;
  parser->userData = &parsing;
  const CharacterWatch characters;
  htmlCtxtReadMemory(parser.get(), page.data(), static_cast<int>(page.size()), nullptr, charset,
                     HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET);
  return !characters.HasFailed();
}

}  // namespace

std::string PictureOfPage(std::string_view page, const std::string& charset, const std::string& address) {
  // What every byte is a character of: tags and nearly all addresses read the same by it.
  constexpr const char* kAnyBytes = "ISO-8859-1";
  const std::string_view read = WithoutBadTags(page.substr(0, kMostPageBytes));
  PageReader reader(address);
  if (Read(read, charset.empty() ? nullptr : charset.c_str(), reader) || reader.IsDone())
    return reader.Picture();
  PageReader byBytes(address);
  Read(read, kAnyBytes, byBytes);
  return byBytes.Picture();
}

}  // namespace quillet
