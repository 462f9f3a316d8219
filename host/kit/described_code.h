// An input that holds a code: the lookup that fills it and the description that stands beside it.
#pragma once

#include <string>
#include <string_view>

#include "host/funcoes.h"
#include "host/kit/component.h"
#include "host/kit/lookup.h"

namespace host {

/// Where the description of a code stands: `column` of the row of `table` (logical name) whose `key` is the code. The
/// names are not copied: literals.
struct CodeTable {
  std::string_view table;
  std::string_view key;
  std::string_view column;
};

/// The description without blanks at its ends; empty for an empty code, which the database is not asked for, and for a
/// code that the table does not have. The code is taken as it stands: whoever forgives blanks trims it. Throws
/// DatabaseError.
std::string DescriptionOf(Funcoes& funcoes, const CodeTable& where, std::string_view code);

/// The label shows the description of the code that stands in the input now. Throws DatabaseError; the label shows what
/// it did before then.
void ShowDescription(const Edit& code, Label& label, const CodeTable& where);

/// Does so whenever the code changes. Takes the input's OnChange: a screen that has more to do there sets its own and
/// calls ShowDescription.
void DescribeOnChange(Edit& code, Label& label, CodeTable where);

/// The lookup opens from the input, and the first key column of the row picked goes into it. Takes the lookup's
/// OnFechaPesquisa: a screen that has more to do there sets its own.
void ServeInput(Edit& input, TPesquisa& lookup);

}  // namespace host
