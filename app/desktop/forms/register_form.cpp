#include "app/desktop/forms/register_form.h"

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>

#include "app/desktop/basics/text.h"
#include "app/desktop/grid/grid_panel.h"
#include "app/registers/register_screen.h"

namespace app::desktop {
namespace {

using registers::RegisterInput;
using registers::TfmRegister;

constexpr int kMargin = 10;
constexpr int kSpacing = 8;
constexpr int kLineSpacing = 6;
constexpr int kMemoLines = 3;
constexpr std::size_t kShortText = 4;
constexpr std::size_t kCodeText = 15;  // up to here an input is too narrow to say what it is for
// Of the room: the list, the record.
constexpr int kListShare = 2;
constexpr int kRecordShare = 3;

QString NameOf(const host::Component& component) { return ToQt(component.Name()); }

template <typename Widget>
Widget* Named(const host::Component& component, QWidget* parent) {
  auto* widget = new Widget(parent);
  widget->setObjectName(NameOf(component));
  return widget;
}

/// A caption to the left of an input; the binder writes the component's own into it.
QLabel* CaptionFor(const host::Control& control, QWidget* input) {
  auto* label = new QLabel(ToQt(control.Caption()), input->parentWidget());
  label->setObjectName(QStringLiteral("cap") + NameOf(control));
  label->setBuddy(input);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return label;
}

/// The record's inputs from top to bottom: captions in the first column, inputs in the second. Numbers and other short
/// inputs stand two in a line, check boxes side by side.
class RecordLayout {
 public:
  explicit RecordLayout(QWidget* parent) : parent_(parent), grid_(new QGridLayout(parent)) {
    grid_->setContentsMargins(kMargin, 0, kMargin, 0);
    grid_->setHorizontalSpacing(kSpacing);
    grid_->setVerticalSpacing(kLineSpacing);
    grid_->setColumnStretch(kWide, 1);
  }

  void Add(const RegisterInput& input) {
    const host::Control& control = input.Control();
    if (const auto* box = dynamic_cast<const host::CheckBox*>(&control)) {
      AddBox(*box, ToQt(input.Description().help));
      return;
    }
    const auto& edit = dynamic_cast<const host::Edit&>(control);
    boxes_ = nullptr;
    QWidget* widget = edit.Kind() == host::EditKind::kMemo ? Memo(edit) : Line(edit, input);
    widget->setToolTip(ToQt(input.Description().help));
    if (Pairs(edit, input)) return AddPaired(edit, widget);
    pair_open_ = false;
    QLabel* caption = CaptionFor(edit, widget);
    if (edit.Kind() == host::EditKind::kMemo) caption->setAlignment(Qt::AlignRight | Qt::AlignTop);
    grid_->addWidget(caption, row_, kCaption);
    if (input.Label() != nullptr) {
      grid_->addWidget(widget, row_, kInput);
      auto* text = Named<QLabel>(*input.Label(), parent_);
      text->setTextFormat(Qt::PlainText);
      grid_->addWidget(text, row_, kSecondCaption, 1, kWide - kSecondCaption + 1);
    } else {
      grid_->addWidget(widget, row_, kInput, 1, kWide - kInput + 1);
    }
    ++row_;
  }

  void Add(const host::Grid& grid) {
    auto* panel = Named<GridPanel>(grid, parent_);
    QLabel* caption = CaptionFor(grid, panel);
    caption->setAlignment(Qt::AlignRight | Qt::AlignTop);
    grid_->addWidget(caption, row_, kCaption);
    grid_->addWidget(panel, row_, kInput, 1, kWide - kInput + 1);
    grid_->setRowStretch(row_++, 1);
    stretched_ = true;
  }

  void Finish() {
    if (!stretched_) grid_->setRowStretch(row_, 1);
  }

 private:
  enum Column { kCaption, kInput, kSecondCaption, kSecondInput, kWide };

  bool Pairs(const host::Edit& edit, const RegisterInput& input) const {
    if (input.Label() != nullptr || edit.Kind() == host::EditKind::kMemo) return false;
    const bool is_key = row_ == 0;
    const bool is_short = edit.MaxLength() > 0 && edit.MaxLength() <= kShortText;
    return edit.Kind() != host::EditKind::kText || (is_short && !is_key);
  }

  void AddPaired(const host::Edit& edit, QWidget* widget) {
    const int column = pair_open_ ? kSecondCaption : kCaption;
    const int row = pair_open_ ? row_ - 1 : row_++;
    grid_->addWidget(CaptionFor(edit, widget), row, column);
    grid_->addWidget(widget, row, column + 1);
    pair_open_ = !pair_open_;
  }

