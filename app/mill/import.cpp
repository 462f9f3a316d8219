#include "app/mill/import.h"

#include <algorithm>
#include <stdexcept>

#include "app/mill/csv.h"
#include "app/mill/import_check.h"
#include "app/tables/import_rules.h"
#include "app/tables/table_shape.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::mill {
namespace {

std::string InsertSql(const std::string& table, const std::vector<const tables::Column*>& columns) {
  std::string names;
  std::string places;
  for (const tables::Column* column : columns) {
    names += (names.empty() ? "" : ", ") + column->name;
    places += places.empty() ? "?" : ", ?";
  }
  return "INSERT INTO {" + table + "} (" + names + ") VALUES (" + places + ")";
}

// What is in stock before the first movement of the program came from somewhere: the ledger opens with it.
constexpr std::string_view kOpenLedgerSql = R"(INSERT INTO {MAT_MOV} (CODIGO, COR, LOTE, DEPOSITO, DOCUMENTO, TIPO_DOC,
  DATA, QTDE, SAIDA, USUARIO, PRECO, CUSTO, LOCAL, BAIXADO, ATIVO, TIPO_MOV)
SELECT I.CODIGO, I.COR, I.LOTE, I.DEPOSITO, 'SALDO INICIAL', 'SI',
  CURRENT_DATE, I.QTDE, 'N', 'IMPORTACAO', I.PRECO_MED, I.PRECO_MED, I.LOCAL, '0', '1', 'SALINI'
FROM {MAT_ITEN} I
WHERE I.CODIGO = ? AND I.COR = ? AND I.DEPOSITO = ? AND I.LOTE = ? AND I.QTDE > 0)";

void OpenLedger(firebird::Database& database, const std::vector<const tables::Column*>& columns,
                const std::vector<host::Value>& values) {
  const auto value = [&](std::string_view name) {
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const tables::Column* column) { return column->name == name; });
    return values[static_cast<std::size_t>(found - columns.begin())];
  };
  database.Execute(kOpenLedgerSql, {value("CODIGO"), value("COR"), value("DEPOSITO"), value("LOTE")});
}

// All rows or none; the line that failed is in the result.
void Write(firebird::Database& database, const std::string& table, const ImportCheck& check, ImportResult& result) {
  const std::string sql = InsertSql(table, check.Columns());
  database.BeginAction();
  std::size_t row = 0;
  try {
    for (; row < check.Rows().size(); ++row) {
      database.Execute(sql, check.Rows()[row]);
      if (table == "MAT_ITEN") OpenLedger(database, check.Columns(), check.Rows()[row]);
    }
  } catch (const host::DatabaseError& error) {
    database.EndAction(firebird::Database::Outcome::kFailed);
    result.errors.push_back("Linha " + std::to_string(check.Line(row)) + ": " + error.what());
    return;
  }
  database.EndAction(firebird::Database::Outcome::kOk);
  result.rows = row;
}

}  // namespace

ImportResult Import(firebird::Database& database, std::string_view table, std::string_view csv_text,
                    const FormulaCheck& check_formula) {
  ImportResult result;
  const std::string name = host::UpperAscii(table);
  const auto order = tables::ImportOrder();
  if (std::find(order.begin(), order.end(), name) == order.end()) {
    result.errors.push_back("A tabela \"" + name + "\" não pode ser importada.");
    return result;
  }
  try {
    const CsvFile file = ReadCsv(csv_text);
    const tables::TableShape shape = tables::ReadTableShape(database, name);
    ImportCheck check(database, shape, check_formula);
    check.Run(file);
    result.errors = check.Errors();
    if (result.Ok()) Write(database, name, check, result);
  } catch (const std::runtime_error& error) {
    result.errors.emplace_back(error.what());
  }
  return result;
}

ImportResult Import(firebird::Database& database, std::string_view table, std::string_view csv_text) {
  return Import(database, table, csv_text, CheckRuleFormula);
}

}  // namespace app::mill
