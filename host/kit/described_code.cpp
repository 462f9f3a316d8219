#include "host/kit/described_code.h"

#include "host/host.h"
#include "host/kit/screen.h"

namespace host {

std::string DescriptionOf(Funcoes& funcoes, const CodeTable& where, std::string_view code) {
  if (code.empty()) return {};
  return funcoes.Busca_Valor(where.table, where.key, where.column, funcoes.Aspas(code), true, true).AsText();
}

void ShowDescription(const Edit& code, Label& label, const CodeTable& where) {
  label.SetText(DescriptionOf(code.Owner().GetHost().GetFuncoes(), where, code.Text()));
}

void DescribeOnChange(Edit& code, Label& label, CodeTable where) {
  code.OnChange = [&code, &label, where] { ShowDescription(code, label, where); };
}

void ServeInput(Edit& input, TPesquisa& lookup) {
  input.Lookup = &lookup;
  lookup.OnFechaPesquisa = [&input, &lookup] { input.SetText(lookup.RetornoPesquisa(lookup.KeyColumn()).AsText()); };
}

}  // namespace host
