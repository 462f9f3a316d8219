#include "writeoff/scale_frames.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "host/decimal.h"
#include "host/scale_digits.h"

namespace writeoff {
namespace {

constexpr char kStx = '\x02';
constexpr char kEtx = '\x03';
constexpr std::size_t kFrameCharacters = 10;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool EndsFrame(char c) { return c == '\r' || c == '\n' || c == kEtx; }

struct Piece {
  std::string text;
  bool begun = false;  // its beginning was heard
  bool ended = false;  // and its end
};

class Splitter {
 public:
  // Without end marks anywhere the beginning of the next frame ends the one before.
  explicit Splitter(std::string_view received) : marked_(std::any_of(received.begin(), received.end(), EndsFrame)) {
    for (const char c : received) Step(c);
    Close(false);
  }

  std::vector<Piece> Take() { return std::move(pieces_); }

 private:
  void Step(char c) {
    if (EndsFrame(c)) {
      Close(true);
      next_is_begun_ = true;
    } else if (c == kStx) {
      Close(!marked_);
      next_is_begun_ = true;
      Add(c);
    } else {
      Add(c);
    }
  }
  void Add(char c) {
    if (open_.text.empty()) open_.begun = next_is_begun_;
    open_.text += c;
  }
  void Close(bool ended) {
    open_.ended = ended;
    if (!open_.text.empty()) pieces_.push_back(std::move(open_));
    open_ = Piece();
    next_is_begun_ = false;
  }

  bool marked_;
  bool next_is_begun_ = false;
  Piece open_;
  std::vector<Piece> pieces_;
};

// A frame that nothing marks can be told from one that broke off only by having all its characters.
bool CanStandAlone(const Piece& piece) {
  const bool framed = piece.text.front() == kStx;
  return piece.ended || !framed || piece.text.size() >= kFrameCharacters;
}

}  // namespace

bool AnswerEnded(std::string_view received) {
  const auto figure = std::find_if(received.begin(), received.end(), IsDigit);
  return std::any_of(figure, received.end(), [](char c) { return c == '\r' || c == kEtx; });
}

std::string NewestFrame(std::string_view received) {
  const std::vector<Piece> pieces = Splitter(received).Take();
  // Of a scale that never ends a frame, each may have broken off before the next began.
  const bool marked = std::any_of(received.begin(), received.end(), EndsFrame);
  if (pieces.size() == 1) {
    return CanStandAlone(pieces.front()) ? pieces.front().text.substr(0, kFrameCharacters) : std::string();
  }
  const auto newest = std::find_if(pieces.rbegin(), pieces.rend(), [marked](const Piece& piece) {
    return piece.begun && piece.ended && (marked || piece.text.size() >= kFrameCharacters);
  });
  return newest == pieces.rend() ? std::string() : newest->text.substr(0, kFrameCharacters);
}

std::optional<double> WeightOfDigits(std::string_view frame, int decimals) {
  const auto digits = host::ScaleDigits(frame, decimals);
  if (!digits) return std::nullopt;
  return host::ParseTyped(*digits);
}

}  // namespace writeoff