  void AddBox(const host::CheckBox& box, const QString& help) {
    pair_open_ = false;
    if (boxes_ == nullptr) {
      boxes_ = new QHBoxLayout();
      boxes_->setSpacing(3 * kSpacing);
      boxes_->addStretch();
      grid_->addLayout(boxes_, row_++, kInput, 1, kWide - kInput + 1);
    }
    auto* widget = Named<QCheckBox>(box, parent_);
    widget->setToolTip(help);
    boxes_->insertWidget(boxes_->count() - 1, widget);
  }

  QWidget* Line(const host::Edit& edit, const RegisterInput& input) {
    auto* line = Named<QLineEdit>(edit, parent_);
    const bool wide = edit.MaxLength() == 0 || edit.MaxLength() > kCodeText;
    if (edit.Kind() == host::EditKind::kText && wide) line->setPlaceholderText(ToQt(input.Description().help));
    return line;
  }

  QWidget* Memo(const host::Edit& edit) {
    auto* memo = Named<QPlainTextEdit>(edit, parent_);
    memo->setTabChangesFocus(true);
    memo->setMinimumHeight(kMemoLines * memo->fontMetrics().lineSpacing());
    grid_->setRowStretch(row_, 1);
    stretched_ = true;
    return memo;
  }

  QWidget* parent_;
  QGridLayout* grid_;
  QHBoxLayout* boxes_ = nullptr;
  int row_ = 0;
  bool pair_open_ = false;
  bool stretched_ = false;
};

/// Scrolls up and down only: it is never narrower than what it holds.
class TallArea : public QScrollArea {
 public:
  explicit TallArea(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
  }
  QSize minimumSizeHint() const override {
    const int content = widget() == nullptr ? 0 : widget()->minimumSizeHint().width();
    return {content + verticalScrollBar()->sizeHint().width(), QScrollArea::minimumSizeHint().height()};
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(watched, event);
  }
};

QWidget* ListSide(const TfmRegister& screen, QWidget* parent) {
  auto* side = new QWidget(parent);
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kSpacing);
  auto* search = new QHBoxLayout();
  search->setSpacing(kSpacing);
  auto* line = Named<QLineEdit>(screen.EdtBusca, side);
  line->setPlaceholderText(QStringLiteral("Código ou parte do nome"));
  search->addWidget(CaptionFor(screen.EdtBusca, line));
  search->addWidget(line, 1);
  search->addWidget(Named<QLabel>(screen.LblBusca, side));
  layout->addLayout(search);
  auto* list = Named<GridPanel>(screen.GrdLista, side);
  list->SetFilterOnRequest();
  layout->addWidget(list, 1);
  return side;
}

QWidget* RecordSide(const TfmRegister& screen, QWidget* parent) {
  auto* area = new TallArea(parent);
  auto* record = new QWidget(area);
  RecordLayout layout(record);
  for (const auto& input : screen.Inputs()) layout.Add(*input);
  if (screen.Detail() != nullptr) layout.Add(screen.Detail()->Grid());
  layout.Finish();
  area->setWidget(record);
  // The focus moves by the desk's word, of which the area hears nothing.
  QObject::connect(qApp, &QApplication::focusChanged, area, [area](QWidget* /*before*/, QWidget* now) {
    if (now != nullptr && area->widget()->isAncestorOf(now)) area->ensureWidgetVisible(now);
  });
  return area;
}

QLayout* ButtonBar(const TfmRegister& screen, QWidget* parent) {
  auto* bar = new QHBoxLayout();
  bar->setSpacing(kSpacing);
  for (const host::Button* button :
       {&screen.BtnIncluir, &screen.BtnGravar, &screen.BtnExcluir, &screen.BtnImportar, &screen.BtnExportar}) {
    bar->addWidget(Named<QPushButton>(*button, parent));
  }
  bar->addStretch();
  bar->addWidget(Named<QPushButton>(screen.BtnFechar, parent));
  return bar;
}

}  // namespace

std::unique_ptr<QWidget> NewRegisterForm(const host::Screen& screen) {
  const auto* shown = dynamic_cast<const TfmRegister*>(&screen);
  if (shown == nullptr) return nullptr;
  auto form = std::make_unique<QWidget>();
  auto* layout = new QVBoxLayout(form.get());
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->setSpacing(kSpacing);
  auto* sides = new QSplitter(Qt::Horizontal, form.get());
  sides->setChildrenCollapsible(false);
  sides->addWidget(ListSide(*shown, sides));
  sides->addWidget(RecordSide(*shown, sides));
  sides->setStretchFactor(0, kListShare);
  sides->setStretchFactor(1, kRecordShare);
  constexpr int kAnyWidth = 200;  // only the proportion counts
  sides->setSizes({kListShare * kAnyWidth, kRecordShare * kAnyWidth});
  layout->addWidget(sides, 1);
  layout->addLayout(ButtonBar(*shown, form.get()));
  return form;
}

}  // namespace app::desktop
