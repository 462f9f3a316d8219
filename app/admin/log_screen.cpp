#include "app/admin/log_screen.h"

#include <array>
#include <utility>

#include "host/text.h"

namespace app::admin {
namespace {

constexpr int kMostRows = 500;
constexpr int kDaysAtFirst = 30;
constexpr std::size_t kTextWidth = 150;
constexpr std::size_t kKeyWidth = 40;

// In the order of host::LogOperation.
constexpr std::array<const char*, 4> kOperations = {"Inclusão", "Alteração", "Exclusão", "Outra"};

std::vector<std::string> WithAll(const char* all, std::vector<std::string> values) {
  values.insert(values.begin(), all);
  return values;
}

std::vector<std::string> Operations() { return {kOperations.begin(), kOperations.end()}; }

// The first entry stands for all.
std::string Chosen(const host::ComboBox& box) { return box.Selected() > 0 ? box.SelectedText() : std::string(); }

}  // namespace

TfmLog::TfmLog(Application& application)
    : AdminScreen(application, "TfmLog", "fmLog", "Registro de operações"),
      EdtDe(*this, "EdtDe", "De", host::EditKind::kDate),
      EdtAte(*this, "EdtAte", "Até", host::EditKind::kDate),
      CbUsuario(*this, "CbUsuario", "Usuário", WithAll("Todos", LogUsers(application.GetDatabase()))),
      CbAssunto(*this, "CbAssunto", "Assunto", WithAll("Todos", LogSubjects(application.GetDatabase()))),
      CbOperacao(*this, "CbOperacao", "Operação", WithAll("Todas", Operations())),
      EdtTexto(*this, "EdtTexto", "Texto contém", host::EditKind::kText, kTextWidth),
      EdtChave(*this, "EdtChave", "Chave", host::EditKind::kText, kKeyWidth),
      BtnPesquisar(*this, "BtnPesquisar", "&Pesquisar"),
      LblAviso(*this, "LblAviso"),
      TbLog(*this, "TbLog",
            {{.name = "DATA", .type = host::FieldType::kDate, .caption = "Data"},
             {.name = "HORA", .caption = "Hora"},
             {.name = "USUARIO", .caption = "Usuário"},
             {.name = "ASSUNTO", .caption = "Assunto"},
             {.name = "OPERACAO", .caption = "Operação"},
             {.name = "TEXTO", .caption = "Texto"},
             {.name = "CHAVE", .caption = "Chave"}}),
      GrdLog(*this, "GrdLog", TbLog,
             {{.field = "DATA", .width = 11},
              {.field = "HORA", .width = 9},
              {.field = "USUARIO", .width = 16},
              {.field = "ASSUNTO", .width = 24},
              {.field = "OPERACAO", .width = 10},
              {.field = "TEXTO", .width = 50},
              {.field = "CHAVE", .width = 14}}),
      BtnFechar(*this, "BtnFechar", "&Fechar") {
  GrdLog.SetReadOnly(true);
  BtnPesquisar.Shortcut = host::Key::kF5;
  BtnPesquisar.OnClick = [this] { BtnPesquisarClick(); };
  BtnFechar.OnClick = [this] { Close(); };
}

void TfmLog::FormCreate() {
  AdminScreen::FormCreate();
  const host::Date today = App().GetClock().Now().date;
  EdtDe.SetDate(today.AddDays(-kDaysAtFirst));
  EdtAte.SetDate(today);
}

void TfmLog::FormShow() { BtnPesquisarClick(); }

LogFilter TfmLog::Typed() const {
  LogFilter filter;
  filter.from = EdtDe.GetDate();
  filter.to = EdtAte.GetDate();
  filter.user = Chosen(CbUsuario);
  filter.subject = Chosen(CbAssunto);
  if (CbOperacao.Selected() > 0) filter.operation = static_cast<host::LogOperation>(CbOperacao.Selected() - 1);
  filter.text = host::Trim(EdtTexto.Text());
  filter.key = host::Trim(EdtChave.Text());
  return filter;
}

void TfmLog::BtnPesquisarClick() {
  NeedAdministrator();
  const LogFilter filter = Typed();
  if (!filter.from.IsZero() && !filter.to.IsZero() && filter.to < filter.from) {
    Refuse("A data final vem antes da inicial.", EdtAte);
  }
  // One more than is shown tells that there are more.
  Show(*FindLogRows(Db(), filter, kMostRows + 1));
}

void TfmLog::Show(host::TTIQuery& rows) {
  TbLog.Empty();
  for (int shown = 0; !rows.Eof() && shown < kMostRows; rows.Next(), ++shown) {
    const std::string moment = rows.FieldByName("DATA_HORA").AsText();
    const auto operation = static_cast<std::size_t>(rows.FieldByName("OPERACAO").AsInteger());
    TbLog.Append();
    TbLog["DATA"].Set(host::Date::FromIso(moment.substr(0, 10)).value_or(host::Date()));
    if (moment.size() >= 19) TbLog["HORA"].Set(moment.substr(11, 8));
    TbLog["USUARIO"].Set(rows.FieldByName("USUARIO"));
    TbLog["ASSUNTO"].Set(rows.FieldByName("ASSUNTO"));
    TbLog["OPERACAO"].Set(operation < kOperations.size() ? kOperations[operation] : "");
    TbLog["TEXTO"].Set(rows.FieldByName("TEXTO"));
    TbLog["CHAVE"].Set(rows.FieldByName("CHAVE"));
    TbLog.Post();
  }
  TbLog.First();
  const std::size_t count = TbLog.RecordCount();
  if (rows.RecordCount() > count) {
    LblAviso.SetText("São mostradas as " + std::to_string(count) +
                     " operações mais novas; há mais. Restrinja a pesquisa para ver as outras.");
  } else {
    LblAviso.SetText(count == 1 ? "1 operação." : std::to_string(count) + " operações.");
  }
}

}  // namespace app::admin
