#include "app/desktop/bindings/plain_bindings.h"

#include <QGraphicsOpacityEffect>
#include <QPushButton>
#include <QTabBar>
#include <QToolButton>

#include "app/desktop/basics/text.h"
#include "app/desktop/bindings/keys.h"
#include "app/desktop/bindings/screen_bindings.h"
#include "host/restored.h"

namespace app::desktop {
namespace {

constexpr double kDimmed = 0.45;  // of a button that the person has no right to use

QString LackOf(const host::NeededRight& right) {
  if (right.operation == "A") return QStringLiteral("Falta o direito de alterar");
  if (right.operation == "E") return QStringLiteral("Falta o direito de excluir");
  return QStringLiteral("Falta o direito a esta operação");
}

}  // namespace

// --- a label -----------------------------------------------------------------------------------------------------

LabelBinding::LabelBinding(ScreenBindings& window, host::Label& label, QLabel& shown)
    : Binding(window, label, shown), label_(label), shown_(shown) {
  shown_.setTextFormat(Qt::PlainText);
  // A long description is cut off; it must not make the window wider.
  shown_.setMinimumWidth(1);
}

void LabelBinding::Show() {
  Binding::Show();
  const QString text = ToQt(label_.Text());
  if (shown_.text() == text) return;
  shown_.setText(text);
  shown_.setToolTip(text);
}

// --- a button ----------------------------------------------------------------------------------------------------

ButtonBinding::ButtonBinding(ScreenBindings& window, host::Button& button, QAbstractButton& shown)
    : Binding(window, button, shown), button_(button), shown_(shown) {
  Watch(shown_);
  shown_.setFocusPolicy(Qt::TabFocus);
  // In a dialog Enter goes on to the next input like everywhere else.
  if (auto* push = qobject_cast<QPushButton*>(&shown_)) push->setAutoDefault(false);
  connect(&shown_, &QAbstractButton::clicked, this, [this] { Click(); });
  if (button_.Right && window.GetStation().App().Lacks(button_)) ShowLack();
}

// It can still be pressed: what comes of that is the screen's decision.
void ButtonBinding::ShowLack() {
  lack_ = LackOf(*button_.Right);
  auto* dimmed = new QGraphicsOpacityEffect(&shown_);
  dimmed->setOpacity(kDimmed);
  shown_.setGraphicsEffect(dimmed);
  shown_.setAccessibleDescription(lack_);
}

void ButtonBinding::Show() {
  Binding::Show();
  const QString caption = ToQt(button_.Caption());
  if (shown_.text() != caption) shown_.setText(caption);
  const QString key = KeyName(button_.Shortcut);
  // An arrow shows no caption.
  const bool arrow = qobject_cast<QToolButton*>(&shown_) != nullptr;
  const QString hint = arrow ? (QString(caption).remove(u'&') + u' ' + key).trimmed() : key;
  shown_.setToolTip(lack_.isEmpty() || hint.isEmpty() ? hint + lack_ : hint + u'\n' + lack_);
}

void ButtonBinding::Click() {
  if (window_.Gone()) return;
  const bool done = window_.Do([this] { return window_.Desk().Click(button_); });
  if (!done && !window_.Gone()) window_.Refused();
}

void ButtonBinding::Mnemonic(QObject* /*part*/) { Click(); }

// --- pages -------------------------------------------------------------------------------------------------------

PageBinding::PageBinding(ScreenBindings& window, host::PageControl& pages, QTabWidget& tabs)
    : Binding(window, pages, tabs), pages_(pages), tabs_(tabs) {
  tabs_.setFocusPolicy(Qt::NoFocus);
  tabs_.tabBar()->setFocusPolicy(Qt::NoFocus);
  Watch(*tabs_.tabBar());
  connect(&tabs_, &QTabWidget::currentChanged, this, [this](int index) { Turned(index); });
}

void PageBinding::LetGo() {
  tabs_.tabBar()->removeEventFilter(this);
  Binding::LetGo();
}

void PageBinding::Show() {
  const host::Restored<bool> showing(showing_, true);
  Binding::Show();
  for (int page = 0; page < tabs_.count() && page < static_cast<int>(pages_.Pages().size()); ++page) {
    const QString caption = ToQt(pages_.Pages()[static_cast<std::size_t>(page)]);
    if (tabs_.tabText(page) != caption) tabs_.setTabText(page, caption);
  }
  tabs_.setCurrentIndex(pages_.ActivePage());
}

// The page turns when the desk has agreed, not before: a message about an input is read with the input in sight.
bool PageBinding::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (window_.Gone()) return false;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
      const auto* press = static_cast<QMouseEvent*>(event);
      const int page = tabs_.tabBar()->tabAt(press->position().toPoint());
      if (press->button() == Qt::LeftButton && page >= 0 && page != pages_.ActivePage()) {
        window_.ChoosePage(pages_, page);
      }
      event->accept();
      return true;
    }
    case QEvent::Wheel:
      event->ignore();
      return true;
    default:
      return false;
  }
}

// By the letter underlined in a tab.
void PageBinding::Turned(int index) {
  if (showing_ || window_.Gone() || index == pages_.ActivePage()) return;
  window_.ChoosePage(pages_, index);
  if (!window_.Gone()) Show();
}

// --- a grid ------------------------------------------------------------------------------------------------------

GridBinding::GridBinding(ScreenBindings& window, host::Grid& grid, GridPanel& panel)
    : Binding(window, grid, panel), grid_(grid), panel_(panel) {
  panel_.Bind(window.GetStation(), grid, window.GetStation().App().GetUserSettings());
  connect(&panel_, &GridPanel::KeyboardWanted, this, [this] { window_.Enter(grid_); });
}

bool GridBinding::HasLookup() const {
  const int column = grid_.SelectedColumn();
  return column >= 0 && grid_.Columns()[static_cast<std::size_t>(column)].lookup;
}

void GridBinding::LetGo() {
  panel_.LetGo();
  Binding::LetGo();
}

}  // namespace app::desktop
