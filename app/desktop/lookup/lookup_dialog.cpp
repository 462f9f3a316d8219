#include "app/desktop/lookup/lookup_dialog.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <exception>
#include <functional>
#include <numeric>
#include <vector>

#include "app/desktop/basics/text.h"
#include "app/desktop/lookup/lookup_model.h"

namespace app::desktop {
namespace {

constexpr int kPause = 50;         // milliseconds without a key, after which what was typed is searched
constexpr int kWidestColumn = 45;  // characters
constexpr int kNarrowestColumn = 5;

/// The table of the rows found. It leaves the keyboard to the search line.
class OfferView : public QTableView {
 public:
  explicit OfferView(LookupModel& model) {
    setObjectName(QStringLiteral("TabOferta"));
    setModel(&model);
    setFocusPolicy(Qt::NoFocus);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
    nothing_ = new QLabel(QStringLiteral("Nada encontrado"), viewport());
    nothing_->setObjectName(QStringLiteral("LblNada"));
    nothing_->setAlignment(Qt::AlignCenter);
  }

  int CurrentRow() const { return currentIndex().isValid() ? currentIndex().row() : -1; }

  void StandOn(int row) {
    if (row < 0 || row >= model()->rowCount()) return;
    setCurrentIndex(model()->index(row, 0));
    scrollTo(currentIndex());
  }

  /// Moves the cursor; rows that were not read yet are.
  void Move(int rows) {
    const int wanted = std::max(0, CurrentRow() + rows);
    if (wanted >= model()->rowCount() - 1 && model()->canFetchMore({})) model()->fetchMore({});
    StandOn(std::min(wanted, model()->rowCount() - 1));
  }
  int RowsInSight() const { return std::max(1, viewport()->height() / verticalHeader()->defaultSectionSize() - 1); }

  void ShowWhetherEmpty() {
    nothing_->setVisible(model()->rowCount() == 0);
    nothing_->resize(viewport()->size());
  }

  /// Columns as wide as what they show, within limits; the second one, which says most, takes the rest of the room.
  void FitColumns() {
    const int character = fontMetrics().horizontalAdvance(QLatin1Char('n'));
    std::vector<int> widths;
    for (int column = 0; column < model()->columnCount(); ++column) {
      const int wanted = std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column)) + character;
      widths.push_back(std::clamp(wanted, kNarrowestColumn * character, kWidestColumn * character));
    }
    const int spare = viewport()->width() - std::accumulate(widths.begin(), widths.end(), 0);
    if (spare > 0 && !widths.empty()) widths[widths.size() > 1 ? 1 : 0] += spare;
    for (std::size_t i = 0; i < widths.size(); ++i) setColumnWidth(static_cast<int>(i), widths[i]);
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QTableView::resizeEvent(event);
    FitColumns();
    ShowWhetherEmpty();
  }

 private:
  QLabel* nothing_;
};

class LookupDialog : public QDialog {
 public:
  LookupDialog(QWidget* parent, const QString& title, LookupOffer& offer, const QString& start)
      : QDialog(parent),
        offer_(offer),
        model_(offer, [this](const std::function<void()>& read) { Guarded(read); }),
        line_(new QLineEdit(start)),
        view_(new OfferView(model_)),
        count_(new QLabel),
        choose_(new QPushButton(QStringLiteral("&Escolher"))) {
    setObjectName(QStringLiteral("DlgPesquisa"));
    setWindowTitle(title);
    setModal(true);
    LayOut();
    pause_.setSingleShot(true);
    pause_.setInterval(kPause);
    connect(&pause_, &QTimer::timeout, this, [this] { Guarded([this] { Search(); }); });
    connect(line_, &QLineEdit::textChanged, this, [this] { pause_.start(); });
    connect(view_, &QTableView::doubleClicked, this, [this] { Pick(); });
    connect(choose_, &QPushButton::clicked, this, [this] { Pick(); });
    connect(&model_, &QAbstractItemModel::rowsInserted, this, [this] { ShowCount(); });
    line_->installEventFilter(this);
    line_->selectAll();
    Search();
    // What stood in the input leads nowhere, a number just given to a new order for one: all rows rather than none.
    if (model_.rowCount() > 0 || start.isEmpty()) return;
    line_->clear();
    Search();
  }

