#include "app/services/passwords.h"

#include <sodium.h>

#include <array>

#include "host/errors.h"

namespace app::services {
namespace {

void NeedSodium() {
  if (sodium_init() < 0) throw host::InputError("A biblioteca de criptografia não pôde ser iniciada.");
}

std::string Hash(std::string_view password) {
  NeedSodium();
  std::array<char, crypto_pwhash_STRBYTES> hash{};
  if (crypto_pwhash_str(hash.data(), password.data(), password.size(), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                        crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0) {
    throw host::InputError("Memória insuficiente para cifrar a senha.");
  }
  return hash.data();
}

}  // namespace

bool PasswordMatches(const std::string& hash, std::string_view password) {
  if (hash.empty()) {
    Hash(password);  // the work of a comparison, for its time alone
    return false;
  }
  NeedSodium();
  return crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
}

void SetPassword(firebird::Database& database, std::string_view user, std::string_view password) {
  if (password.empty()) throw host::InputError("A senha não pode ficar vazia.");
  const auto rows = database.Query("SELECT CODIGO FROM TEC_USUARIO WHERE CODIGO = ?", {user});
  if (rows->IsEmpty()) throw host::InputError("Usuário \"" + std::string(user) + "\" não cadastrado.");
  database.Execute("UPDATE TEC_USUARIO SET SENHA = ? WHERE CODIGO = ?", {Hash(password), user});
  database.Execute("UPDATE TEC_TENTATIVA SET FALHAS = 0 WHERE QUEM = ?", {user});
  database.CommitRetaining();
}

bool CheckPassword(firebird::Database& database, std::string_view user, std::string_view password) {
  const auto rows = database.Query("SELECT SENHA FROM TEC_USUARIO WHERE CODIGO = ? AND ATIVO = 'S'", {user});
  return PasswordMatches(rows->IsEmpty() ? std::string() : rows->FieldByName("SENHA").AsText(), password);
}

}  // namespace app::services
