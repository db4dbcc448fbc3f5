#include "bbs/automation/push_pieces.h"

#include <algorithm>
#include <unordered_set>

#include "bbs/user_id.h"
#include "core/charset.h"

namespace quillet {
namespace {

// A break where one would break by hand is worth leaving one of so many parts of a line empty.
constexpr int kPartsOfLine = 3;
constexpr int kWidest = 2;

// A push line of 78 columns holds the mark, the id, this text, and at its end address and time.
constexpr int kColumnsBesideId = 45;

constexpr std::u16string_view kClosing = u"，。、；：！？」』）】》〉］｝〕﹞﹚﹜”…‥—～．,.;:!?)]}";
constexpr std::u16string_view kOpening = u"「『（【《〈［｛〔﹝﹙﹛“([{";

enum class Kind { kPlain, kBlank, kLineBreak, kInvisible, kUnknown };

struct Character {
  Kind kind = Kind::kPlain;
  char16_t unit = 0;      // of kPlain and kBlank, as it is pushed
  int columns = 0;        // 0 for what is not pushed
  std::size_t start = 0;  // in the text
  std::size_t units = 1;
};

bool IsHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

bool IsLineBreak(char16_t unit) {
  return (unit >= u'\n' && unit <= u'\r') || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

// Joiners, marks of direction and the like: nobody misses them.
bool IsInvisible(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || (unit >= 0x200B && unit <= 0x200F) ||
         (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2060 && unit <= 0x206F) ||
         (unit >= 0xFE00 && unit <= 0xFE0F) || unit == 0xAD || unit == 0xFEFF;
}

// Columns of a visible character; 0 when the BBS has none such.
int ColumnsOf(char16_t unit) {
  if (unit < 0x80) return 1;
  const std::string big5 = ToBig5({&unit, 1});
  const auto byte = [&big5](std::size_t index) { return static_cast<unsigned char>(big5[index]); };
  return big5.size() == 2 && byte(0) > 0x80 && byte(0) < 0xFF && byte(1) >= 0x40 ? 2 : 0;
}

Character CharacterAt(std::u16string_view text, std::size_t at) {
  const char16_t unit = text[at];
  Character character{.unit = unit, .start = at};
  if (IsHighSurrogate(unit) && at + 1 < text.size() && IsLowSurrogate(text[at + 1])) {
    character.kind = Kind::kUnknown;
    character.units = 2;
  } else if (IsLineBreak(unit)) {
    character.kind = Kind::kLineBreak;
  } else if (unit == u' ' || unit == u'\t' || IsForeignBlank(unit)) {
    character = {.kind = Kind::kBlank, .unit = u' ', .columns = 1, .start = at};
  } else if (IsInvisible(unit)) {
    character.kind = Kind::kInvisible;
  } else {
    character.columns = ColumnsOf(unit);
    if (character.columns == 0) character.kind = Kind::kUnknown;
    if (unit == 0x3000 && character.columns > 0) character.kind = Kind::kBlank;
  }
  return character;
}

bool IsBlank(const Character& character) {
  return character.kind == Kind::kBlank;
}

bool IsOneOf(const Character& character, std::u16string_view units) {
  return units.find(character.unit) != units.npos;
}

// Part of a word, a number or an address, which no break should go through.
bool IsWordPart(const Character& character) {
  return !IsBlank(character) && character.unit < 0x80;
}

// ---- One line of the text

// The characters of the line that starts at `at`, without what is not pushed, and where the next line starts.
struct Line {
  std::vector<Character> characters;
  std::size_t end = 0;
};

// No longer than `columns` and the word behind them need.
Line LineAt(std::u16string_view text, std::size_t at, int columns) {
  Line line;
  int width = 0;
  while (at < text.size() && width <= 2 * columns) {
    const Character character = CharacterAt(text, at);
    at += character.units;
    if (character.kind == Kind::kLineBreak) break;
    if (character.columns == 0) continue;
    width += character.columns;
    line.characters.push_back(character);
  }
  line.end = at;
  return line;
}

// So many of the characters fit.
std::size_t CountThatFit(const std::vector<Character>& characters, int columns) {
  std::size_t count = 0;
  while (count < characters.size() && characters[count].columns <= columns)
    columns -= characters[count++].columns;
  return count;
}

int WidthOf(const std::vector<Character>& characters, std::size_t from, std::size_t to) {
  int width = 0;
  for (std::size_t i = from; i < to; ++i)
    width += characters[i].columns;
  return width;
}

// The word of which the character before and the one at `at` are parts is longer than a line anyway.
bool IsWithinEndlessWord(const std::vector<Character>& characters, std::size_t at, int columns) {
  std::size_t first = at;
  while (first > 0 && IsWordPart(characters[first - 1]))
    --first;
  std::size_t last = at;
  while (last < characters.size() && IsWordPart(characters[last]))
    ++last;
  return WidthOf(characters, first, last) > columns;
}

// What stands around a place, blanks left out; null at the ends of the line.
struct Neighbours {
  const Character* before = nullptr;
  const Character* behind = nullptr;
  bool areApart = false;  // there are blanks between them
};

Neighbours NeighboursOf(const std::vector<Character>& characters, std::size_t at) {
  std::size_t first = at;
  while (first > 0 && IsBlank(characters[first - 1]))
    --first;
  std::size_t last = at;
  while (last < characters.size() && IsBlank(characters[last]))
    ++last;
  return {.before = first > 0 ? &characters[first - 1] : nullptr,
          .behind = last < characters.size() ? &characters[last] : nullptr,
          .areApart = first < last};
}

// A mark stays with what it closes or opens. Blanks at a break vanish, so that what is behind them begins the
// next line.
bool TearsMark(const std::vector<Character>& characters, std::size_t at) {
  const auto [before, behind, areApart] = NeighboursOf(characters, at);
  return (before != nullptr && IsOneOf(*before, kOpening)) ||
         (behind != nullptr && IsOneOf(*behind, kClosing));
}

// Whether a line may end before the character `at`.
bool MayBreak(const std::vector<Character>& characters, std::size_t at, int columns) {
  if (IsWordPart(characters[at - 1]) && IsWordPart(characters[at]))
    return IsWithinEndlessWord(characters, at, columns);
  return !TearsMark(characters, at);
}

// Where one would break by hand: behind a mark, before what a mark opens, and at a blank that stands for a
// mark, as between Chinese words.
bool IsGoodBreak(const std::vector<Character>& characters, std::size_t at) {
  const auto [before, behind, areApart] = NeighboursOf(characters, at);
  if (before == nullptr || behind == nullptr) return true;
  if (!areApart && IsWordPart(*before) && IsWordPart(*behind)) return false;
  if (areApart && !IsWordPart(*before) && !IsWordPart(*behind)) return true;
  return IsOneOf(*before, kClosing) || IsOneOf(*behind, kOpening);
}

// Of a line that does not fit: the number of characters of its first piece. `leading` blanks are no piece.
std::size_t BreakIn(const std::vector<Character>& characters, std::size_t leading, int columns) {
  const std::size_t fitting = CountThatFit(characters, columns);
  const int near = columns - columns / kPartsOfLine;
  std::size_t best = 0;
  for (std::size_t at = fitting; at > leading; --at) {
    if (best != 0 && WidthOf(characters, 0, at) < near) break;
    if (!MayBreak(characters, at, columns)) continue;
    if (IsGoodBreak(characters, at) && WidthOf(characters, 0, at) >= near) return at;
    if (best == 0) best = at;
  }
  if (best != 0) return best;
  // Rather a word in two than a mark alone at the beginning of a line.
  std::size_t whole = fitting;
  while (whole > leading && TearsMark(characters, whole))
    --whole;
  return whole > leading ? whole : fitting;
}

std::size_t CountLeadingBlanks(const std::vector<Character>& characters) {
  const auto word = std::find_if_not(characters.begin(), characters.end(), IsBlank);
  return static_cast<std::size_t>(word - characters.begin());
}

// Behind the piece blanks up to the next word, or up to the line's end and with it, are done.
std::size_t EndOfTaken(std::u16string_view text, std::size_t at) {
  while (at < text.size()) {
    const Character character = CharacterAt(text, at);
    if (character.kind == Kind::kLineBreak) return at + 1;
    if (character.columns > 0 && !IsBlank(character)) break;
    at += character.units;
  }
  return at;
}

PushPiece PieceOf(const std::vector<Character>& characters, std::size_t count) {
  PushPiece piece;
  while (count > 0 && IsBlank(characters[count - 1]))
    --count;
  for (std::size_t i = 0; i < count; ++i)
    piece.text += characters[i].unit;
  piece.columns = WidthOf(characters, 0, count);
  return piece;
}

}  // namespace

std::optional<PushPiece> CutPushPiece(std::u16string_view text, int columns) {
  if (columns < kWidest) return std::nullopt;
  for (std::size_t start = 0; start < text.size();) {
    const auto [characters, end] = LineAt(text, start, columns);
    const std::size_t leading = CountLeadingBlanks(characters);
    if (leading == characters.size()) {
      start = end;
    } else if (WidthOf(characters, 0, leading + 1) > columns) {
      start = characters[leading].start;  // an indentation that leaves no room for anything is none
    } else {
      const bool fits = CountThatFit(characters, columns) == characters.size();
      const std::size_t count = fits ? characters.size() : BreakIn(characters, leading, columns);
      PushPiece piece = PieceOf(characters, count);
      const Character& last = characters[count - 1];
      piece.taken = EndOfTaken(text, last.start + last.units);
      return piece;
    }
  }
  return std::nullopt;
}

std::vector<PushPiece> CutIntoPushes(std::u16string_view text, int columns, std::size_t most) {
  std::vector<PushPiece> pieces;
  while (pieces.size() < most) {
    std::optional<PushPiece> piece = CutPushPiece(text, columns);
    if (!piece) break;
    text.remove_prefix(piece->taken);
    pieces.push_back(*std::move(piece));
  }
  return pieces;
}

int CountPushes(std::u16string_view text, int columns) {
  int count = 0;
  while (const std::optional<PushPiece> piece = CutPushPiece(text, columns)) {
    text.remove_prefix(piece->taken);
    ++count;
  }
  return count;
}

std::u16string UnpushableIn(std::u16string_view text) {
  std::u16string found;
  std::unordered_set<std::u16string_view> seen;
  for (std::size_t at = 0; at < text.size();) {
    const Character character = CharacterAt(text, at);
    const std::u16string_view units = text.substr(at, character.units);
    if (character.kind == Kind::kUnknown && seen.insert(units).second) found += units;
    at += character.units;
  }
  return found;
}

int LikelyPushColumns(std::size_t idLength) {
  return kColumnsBesideId - static_cast<int>(std::min(idLength, kLongestUserId));
}

}  // namespace quillet
