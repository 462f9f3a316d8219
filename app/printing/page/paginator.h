// Puts strips on pages.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "app/printing/page/strip.h"

namespace app::printing {

/// What the paper leaves for strips, in millimetres.
struct PageFrame {
  double height = 0;  // of the paper
  double top = 0;     // margin
  double bottom = 0;  // margin
};

/// What stands at the head or foot of a page, by its number (from 1) and the number of pages.
using Furniture = std::function<Strip(std::size_t page, std::size_t pages)>;

/// Strips that stay together are held back until the last of them is there. A strip higher than a page is cut between
/// its lines.
class Paginator : public StripSink {
 public:
  /// `pages` is how many there will be, as far as anybody knows: the head of a page may tell it.
  Paginator(const PageFrame& frame, Furniture header, Furniture footer, std::size_t pages);

  void Add(Strip strip) override;
  void SetRepeated(std::shared_ptr<const Strip> strip) override { repeated_ = std::move(strip); }
  void NewPage() override;
  void BeginTogether() override { ++together_; }
  void EndTogether() override;

  /// Puts head and foot on every page. Returns false when they turned out higher or lower than they were with the
  /// number of pages first given; then all is to be done again with the number that Pages() has now.
  bool Finish();
  std::vector<Page>& Pages() { return pages_; }

 private:
  struct Heights {
    double header = 0;
    double footer = 0;
  };

  void OpenPage();
  void BreakPage(const std::shared_ptr<const Strip>& repeated);
  void Flush();
  void Flow(Strip strip);
  void Put(Strip strip);
  double Rest() const { return bottom_ - y_; }

  PageFrame frame_;
  Furniture header_;
  Furniture footer_;
  std::size_t expected_;
  std::vector<Page> pages_;
  std::vector<Heights> heights_;
  double top_ = 0;
  double y_ = 0;
  double bottom_ = 0;
  bool used_ = false;  // more than a repeated head stands on the page
  std::vector<Strip> pending_;
  double pending_height_ = 0;
  int together_ = 0;
  std::shared_ptr<const Strip> repeated_;
};

}  // namespace app::printing
