#include "tests/desktop/binder/toy_window.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

#include "app/desktop/grid/grid_panel.h"

namespace test {
namespace {

QWidget* NewWidget(const host::Control& control) {
  if (const auto* edit = dynamic_cast<const host::Edit*>(&control)) {
    if (edit->Kind() == host::EditKind::kMemo) return new QPlainTextEdit;
    return new QLineEdit;
  }
  if (dynamic_cast<const host::Label*>(&control) != nullptr) return new QLabel;
  if (dynamic_cast<const host::CheckBox*>(&control) != nullptr) return new QCheckBox;
  if (dynamic_cast<const host::RadioGroup*>(&control) != nullptr) return new QGroupBox;
  if (dynamic_cast<const host::ComboBox*>(&control) != nullptr) return new QComboBox;
  if (dynamic_cast<const host::Button*>(&control) != nullptr) return new QPushButton;
  if (dynamic_cast<const host::Grid*>(&control) != nullptr) return new app::desktop::GridPanel;
  const auto* pages = dynamic_cast<const host::PageControl*>(&control);
  if (pages == nullptr) throw std::logic_error("no widget for " + control.Name());
  auto* tabs = new QTabWidget;
  for (const std::string& caption : pages->Pages()) {
    auto* page = new QWidget;
    new QVBoxLayout(page);
    tabs->addTab(page, QString::fromStdString(caption));
  }
  return tabs;
}

}  // namespace

std::optional<std::string> ToyApplication::Read(std::string_view key, std::string_view section, std::string_view name) {
  const auto found = settings_.find(std::string(key) + "/" + std::string(section) + "/" + std::string(name));
  if (found == settings_.end()) return std::nullopt;
  return found->second;
}

void ToyApplication::Write(std::string_view key, std::string_view section, std::string_view name,
                           std::string_view value) {
  settings_[std::string(key) + "/" + std::string(section) + "/" + std::string(name)] = value;
}

std::unique_ptr<QWidget> DrawForm(const host::Screen& screen) {
  auto form = std::make_unique<QWidget>();
  auto* column = new QVBoxLayout(form.get());
  for (const host::Component* component : screen.Components()) {
    const auto* control = dynamic_cast<const host::Control*>(component);
    if (control == nullptr) continue;
    QLayout* place = column;
    if (control->Pages() != nullptr) {
      auto* tabs = form->findChild<QTabWidget*>(QString::fromStdString(control->Pages()->Name()));
      place = tabs->widget(control->Page())->layout();
    }
    QWidget* widget = NewWidget(*control);
    widget->setObjectName(QString::fromStdString(control->Name()));
    if (dynamic_cast<const host::Edit*>(control) != nullptr ||
        dynamic_cast<const host::ComboBox*>(control) != nullptr) {
      auto* caption = new QLabel(QStringLiteral("?"));
      caption->setObjectName(QStringLiteral("caption") + QString::fromStdString(control->Name()));
      caption->setBuddy(widget);
      place->addWidget(caption);
    }
    place->addWidget(widget);
  }
  return form;
}

WindowTest::WindowTest() {
  toy_.environment.on_gone = [this](host::Screen& screen) {
    if (window_ == nullptr || &screen != screen_) return;
    // As the main window does it: the widget that closed the screen may still be in its click.
    window_->LetGo();
    window_->hide();
    window_->deleteLater();
    window_ = nullptr;
    screen_ = nullptr;
  };
}

WindowTest::~WindowTest() {
  top_.reset();
  window_ = nullptr;
  Settle();
}

void WindowTest::OpenTear(const std::function<void(ToyScreen&)>& more) {
  screen_ = &toy_.Open("TfmTear", [&](ToyScreen& screen) {
    auto& code = screen.Add<host::Edit>("EdtCodigo", "&Código", host::EditKind::kText, std::size_t{6});
    auto& lookup = screen.Add<host::TPesquisa>("PqCodigo", "MATERIAL", "CODIGO");
    lookup.OnFechaPesquisa = [&] { code.SetText(lookup.RetornoPesquisa("CODIGO").AsText()); };
    code.Lookup = &lookup;
    auto& label = screen.Add<host::Label>("LblDescricao");
    code.OnChange = [&] { label.SetText(code.Text().empty() ? "" : "Malha " + code.Text()); };
    screen.Add<host::Edit>("EdtQtde", "Quantidade", host::EditKind::kNumber, std::size_t{0}, "0.00");
    screen.Add<host::Edit>("EdtVoltas", "Voltas", host::EditKind::kInteger);
    screen.Add<host::Edit>("EdtData", "Data", host::EditKind::kDate);
    screen.Add<host::Edit>("EdtObs", "Observações", host::EditKind::kMemo);
    screen.Add<host::CheckBox>("ChkAtivo", "&Ativo");
    screen.Add<host::RadioGroup>("RgTipo", "Tipo", std::vector<std::string>{"Algodão", "Lã", "Misto"});
    screen.Add<host::ComboBox>("CbSituacao", "Situação", std::vector<std::string>{"Aberta", "Fechada"});
    auto& pages = screen.Add<host::PageControl>("PgAbas", std::vector<std::string>{"Itens", "Notas"});
    auto& first = screen.Add<host::Edit>("EdtUm", "Um");
    auto& second = screen.Add<host::Edit>("EdtDois", "Dois");
    pages.Place(0, {&first});
    pages.Place(1, {&second});
    auto& save = screen.Add<host::Button>("BtnGravar", "&Gravar", [this] { toy_.notes.emplace_back("click Gravar"); });
    save.Shortcut = host::Key::kF2;
    screen.Add<host::Button>("BtnFechar", "&Fechar", [this, &screen] {
      toy_.notes.emplace_back("click Fechar");
      screen.Close();
    });
    if (more) more(screen);
    for (host::Component* component : screen.Components()) {
      auto* control = dynamic_cast<host::Control*>(component);
      if (control != nullptr && control->Focusable()) screen.Watch(*control);
    }
  });
  Show(DrawForm(*screen_));
}

void WindowTest::Show(std::unique_ptr<QWidget> form) {
  top_ = std::make_unique<QWidget>();
  window_ = new app::desktop::ScreenWindow(station_, *screen_, std::move(form), top_.get());
  auto* layout = new QVBoxLayout(top_.get());
  layout->addWidget(window_);
  top_->show();
  top_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(top_.get(), 2000));
  window_->TakeFocus();
  toy_.notes.clear();
}

