#include "app/firebird/errors.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace app::firebird {
namespace {

bool HasAny(const EngineError& error, std::initializer_list<std::int64_t> codes) {
  return std::any_of(codes.begin(), codes.end(), [&](std::int64_t code) { return error.Has(code); });
}

// Envelopes that only say that something inside them happened.
constexpr std::array<std::int64_t, 7> kEnvelopes = {
    isc_dsql_error, isc_sqlerr, isc_random, isc_arith_except, isc_no_meta_update, isc_dsql_command_err, isc_io_error};

std::int64_t FirstMeaning(const EngineError& error) {
  for (const std::int64_t code : error.Codes()) {
    if (std::find(kEnvelopes.begin(), kEnvelopes.end(), code) == kEnvelopes.end()) return code;
  }
  return error.Codes().empty() ? 0 : error.Codes().front();
}

std::string FirstName(const EngineError& error) {
  return error.Names().empty() ? std::string() : error.Names().front();
}

std::string LastName(const EngineError& error) { return error.Names().empty() ? std::string() : error.Names().back(); }

// What a trigger or block said when it raised an exception: the last text that is not a place in its code.
std::string RaisedText(const EngineError& error) {
  const auto& names = error.Names();
  const auto text =
      std::find_if(names.rbegin(), names.rend(), [](const std::string& name) { return !name.starts_with("At "); });
  return text == names.rend() ? std::string() : *text;
}

// The engine's own words on one line, for what nobody foresaw.
std::string EngineText(const EngineError& error) {
  std::string text = error.what();
  std::replace(text.begin(), text.end(), '\n', ' ');
  return "O banco de dados recusou a operação: " + text;
}

std::string ConflictSentence() { return "Outra estação está usando estes dados. Tente novamente."; }

std::string Sentence(const EngineError& error) {
  if (IsLost(error)) return kConnectionLost;
  if (error.Has(isc_obj_in_use)) return "Outra estação está usando o banco de dados; a estrutura não pôde ser mudada.";
  if (IsConflict(error)) return ConflictSentence();
  if (HasAny(error, {isc_unique_key_violation, isc_no_dup})) return "Já existe um registro com estes dados.";
  if (HasAny(error, {isc_foreign_key, isc_foreign_key_references_present})) {
    return "O registro é usado por outros dados ou se refere a dados que não existem.";
  }
  if (HasAny(error, {isc_not_valid, isc_not_valid_for, isc_not_valid_for_var})) {
    return "Um campo obrigatório ficou sem valor ou recebeu um valor inválido.";
  }
  if (error.Has(isc_check_constraint)) return "Os dados não obedecem a uma regra do banco de dados.";
  if (HasAny(error, {isc_transliteration_failed, isc_malformed_string})) {
    return "O texto tem um caractere que o banco de dados não sabe guardar.";
  }
  if (error.Has(isc_string_truncation)) return "Um texto é mais longo do que o campo permite.";
  if (HasAny(error, {isc_numeric_out_of_range, isc_exception_integer_overflow, isc_exception_float_overflow})) {
    return "Um número é grande demais para o campo.";
  }
  if (HasAny(error, {isc_exception_integer_divide_by_zero, isc_exception_float_divide_by_zero})) {
    return "O cálculo divide por zero.";
  }
  if (HasAny(error, {isc_convert_error, isc_date_range_exceeded, isc_invalid_date_val})) {
    return "Um valor não tem a forma que o campo espera: " + LastName(error) + ".";
  }
  if (error.Has(isc_dsql_relation_err)) return "A tabela não existe no banco de dados: " + LastName(error) + ".";
  if (error.Has(isc_dsql_field_err)) return "A coluna não existe no banco de dados: " + FirstName(error) + ".";
  if (error.Has(isc_read_only_database)) return "O banco de dados só permite leitura.";
  if (error.Has(isc_no_priv)) return "O usuário do banco de dados não tem permissão para esta operação.";
  if (error.Has(isc_except2) || error.Has(isc_except)) return RaisedText(error);
  if (error.Has(isc_io_error)) return "O banco de dados não conseguiu ler ou gravar no disco.";
  return EngineText(error);
}

}  // namespace

bool IsLost(const EngineError& error) {
  return HasAny(error, {isc_network_error, isc_net_read_err, isc_net_write_err, isc_lost_db_connection, isc_conn_lost,
                        isc_att_shutdown, isc_shutdown, isc_bad_db_handle, isc_net_server_shutdown});
}

bool IsConflict(const EngineError& error) {
  // The row went while the statement waited for it; the engine has no number of its own for this.
  const bool gone = std::string_view(error.what()).find("cannot update erased record") != std::string_view::npos;
  return gone || HasAny(error, {isc_update_conflict, isc_deadlock, isc_lock_conflict, isc_lock_timeout});
}

bool IsConversion(const EngineError& error) {
  return HasAny(error,
                {isc_convert_error, isc_arith_except, isc_string_truncation, isc_numeric_out_of_range,
                 isc_dsql_datatype_err, isc_date_range_exceeded, isc_invalid_date_val, isc_transliteration_failed});
}

host::DatabaseError ToDatabaseError(const EngineError& error, std::string_view sql) {
  return {Sentence(error), FirstMeaning(error), std::string(sql)};
}

host::DatabaseError ToCommitError(const EngineError& error) {
  if (IsLost(error)) return {kConnectionLostInCommit, FirstMeaning(error), "COMMIT"};
  return ToDatabaseError(error, "COMMIT");
}

std::string SilentServer(const std::string& database) {
  return "O servidor do banco de dados \"" + database + "\" não responde.";
}

host::DatabaseError ToConnectError(const EngineError& error, const std::string& database, bool create) {
  const std::string name = "\"" + database + "\"";
  std::string text;
  if (HasAny(error, {isc_login, isc_login_error})) {
    text = "Usuário ou senha do banco de dados inválidos.";
  } else if (error.Has(isc_bad_db_format)) {
    text = "O arquivo " + name + " não é um banco de dados.";
  } else if (create && error.Has(isc_no_priv)) {
    text = "O usuário não tem permissão para criar bancos de dados no servidor.";
  } else if (HasAny(error, {isc_no_priv, isc_read_only_database})) {
    text = "O banco de dados " + name + " só permite leitura a este usuário.";
  } else if (error.Has(isc_wrong_ods)) {
    text = "O banco de dados " + name + " é de outra versão do Firebird.";
  } else if (HasAny(error, {isc_already_opened, isc_lock_timeout, isc_lock_conflict})) {
    text = "O banco de dados " + name + " está em uso por outro programa.";
  } else if (HasAny(error, {isc_network_error, isc_net_connect_err, isc_net_lookup_err, isc_connect_reject})) {
    text = SilentServer(database);
  } else if (error.Has(isc_shutdown)) {
    text = "O banco de dados " + name + " está fechado para manutenção.";
  } else if (create && HasAny(error, {isc_io_create_err, isc_obj_in_use})) {
    // A server tells the reason only in words of its own language.
    text = "O banco de dados " + name +
           " não pôde ser criado: ele já existe, ou a pasta não existe ou não permite gravação.";
  } else if (error.Has(isc_io_open_err)) {
    text = "O banco de dados " + name + " não existe ou não pode ser aberto.";
  } else if (error.Has(isc_io_error)) {
    text = "O banco de dados " + name + " não pôde ser aberto.";
  } else {
    text = EngineText(error);
  }
  return {text, FirstMeaning(error), std::string()};
}

}  // namespace app::firebird
