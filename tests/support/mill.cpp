#include "support/mill.h"

#include <cstdlib>
#include <stdexcept>

#include "host/errors.h"
#include "host/kit/screen.h"
#include "host/text.h"
#include "support/module_under_test.h"
#include "support/statement_text.h"
#include "support/template_database.h"

namespace test {
namespace {

/// Statements of the test itself are neither recorded nor made to fail.
class Unheard {
 public:
  explicit Unheard(bool& listening) : listening_(listening), before_(listening) { listening_ = false; }
  ~Unheard() { listening_ = before_; }
  Unheard(const Unheard&) = delete;
  Unheard& operator=(const Unheard&) = delete;

 private:
  bool& listening_;
  bool before_;
};

bool CacheWanted() {
  const char* wanted = std::getenv("TECELAGEM_TEST_STATEMENT_CACHE");
  return wanted == nullptr || std::string_view(wanted) != "0";
}

template <typename T>
T& Component(const host::Screen& screen, std::string_view name) {
  auto* found = dynamic_cast<T*>(screen.FindComponent(name));
  if (found == nullptr) {
    throw std::runtime_error("screen " + screen.ClassName() + " has no such component: " + std::string(name));
  }
  return *found;
}

}  // namespace

Mill::Mill(const Options& options)
    : path_(options.database.empty() ? FreshDatabase() : options.database), remove_(options.database.empty()) {
  app::ApplicationOptions start;
  start.connect.database = path_;
  start.connect.user = options.user;
  start.connect.password = options.password;
  start.connect.statement_cache = options.statement_cache && CacheWanted();
  start.user = options.user;
  start.settings_file = options.settings_file.empty() ? path_ + ".settings" : options.settings_file;
  start.equipment = options.equipment != nullptr ? options.equipment : &equipment_;
  app_ = app::Application::Start(start, ModuleUnderTest(), options.person != nullptr ? *options.person : person_);
  Db().BeforeStatement = [this](std::string_view sql) {
    if (!listening_) return;
    statements_.push_back(OneLine(sql));
    if (fail_in_ > 0 && --fail_in_ == 0) {
      failed_ = true;
      throw host::DatabaseError(fail_text_, 0, std::string(sql));
    }
  };
}

Mill::~Mill() {
  listening_ = false;
  app_.reset();
  if (remove_) RemoveDatabase(path_);
}

// --- rows -----------------------------------------------------------------------------------------------------------

void Mill::Exec(std::string_view sql) {
  const Unheard unheard(listening_);
  const auto query = Db().NewQuery();
  query->SQL.Add(Db().ReplaceNames(sql));
  query->ExecSQL();
  Db().CommitRetaining();
}

std::vector<Row> Mill::Rows(std::string_view sql) {
  const Unheard unheard(listening_);
  const auto query = Db().NewQuery();
  query->SQL.Add(Db().ReplaceNames(sql));
  query->Open();
  std::vector<Row> rows;
  for (; !query->Eof(); query->Next()) {
    Row& row = rows.emplace_back();
    for (std::size_t i = 0; i < query->FieldCount(); ++i) {
      const std::string name = query->FieldName(i);
      row[host::UpperAscii(name)] = query->FieldByName(name);
    }
  }
  return rows;
}

host::Value Mill::Scalar(std::string_view sql) {
  const Unheard unheard(listening_);
  const auto query = Db().NewQuery();
  query->SQL.Add(Db().ReplaceNames(sql));
  query->Open();
  return query->IsEmpty() ? host::Value() : query->FieldByName(query->FieldName(0));
}

void Mill::SetParameter(std::string_view group, int number, std::string_view value) {
  const Unheard unheard(listening_);
  app_->WriteParameter(group, number, value);
}

// An administrator has every right, so the first right taken away makes the user one with single rights.
void Mill::TakeRight(std::string_view screen_class, std::string_view operation) {
  const Unheard unheard(listening_);
  const std::string user = app_->GetFuncoes().vUsuarioCodigo();
  const auto administrator = Db().Query("SELECT ADMINISTRADOR FROM TEC_USUARIO WHERE CODIGO = ?", {user});
  if (administrator->FieldByName("ADMINISTRADOR").AsText() == "S") {
    Db().Execute("UPDATE TEC_USUARIO SET ADMINISTRADOR = 'N' WHERE CODIGO = ?", {user});
    std::vector<std::string> screens = {"TfmMateriais"};  // a screen of another module whose right ours ask for
    const host::Module& module = ModuleUnderTest();
    for (std::size_t i = 0; i < module.screen_count; ++i) screens.emplace_back(module.screens[i].class_name);
    for (const auto& screen : screens) {
      for (const char* letter : {"A", "E"}) {
        Db().Execute("UPDATE OR INSERT INTO TEC_DIREITO (USUARIO, TELA, OPERACAO) VALUES (?, ?, ?)",
                     {user, screen, letter});
      }
    }
  }
  Db().Execute(
      "DELETE FROM TEC_DIREITO WHERE USUARIO = ? AND TELA = ? AND (CAST(? AS VARCHAR(10)) = '' OR OPERACAO = ?)",
      {user, screen_class, operation, operation});
  Db().CommitRetaining();
}

void Mill::Insert(std::string_view table, const std::vector<std::pair<std::string, host::Value>>& values) {
  const Unheard unheard(listening_);
  std::string columns;
  std::string marks;
  std::vector<host::Value> params;
  for (const auto& [name, value] : values) {
    columns += (columns.empty() ? "" : ", ") + name;
    marks += marks.empty() ? "?" : ", ?";
    params.push_back(value);
  }
  const bool of_host = table.starts_with("TEC_");
  const std::string name = of_host ? std::string(table) : Db().PhysicalName(table);
  Db().Execute("INSERT INTO " + name + " (" + columns + ") VALUES (" + marks + ")", params);
  Db().CommitRetaining();
}

// --- what was sent --------------------------------------------------------------------------------------------------

std::vector<std::string> Mill::TakeStatements(std::string_view containing) {
  std::vector<std::string> taken;
  for (std::string& statement : statements_) {
    if (!IsTransactionControl(statement) && statement.find(containing) != std::string::npos) {
      taken.push_back(std::move(statement));
    }
  }
  statements_.clear();
  return taken;
}

void Mill::FailStatement(int n, std::string_view text) {
  fail_in_ = n;
  failed_ = false;
  fail_text_ = text;
}

bool Mill::StopFailing() {
  fail_in_ = 0;
  return failed_;
}

// --- acting ---------------------------------------------------------------------------------------------------------

host::Screen& Mill::Open(std::string_view screen_class) {
  host::Screen* screen = Desk().Open(screen_class);
  if (screen != nullptr) return *screen;
  std::string said;
  for (const auto& text : Messages()) said += "\n" + text;
  throw std::runtime_error("screen did not open: " + std::string(screen_class) + said);
}

host::ActResult Mill::Type(host::Screen& screen, std::string_view edit, std::string_view text) {
  return Desk().Type(Component<host::Edit>(screen, edit), text);
}

host::ActResult Mill::Click(host::Screen& screen, std::string_view button) {
  return Desk().Click(Component<host::Button>(screen, button));
}

host::ActResult Mill::Append(host::Screen& screen, std::string_view dataset,
                             const std::vector<std::pair<std::string, std::string>>& cells) {
  return Desk().AppendRow(GridOf(screen, dataset), cells);
}

host::ActResult Mill::Set(host::Screen& screen, std::string_view dataset,
                          const std::vector<std::pair<std::string, std::string>>& cells) {
  return Desk().SetRow(GridOf(screen, dataset), cells);
}

std::string Mill::Text(host::Screen& screen, std::string_view edit_or_label) {
  const host::Component* component = screen.FindComponent(edit_or_label);
  if (const auto* edit = dynamic_cast<const host::Edit*>(component)) return edit->Text();
  if (const auto* label = dynamic_cast<const host::Label*>(component)) return label->Text();
  throw std::runtime_error("screen " + screen.ClassName() + " has no such text: " + std::string(edit_or_label));
}

host::Dataset& Mill::Data(host::Screen& screen, std::string_view dataset) {
  return Component<host::Dataset>(screen, dataset);
}

host::Grid& Mill::GridOf(host::Screen& screen, std::string_view dataset) {
  for (host::Component* component : screen.Components()) {
    auto* grid = dynamic_cast<host::Grid*>(component);
    if (grid != nullptr && host::SameName(grid->GetDataset().Name(), dataset)) return *grid;
  }
  return Component<host::Grid>(screen, dataset);
}

std::vector<std::string> Mill::Messages() {
  std::vector<std::string> texts;
  for (const auto& shown : person_.TakeMessages()) texts.push_back(shown.text);
  return texts;
}

}  // namespace test
