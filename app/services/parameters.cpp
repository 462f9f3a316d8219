#include "app/services/parameters.h"

namespace app::services {

std::string Parameters::Read(std::string_view group, int number) {
  if (!values_) {
    const auto rows = database_.Query("SELECT GRUPO, NUMERO, VALOR FROM TEC_PARAMETRO", {});
    std::map<Key, std::string> values;
    for (; !rows->Eof(); rows->Next()) {
      const Key key(rows->FieldByName("GRUPO").AsText(), static_cast<int>(rows->FieldByName("NUMERO").AsInteger()));
      values[key] = rows->FieldByName("VALOR").AsText();
    }
    values_ = std::move(values);
  }
  const auto found = values_->find(Key(group, number));
  return found == values_->end() ? std::string() : found->second;
}

void Parameters::Write(std::string_view group, int number, std::string_view value) {
  // Forgotten before and not only after: a failure must not leave a value in memory that the database lacks.
  Forget();
  database_.Execute(
      "UPDATE OR INSERT INTO TEC_PARAMETRO (GRUPO, NUMERO, VALOR) VALUES (?, ?, ?) MATCHING (GRUPO, NUMERO)",
      {group, number, value});
}

}  // namespace app::services
