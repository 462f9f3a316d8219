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

// The column as a number, and the rows where it is one of that width.
std::string NumberOf(const Numbering::Counter& counter) { return "CAST(" + counter.column + " AS BIGINT)"; }

std::string NumbersOf(const Numbering::Counter& counter, int width) {
  std::string sql = " FROM ";
  sql.append(counter.table).append(" WHERE ").append(counter.column).append(" SIMILAR TO '[0-9]+'");
  sql.append(" AND CHAR_LENGTH(").append(counter.column).append(") <= ").append(std::to_string(width));
  return sql;
}

// After so many numbers in a row that are taken already (an import, say), the run is stepped over at once.
constexpr int kPatience = 8;

constexpr std::string_view kAlone = "  IN AUTONOMOUS TRANSACTION DO";

std::optional<std::int64_t> FirstInteger(host::TTIQuery& rows) {
  if (rows.IsEmpty() || rows.Field(0).IsNull()) return std::nullopt;
  return rows.Field(0).AsInteger();
}

}  // namespace

std::string Numbering::Next(const std::string& table, const std::string& column, int width) {
  const Counter counter = {table, column, ""};
  const std::int64_t largest = LargestOfWidth(width);
  for (int taken = 0;; ++taken) {
    const auto number = AdvanceAlone(counter);
    if (!number) {
      StartAlone(counter, LastUsed(counter, width, largest));
      continue;
    }
    if (*number > largest) {
      std::string sentence = "Não há mais números livres de ";
      sentence.append(std::to_string(width))
          .append(" dígitos em ")
          .append(table)
          .append(".")
          .append(column)
          .append(".");
      throw host::InputError(sentence);
    }
    std::string text = Padded(*number, width);
    if (!InUse(counter, text)) return text;
    if (taken >= kPatience) RaiseAlone(counter, FirstFreeAfter(counter, width, *number) - 1);
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
  static const std::string sql = AdvanceBlock(kAlone);
  return FirstInteger(*database_.Query(sql, {counter.table, counter.column, counter.key}));
}

std::optional<std::int64_t> Numbering::AdvanceWithAction(const Counter& counter) {
  static const std::string sql = AdvanceBlock("");
  return FirstInteger(*database_.Query(sql, {counter.table, counter.column, counter.key}));
}

void Numbering::StartAlone(const Counter& counter, std::int64_t value) {
  static const std::string sql = StartBlock(kAlone);
  database_.Execute(sql, {counter.table, counter.column, counter.key, value});
}

void Numbering::StartWithAction(const Counter& counter, std::int64_t value) {
  static const std::string sql = StartBlock("");
  database_.Execute(sql, {counter.table, counter.column, counter.key, value});
}

std::int64_t Numbering::LastUsed(const Counter& counter, int width, std::int64_t largest) {
  const auto rows = database_.Query("SELECT MAX(" + NumberOf(counter) + ")" + NumbersOf(counter, width), {});
  const std::int64_t highest = FirstInteger(*rows).value_or(0);
  // Where somebody typed the very last number, go on from the first gap instead.
  return highest < largest ? highest : FirstFreeAfter(counter, width, 0) - 1;
}

std::int64_t Numbering::FirstFreeAfter(const Counter& counter, int width, std::int64_t number) {
  const auto rows =
      database_.Query("SELECT DISTINCT " + NumberOf(counter) + " AS N" + NumbersOf(counter, width) + " ORDER BY 1", {});
  std::int64_t free = number + 1;
  for (; !rows->Eof(); rows->Next()) {
    const std::int64_t used = rows->FieldByName("N").AsInteger();
    if (used > free) break;
    if (used == free) ++free;
  }
  return free;
}

void Numbering::RaiseAlone(const Counter& counter, std::int64_t value) {
  constexpr std::string_view sql = R"(EXECUTE BLOCK (
  P_TABELA VARCHAR(31) = ?, P_COLUNA VARCHAR(31) = ?, P_CHAVE VARCHAR(40) = ?, P_VALOR BIGINT = ?) AS
BEGIN
  IN AUTONOMOUS TRANSACTION DO
    UPDATE TEC_CONTADOR SET ULTIMO = :P_VALOR
    WHERE TABELA = :P_TABELA AND COLUNA = :P_COLUNA AND CHAVE = :P_CHAVE AND ULTIMO < :P_VALOR;
END)";
  database_.Execute(sql, {counter.table, counter.column, counter.key, value});
}

bool Numbering::InUse(const Counter& counter, const std::string& number) {
  const std::string sql = "SELECT FIRST 1 1 FROM " + counter.table + " WHERE " + counter.column + " = ?";
  return !database_.Query(sql, {number})->IsEmpty();
}

}  // namespace app::services