std::string WindowTest::Shown(const char* name) const { return Find<QLineEdit>(name)->text().toStdString(); }

std::string WindowTest::Focus() const {
  const host::Control* desk = toy_.desk.Focused();
  const QWidget* widget = QApplication::focusWidget();
  while (widget != nullptr &&
         (screen_ == nullptr || screen_->FindComponent(widget->objectName().toStdString()) == nullptr)) {
    widget = widget->parentWidget();
  }
  const std::string shown = widget == nullptr ? "none" : widget->objectName().toStdString();
  const std::string meant = desk == nullptr ? "none" : desk->Name();
  return shown == meant ? shown : shown + " but " + meant + " on the desk";
}

void WindowTest::Press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(top_->windowHandle(), key, modifiers);
}

void WindowTest::Type(std::string_view text) {
  for (const QChar character : QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))) {
    QWidget* target = QApplication::focusWidget();
    ASSERT_NE(target, nullptr);
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
    QApplication::sendEvent(target, &press);
  }
}

void WindowTest::Click(QWidget& widget, QPoint at, Qt::MouseButton button) {
  QWindow* window = widget.window()->windowHandle();
  QTest::mouseClick(window, button, Qt::NoModifier, widget.mapTo(widget.window(), at));
}

void WindowTest::Click(const char* name) {
  auto* widget = Find(name);
  Click(*widget, widget->rect().center());
}

void WindowTest::ClickTab(const char* name, int page) {
  QTabBar* bar = Find<QTabWidget>(name)->tabBar();
  Click(*bar, bar->tabRect(page).center());
}

void WindowTest::RefuseExit(const char* name) {
  auto& control = Part<host::Control>(name);
  control.OnExit = [this, &control] {
    toy_.notes.push_back("refuse " + control.Name());
    throw host::Abort();
  };
}

void WindowTest::RefuseWithBox(const char* name, bool refuse) {
  auto& control = Part<host::Control>(name);
  control.OnExit = [this, refuse] {
    QMessageBox box(QMessageBox::Information, QStringLiteral("Tear"), QStringLiteral("Código inválido."),
                    QMessageBox::Ok, top_.get());
    QTimer::singleShot(50, &box, [&box] { QTest::keyClick(&box, Qt::Key_Return); });
    QTimer::singleShot(3000, &box, &QMessageBox::reject);
    ++boxes_;
    box.exec();
    if (refuse) throw host::Abort();
  };
}

void WindowTest::Settle() {
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCoreApplication::processEvents();
}

}  // namespace test
