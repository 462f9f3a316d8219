// Looking things up in the log.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/firebird/database.h"
#include "host/date.h"
#include "host/funcoes.h"

namespace app::admin {

/// What is empty or zero does not matter.
struct LogFilter {
  host::Date from = {};
  host::Date to = {};  // that day included
  std::string user = {};
  std::string subject = {};
  std::optional<host::LogOperation> operation = {};
  std::string text = {};  // anywhere in the text, without regard to case and accents
  std::string key = {};   // beginning of the key
};

/// The newest rows first, at most `limit`: DATA_HORA, USUARIO, ASSUNTO, OPERACAO, TEXTO, CHAVE.
std::unique_ptr<host::TTIQuery> FindLogRows(firebird::Database& database, const LogFilter& filter, int limit);

/// Each that the log has, in alphabetical order; found in the index one after another, however long the log is.
std::vector<std::string> LogSubjects(firebird::Database& database);
std::vector<std::string> LogUsers(firebird::Database& database);

}  // namespace app::admin
