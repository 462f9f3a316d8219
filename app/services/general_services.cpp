#include "app/services/general_services.h"

#include <algorithm>

#include "app/scale/frame.h"
#include "app/services/audit_log.h"
#include "app/services/key_condition.h"
#include "app/services/percentage_rules.h"
#include "app/services/stock.h"
#include "host/decimal.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::services {

std::string GeneralServices::Aspas(std::string_view text) const { return QuoteText(text); }

std::string GeneralServices::PermanecePonto(double number) const { return host::PointText(number); }

std::string GeneralServices::DBLocal(std::string_view table, bool company) const {
  return company ? parts_.database.PhysicalName(table) : std::string(table);
}

std::string GeneralServices::DBLocal_SQL(std::string_view statement) const {
  return parts_.database.ReplaceNames(statement);
}

bool GeneralServices::Existe(std::string_view table, std::string_view columns, std::string_view quoted,
                             host::Database& database) {
  const auto query = database.NewQuery();
  query->SQL.Add("SELECT FIRST 1 1 FROM " + DBLocal(table, true));
  query->SQL.Add("WHERE " + KeyCondition(columns, quoted, ','));
  query->Open();
  return !query->IsEmpty();
}

host::Value GeneralServices::Busca_Valor(std::string_view table, std::string_view columns, std::string_view result,
                                         std::string_view quoted, bool company, bool trim) {
  const std::string physical = DBLocal(table, company);
  const auto query = parts_.database.NewQuery();
  query->SQL.Add("SELECT FIRST 1 " + std::string(result) + " FROM " + physical);
  query->SQL.Add("WHERE " + KeyCondition(columns, quoted, ';'));
  if (const std::string order = FirstRowOrder(physical, columns); !order.empty()) query->SQL.Add(order);
  query->Open();
  if (query->IsEmpty()) return {};
  const host::Value& value = query->Field(0);
  if (trim && value.IsText()) return host::Trim(value.AsText());
  return value;
}

// Of several rows the one that stands first by the table's key: where the engine put it would change with every save.
// Nothing where the condition leaves one row at the most, or the table has no key.
std::string GeneralServices::FirstRowOrder(const std::string& table, std::string_view columns) {
  const std::vector<std::string> asked = host::SplitOutsideQuotes(columns, ';');
  const auto is_asked = [&asked](const std::string& column) {
    return std::any_of(asked.begin(), asked.end(),
                       [&column](const std::string& name) { return host::SameName(host::Trim(name), column); });
  };
  std::string order;
  for (const std::string& column : keys_.Of(table)) {
    if (!is_asked(column)) order += (order.empty() ? "ORDER BY " : ", ") + column;
  }
  return order;
}

std::string GeneralServices::Proximo(std::string_view table, std::string_view column, int width, bool company) {
  return numbering_.Next(DBLocal(table, company), std::string(column), width);
}

std::string GeneralServices::ProximaOrdemTecelB(std::string_view order) {
  return numbering_.NextRoll(std::string(order));
}

std::string GeneralServices::BuscaParametro(std::string_view group, int number) {
  return parts_.parameters.Read(group, number);
}

bool GeneralServices::Acessa(std::string_view screen_class, std::string_view operation, std::string_view /*option*/) {
  return HasRight(parts_.database, user_.code, screen_class, operation);
}

void GeneralServices::GeraLog(std::string_view subject, std::string_view text, host::LogOperation operation,
                              std::string_view key, const host::Component* /*object*/) {
  WriteLog(parts_.database, {user_.name, parts_.clock.Now(), subject, text, operation, key});
}

std::optional<host::LogMark> GeneralServices::UltimoLog(std::string_view subject, std::string_view key) {
  return LastLog(parts_.database, subject, key);
}

std::vector<host::LogRow> GeneralServices::UltimosLogs(std::string_view subject, std::string_view key,
                                                       std::size_t count) {
  return LatestLogs(parts_.database, subject, key, count);
}

std::vector<host::LedgerRow> GeneralServices::MovimentosDaPeca(std::string_view order, int roll) {
  return MovementsOfRoll(parts_.database, order, roll);
}

double GeneralServices::CalculaPercRegra(std::string_view rule, std::string_view fabric) {
  return PercentageByRule(parts_.database, rule, fabric);
}

std::string GeneralServices::InputBoxData(std::string_view caption, std::string_view prompt) {
  return parts_.windows.AskDate(caption, prompt);
}

void GeneralServices::Ocupado(bool on, const host::Screen& /*screen*/, std::string_view text) {
  parts_.windows.ShowBusy(on, text);
}

void GeneralServices::pSetFocus(host::Screen& screen, bool back) { parts_.windows.MoveFocus(screen, back); }

host::Screen& GeneralServices::Carrega_Form(std::string_view screen_class) {
  return parts_.windows.LoadScreen(screen_class);
}

void GeneralServices::Chama_Relatorio(host::Report* graphic, host::Report* text, std::string_view report,
                                      host::Screen& owner, std::string_view print_type,
                                      const host::ReportFlags& flags) {
  const bool as_text = print_type == "T";
  if (!as_text && print_type != "W") {
    throw host::InputError("O relatório \"" + std::string(report) + "\" foi pedido com o tipo de impressão \"" +
                           std::string(print_type) + "\", que não existe.");
  }
  parts_.windows.Print(report, as_text ? 'T' : 'W', {graphic, text}, owner, flags);
}

double GeneralServices::PegaPesoBalanca(std::string_view received, char terminator) {
  return scale::WeightOfFrame(received, terminator);
}

}  // namespace app::services