  /// The row picked, if any. Throws what ended the dialog.
  std::optional<host::LookupRow> Wait() {
    exec();
    if (failure_) std::rethrow_exception(failure_);
    return std::move(picked_);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == line_ && event->type() == QEvent::KeyPress && HandleKey(*static_cast<QKeyEvent*>(event)))
      return true;
    return QDialog::eventFilter(watched, event);
  }

  void showEvent(QShowEvent* event) override {
    QDialog::showEvent(event);
    view_->FitColumns();
    line_->setFocus();
    activateWindow();
  }

 private:
  void LayOut() {
    line_->setObjectName(QStringLiteral("EdtPesquisa"));
    line_->setClearButtonEnabled(true);
    line_->setPlaceholderText(QStringLiteral("Código ou descrição"));
    count_->setObjectName(QStringLiteral("LblTotal"));
    choose_->setObjectName(QStringLiteral("BtnEscolher"));
    auto* caption = new QLabel(QStringLiteral("&Pesquisar"));
    caption->setBuddy(line_);
    auto* give_up = new QPushButton(QStringLiteral("&Cancelar"));
    give_up->setObjectName(QStringLiteral("BtnCancelar"));
    connect(give_up, &QPushButton::clicked, this, &QDialog::reject);
    for (QPushButton* button : {choose_, give_up}) button->setAutoDefault(false);

    auto* top = new QHBoxLayout;
    top->addWidget(caption);
    top->addWidget(line_, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(count_, 1);
    bottom->addWidget(choose_);
    bottom->addWidget(give_up);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->setSpacing(8);
    layout->addLayout(top);
    layout->addWidget(view_, 1);
    layout->addLayout(bottom);
    resize(fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 26);
  }

  bool HandleKey(const QKeyEvent& key) {
    if (key.modifiers() != Qt::NoModifier && key.modifiers() != Qt::KeypadModifier) return false;
    switch (key.key()) {
      case Qt::Key_Up:
        return Move(-1);
      case Qt::Key_Down:
        return Move(1);
      case Qt::Key_PageUp:
        return Move(-view_->RowsInSight());
      case Qt::Key_PageDown:
        return Move(view_->RowsInSight());
      case Qt::Key_Return:
      case Qt::Key_Enter:
        Pick();
        return true;
      default:
        return false;
    }
  }

  bool Move(int rows) {
    Guarded([this] { SearchWhatIsTyped(); });
    view_->Move(rows);
    return true;
  }

  void SearchWhatIsTyped() {
    if (pause_.isActive()) Search();
  }

  void Search() {
    pause_.stop();
    const QString text = line_->text();
    model_.Search(text);
    view_->FitColumns();
    view_->StandOn(std::max(0, model_.RowOfKey(text)));
    ShowCount();
  }

  void ShowCount() {
    const int rows = model_.rowCount();
    choose_->setEnabled(rows > 0);
    view_->ShowWhetherEmpty();
    if (rows == 0) {
      count_->clear();
    } else if (model_.HasMore()) {
      count_->setText(QStringLiteral("%1 primeiros...").arg(rows));
    } else {
      count_->setText(rows == 1 ? QStringLiteral("1 encontrado") : QStringLiteral("%1 encontrados").arg(rows));
    }
  }

  void Pick() {
    Guarded([this] {
      SearchWhatIsTyped();
      const int row = view_->CurrentRow();
      if (row < 0) return;
      picked_ = offer_.Whole(model_.Row(row));
      if (picked_) {
        accept();
        return;
      }
      Search();
      count_->setText(QStringLiteral("O registro escolhido não existe mais."));
    });
  }

  /// An exception must not cross the event loop: the dialog closes and Wait throws it.
  void Guarded(const std::function<void()>& work) {
    if (failure_) return;
    try {
      work();
    } catch (...) {
      failure_ = std::current_exception();
      QTimer::singleShot(0, this, [this] { reject(); });
    }
  }

  LookupOffer& offer_;
  LookupModel model_;
  QLineEdit* line_;
  OfferView* view_;
  QLabel* count_;
  QPushButton* choose_;
  QTimer pause_;
  std::optional<host::LookupRow> picked_;
  std::exception_ptr failure_;
};

}  // namespace

std::optional<host::LookupRow> AskLookup(QWidget* parent, const QString& title, LookupOffer& offer,
                                         const host::TPesquisa& /*lookup*/, std::string_view start) {
  LookupDialog dialog(parent, title, offer, ToQt(start));
  return dialog.Wait();
}

}  // namespace app::desktop
