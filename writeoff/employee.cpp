#include "writeoff/employee.h"

#include "weaving/statement.h"

namespace writeoff {

std::optional<Employee> EmployeeOf(host::Host& host, std::string_view code) {
  const auto row =
      weaving::Statements(host).Open("SELECT NOME, TURNO FROM {PESSOAL} WHERE CODIGO = :code", {{"code", code}});
  if (row->IsEmpty()) return std::nullopt;
  return Employee{.name = row->FieldByName("NOME").AsText(), .shift = row->FieldByName("TURNO").AsText()};
}

}  // namespace writeoff
