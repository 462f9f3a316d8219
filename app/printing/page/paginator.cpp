#include "app/printing/page/paginator.h"

#include <cmath>
#include <utility>

#include "app/printing/page/mistake.h"

namespace app::printing {
namespace {

constexpr std::size_t kMostPages = 20'000;
constexpr double kGap = 2;           // between the body and the head or foot of its page
constexpr double kLeastBody = 10;    // what these must leave
constexpr double kLeastPart = 20;    // of a strip that is cut at the foot of a page
constexpr double kTolerance = 0.01;  // of heights that were added up

double WithGap(double height) { return height > 0 ? height + kGap : 0; }

}  // namespace

Paginator::Paginator(const PageFrame& frame, Furniture header, Furniture footer, std::size_t pages)
    : frame_(frame), header_(std::move(header)), footer_(std::move(footer)), expected_(pages) {
  OpenPage();
}

void Paginator::OpenPage() {
  if (pages_.size() >= kMostPages) throw Mistake("o relatório passa de 20.000 páginas");
  pages_.emplace_back();
  const std::size_t number = pages_.size();
  const Heights heights{header_(number, expected_).height, footer_(number, expected_).height};
  heights_.push_back(heights);
  top_ = y_ = frame_.top + WithGap(heights.header);
  bottom_ = frame_.height - frame_.bottom - WithGap(heights.footer);
  if (Rest() < kLeastBody) throw Mistake("o cabeçalho e o rodapé não deixam lugar na página");
  used_ = false;
}

void Paginator::BreakPage(const std::shared_ptr<const Strip>& repeated) {
  OpenPage();
  if (repeated == nullptr) return;
  Put(*repeated);
  used_ = false;
}

void Paginator::Put(Strip strip) {
  MoveItems(std::move(strip.items), y_, pages_.back());
  y_ += strip.height;
  used_ = true;
}

void Paginator::Add(Strip strip) {
  const bool more = strip.keep_with_next || together_ > 0;
  strip.repeated = repeated_;
  pending_height_ += strip.height;
  pending_.push_back(std::move(strip));
  if (!more) Flush();
}

void Paginator::EndTogether() {
  --together_;
  if (together_ == 0 && !pending_.empty() && !pending_.back().keep_with_next) Flush();
}

void Paginator::NewPage() {
  Flush();
  if (used_) BreakPage(nullptr);
}

void Paginator::Flush() {
  if (pending_.empty()) return;
  std::vector<Strip> strips = std::exchange(pending_, {});
  if (used_ && pending_height_ > Rest() + kTolerance) BreakPage(strips.front().repeated);
  pending_height_ = 0;
  for (Strip& strip : strips) Flow(std::move(strip));
}

void Paginator::Flow(Strip strip) {
  const auto leave_out = [&] { return strip.is_space && !used_ && pages_.size() > 1; };
  while (!leave_out() && strip.height > Rest() + kTolerance) {
    // Only what no page could hold is cut, and there where a good part of it has room.
    const bool too_high = strip.height > bottom_ - top_ + kTolerance;
    const bool may_cut = !used_ || (too_high && Rest() >= kLeastPart);
    Strip upper = may_cut ? CutStrip(strip, Rest()) : Strip();
    if (upper.height <= 0 && !used_) break;  // not even a line fits on a page: it runs over the edge
    if (upper.height > 0) Put(std::move(upper));
    BreakPage(strip.repeated);
  }
  if (!leave_out()) Put(std::move(strip));
}

bool Paginator::Finish() {
  Flush();
  if (!used_ && pages_.size() > 1) {  // a new page was begun and nothing came
    pages_.pop_back();
    heights_.pop_back();
  }
  bool same = true;
  for (std::size_t at = 0; at < pages_.size(); ++at) {
    Strip header = header_(at + 1, pages_.size());
    Strip footer = footer_(at + 1, pages_.size());
    same = same && std::fabs(header.height - heights_[at].header) < kTolerance &&
           std::fabs(footer.height - heights_[at].footer) < kTolerance;
    MoveItems(std::move(header.items), frame_.top, pages_[at]);
    MoveItems(std::move(footer.items), frame_.height - frame_.bottom - footer.height, pages_[at]);
  }
  return same;
}

}  // namespace app::printing
