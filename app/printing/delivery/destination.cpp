#include "app/printing/delivery/destination.h"

#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "app/printing/delivery/cups_queue.h"
#include "host/errors.h"
#include "host/text.h"

namespace app::printing {
namespace {

namespace fs = std::filesystem;
using Kind = Destination::Kind;

constexpr std::array<std::pair<Kind, std::string_view>, 5> kWords = {{{Kind::kPrinter, "impressora"},
                                                                      {Kind::kQueue, "fila"},
                                                                      {Kind::kDevice, "dispositivo"},
                                                                      {Kind::kAddress, "rede"},
                                                                      {Kind::kFile, "arquivo"}}};
constexpr int kRawPort = 9100;
constexpr int kLastPort = 65535;

[[noreturn]] void RefuseAddress(std::string_view text) {
  throw host::InputError("\"" + std::string(text) +
                         "\" não é um endereço de impressora: escreva nome ou número e porta, como 10.0.0.7:9100.");
}

bool LooksLikeAddress(std::string_view text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos || colon == 0 || colon + 1 == text.size()) return false;
  return text.find_first_not_of("0123456789", colon + 1) == std::string_view::npos;
}

// "C:\labels" has a colon and no word before it.
bool LooksLikePath(std::string_view text) { return text.find_first_of("/\\") != std::string_view::npos; }

Destination Guess(std::string_view text, char report_kind) {
  if (text.starts_with("/dev/")) return {Kind::kDevice, std::string(text)};
  if (LooksLikePath(text)) return {Kind::kFile, std::string(text)};
  if (LooksLikeAddress(text)) return {Kind::kAddress, std::string(text)};
  return {MakesPages(report_kind) ? Kind::kPrinter : Kind::kQueue, std::string(text)};
}

void CheckTakes(const Destination& destination, char report_kind) {
  if (Takes(destination.kind, report_kind)) return;
  if (destination.kind == Kind::kPrinter) {
    throw host::InputError("Um relatório em texto vai sem tratamento para a impressora: para " + Caption(destination) +
                           ", use a fila, o dispositivo ou o endereço dela.");
  }
  throw host::InputError("Páginas só são impressas em uma impressora do sistema ou em um arquivo; " +
                         Caption(destination) + " só aceita relatórios em texto.");
}

}  // namespace

bool Takes(Kind kind, char report_kind) {
  if (kind == Kind::kFile) return true;
  return (kind == Kind::kPrinter) == MakesPages(report_kind);
}

char KindFor(Kind kind, char wanted) {
  if (Takes(kind, wanted)) return wanted;
  return MakesPages(wanted) ? 'T' : 'W';
}

std::string ToText(const Destination& destination) {
  for (const auto& [kind, word] : kWords) {
    if (kind == destination.kind) return std::string(word) + ":" + destination.place;
  }
  return destination.place;
}

Destination ParseDestination(std::string_view text, char report_kind) {
  const std::string trimmed = host::Trim(text);
  Destination result = Guess(trimmed, report_kind);
  for (const auto& [kind, word] : kWords) {
    if (trimmed.size() > word.size() && trimmed[word.size()] == ':' && trimmed.starts_with(word)) {
      result = {kind, host::Trim(std::string_view(trimmed).substr(word.size() + 1))};
      break;
    }
  }
  if (result.place.empty()) throw host::InputError("Falta dizer para onde vai a impressão.");
  if (result.kind == Kind::kAddress) ParseAddress(result.place);
  CheckTakes(result, report_kind);
  return result;
}

std::string Caption(const Destination& destination) {
  switch (destination.kind) {
    case Kind::kPrinter:
      return "Impressora " + destination.place;
    case Kind::kQueue:
      return "Fila " + destination.place;
    case Kind::kDevice:
    case Kind::kAddress:
    case Kind::kFile:
      break;
  }
  return destination.place;
}

Address ParseAddress(std::string_view text) {
  std::string_view host = text;
  int port = kRawPort;
  const std::size_t bracket = text.rfind(']');
  const std::size_t colon = text.rfind(':');
  const bool has_port = colon != std::string_view::npos &&
                        (bracket == std::string_view::npos ? text.find(':') == colon : colon > bracket);
  if (has_port) {
    host = text.substr(0, colon);
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data() + colon + 1, end, port);
    if (error != std::errc() || stopped != end || port < 1 || port > kLastPort) RefuseAddress(text);
  }
  if (host.starts_with('[') && host.ends_with(']')) host = host.substr(1, host.size() - 2);
  if (host.empty() || host.find_first_of(" \t/[]") != std::string_view::npos) RefuseAddress(text);
  return {std::string(host), port};
}

std::string FileFor(const std::string& file_or_folder, const std::string& title, const std::string& extension) {
  std::error_code ignored;
  if (!fs::is_directory(file_or_folder, ignored)) return file_or_folder;
  for (int number = 1;; ++number) {
    std::string name = title;
    name.append("-").append(std::to_string(number)).append(".").append(extension);
    const fs::path file = fs::path(file_or_folder) / name;
    if (!fs::exists(file, ignored)) return file.string();
  }
}

void WriteWholeFile(const std::string& path, std::string_view bytes) {
  std::error_code error;
  if (fs::is_directory(path, error)) throw host::InputError("\"" + path + "\" é uma pasta: diga o nome do arquivo.");
  const std::string part = path + ".part";
  {
    std::ofstream out(part, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (out) fs::rename(part, path, error);
    if (out && !error) return;
  }
  fs::remove(part, error);
  throw host::InputError("Não foi possível gravar o arquivo \"" + path +
                         "\": confira se a pasta existe, se há espaço e se pode ser escrita.");
}

std::string SendBytes(const Destination& destination, std::string_view bytes, const std::string& title,
                      const TimeLimits& limits) {
  switch (destination.kind) {
    case Kind::kQueue:
      SendToQueue({destination.place, title, QueueFormat::kRaw, {}}, bytes, limits);
      return {};
    case Kind::kDevice:
      SendToDevice(destination.place, bytes, limits);
      return {};
    case Kind::kAddress:
      SendToAddress(ParseAddress(destination.place), bytes, limits);
      return {};
    case Kind::kFile: {
      std::string file = FileFor(destination.place, title, "txt");
      WriteWholeFile(file, bytes);
      return file;
    }
    case Kind::kPrinter:
      break;
  }
  CheckTakes(destination, 'T');
  return {};
}

}  // namespace app::printing
