#include "app/services/numbering.h"

#include "host/errors.h"

namespace app::services {
namespace {

// 10^width - 1; a counter never needs more than 18 digits.
std::int64_t LargestOfWidth(int width) {
  std::int64_t largest = 0;
  for (int i = 0; i < width && i < 18; ++i) largest = largest * 10 + 9;
  return largest;
}

std::string Padded(std::int64_t number, int width) {
  std::string digits = std::to_string(number);
  const auto size = static_cast<std::size_t>(width);
  return digits.size() >= size ? digits : std::string(size - digits.size(), '0') + digits;
}

std::string AdvanceBlock(std::string_view transaction) {
  std::string sql =
      R"(EXECUTE BLOCK (P_TABELA VARCHAR(31) = ?, P_COLUNA VARCHAR(31) = ?, P_CHAVE VARCHAR(40) = ?) RETURNS (VALOR BIGINT) AS
BEGIN
)";
  sql += transaction;
  sql += R"(
    UPDATE TEC_CONTADOR SET ULTIMO = ULTIMO + 1
    WHERE TABELA = :P_TABELA AND COLUNA = :P_COLUNA AND CHAVE = :P_CHAVE RETURNING ULTIMO INTO :VALOR;
  IF (VALOR IS NOT NULL) THEN SUSPEND;
END)";
  return sql;
}

// Two stations may start the same counter at once; the second finds it started and goes on from there.
std::string StartBlock(std::string_view transaction) {
  std::string sql =
      R"(EXECUTE BLOCK (P_TABELA VARCHAR(31) = ?, P_COLUNA VARCHAR(31) = ?, P_CHAVE VARCHAR(40) = ?, P_VALOR BIGINT = ?) AS
BEGIN
)";
  sql += transaction;
  sql += R"(
    INSERT INTO TEC_CONTADOR (TABELA, COLUNA, CHAVE, ULTIMO) VALUES (:P_TABELA, :P_COLUNA, :P_CHAVE, :P_VALOR);
  WHEN GDSCODE unique_key_violation DO BEGIN END
END)";
  return sql;
}

constexpr std::string_view kAlone = "  IN AUTONOMOUS TRANSACTION DO";

std::optional<std::int64_t> FirstInteger(host::TTIQuery& rows) {
  if (rows.IsEmpty() || rows.FieldByName(rows.FieldName(0)).IsNull()) return std::nullopt;
  return rows.FieldByName(rows.FieldName(0)).AsInteger();
}

}  // namespace

std::string Numbering::Next(const std::string& table, const std::string& column, int width) {
  const Counter counter = {table, column, ""};
  const std::int64_t largest = LargestOfWidth(width);
  while (true) {
    const auto number = AdvanceAlone(counter);
    if (!number) {
      StartAlone(counter, LastUsed(table, column, width, largest));
      continue;
    }
    if (*number > largest) {
      throw host::InputError("Não há mais números livres de " + std::to_string(width) + " dígitos em " + table + "." +
                             column + ".");
    }
    std::string text = Padded(*number, width);
    if (!InUse(table, column, text)) return text;
  }
}

std::string Numbering::NextRoll(const std::string& order) {
  const Counter counter = {database_.PhysicalName("TECELB"), "ORDEM", order};
  auto number = AdvanceWithAction(counter);
  if (!number) {
    const auto rows = database_.Query("SELECT MAX(ORDEM) AS ORDEM FROM {TECELB} WHERE NUMERO = ?", {order});
    StartWithAction(counter, FirstInteger(*rows).value_or(0));
    number = AdvanceWithAction(counter);
  }
  return std::to_string(number.value());
}

std::optional<std::int64_t> Numbering::AdvanceAlone(const Counter& counter) {
  static const std::string kSql = AdvanceBlock(kAlone);
  return FirstInteger(*database_.Query(kSql, {counter.table, counter.column, counter.key}));
}

std::optional<std::int64_t> Numbering::AdvanceWithAction(const Counter& counter) {
  static const std::string kSql = AdvanceBlock("");
  return FirstInteger(*database_.Query(kSql, {counter.table, counter.column, counter.key}));
}

void Numbering::StartAlone(const Counter& counter, std::int64_t value) {
  static const std::string kSql = StartBlock(kAlone);
  database_.Execute(kSql, {counter.table, counter.column, counter.key, value});
}

void Numbering::StartWithAction(const Counter& counter, std::int64_t value) {
  static const std::string kSql = StartBlock("");
  database_.Execute(kSql, {counter.table, counter.column, counter.key, value});
}

std::int64_t Numbering::LastUsed(const std::string& table, const std::string& column, int width, std::int64_t largest) {
  const std::string numbers = " FROM " + table + " WHERE " + column + " SIMILAR TO '[0-9]+' AND CHAR_LENGTH(" + column +
                              ") <= " + std::to_string(width);
  const std::string number = "CAST(" + column + " AS BIGINT)";
  const auto highest = FirstInteger(*database_.Query("SELECT MAX(" + number + ")" + numbers, {})).value_or(0);
  if (highest < largest) return highest;

  // Somebody typed the very last number: go on from the first gap instead.
  const auto rows = database_.Query("SELECT DISTINCT " + number + " AS N" + numbers + " ORDER BY 1", {});
  std::int64_t free = 1;
  for (; !rows->Eof(); rows->Next()) {
    const std::int64_t used = rows->FieldByName("N").AsInteger();
    if (used > free) break;
    if (used == free) ++free;
  }
  return free - 1;
}

bool Numbering::InUse(const std::string& table, const std::string& column, const std::string& number) {
  return !database_.Query("SELECT FIRST 1 1 FROM " + table + " WHERE " + column + " = ?", {number})->IsEmpty();
}

}  // namespace app::services
