#include "app/printing/delivery/cups_queue.h"

#include <array>
#include <memory>

#include "host/errors.h"

#ifndef _WIN32
#include <cups/cups.h>
#endif

namespace app::printing {

#ifdef _WIN32

std::vector<std::string> QueueNames() { return {}; }

void SendToQueue(const QueueJob& job, std::string_view, const TimeLimits&) {
  throw host::InputError("A fila de impressão \"" + job.queue +
                         "\" não existe: este computador não tem o servidor de impressão CUPS. Nada foi impresso.");
}

#else

namespace {

struct CloseConnection {
  void operator()(http_t* http) const { httpClose(http); }
};
using Connection = std::unique_ptr<http_t, CloseConnection>;

// Nobody sits before the server's questions: a queue that asks for a password refuses.
const char* NoPassword(const char*, http_t*, const char*, const char*, void*) { return nullptr; }
int GiveUp(http_t*, void*) { return 0; }

Connection Connect(const TimeLimits& limits) {
  cupsSetPasswordCB2(&NoPassword, nullptr);
  Connection http(httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1,
                               static_cast<int>(limits.connect.count()), nullptr));
  if (http != nullptr) {
    httpSetTimeout(http.get(), std::chrono::duration<double>(limits.write).count(), &GiveUp, nullptr);
  }
  return http;
}

std::string ResourceOf(const QueueJob& job) { return "/printers/" + job.queue; }

void AddOptions(ipp_t* request, const QueueJob& job) {
  int count = 0;
  cups_option_t* options = nullptr;
  for (const auto& [name, value] : job.options) count = cupsAddOption(name.c_str(), value.c_str(), count, &options);
  cupsEncodeOptions2(request, count, options, IPP_TAG_JOB);
  cupsFreeOptions(count, options);
}

// The job's number, 0 when it was refused. Asked of the server in one go: the library's own function first looks for
// the queue in the whole network, which takes long when nobody has it.
int CreateJob(http_t* http, const QueueJob& job) {
  std::array<char, HTTP_MAX_URI> uri{};
  std::array<char, HTTP_MAX_URI> path{};
  httpAssembleURIf(HTTP_URI_CODING_ALL, uri.data(), uri.size(), "ipp", nullptr, "localhost", 0, "/printers/%s",
                   job.queue.c_str());
  httpAssembleURIf(HTTP_URI_CODING_ALL, path.data(), path.size(), "ipp", nullptr, "localhost", 0, "/printers/%s",
                   job.queue.c_str());
  ipp_t* request = ippNewRequest(IPP_OP_CREATE_JOB);
  ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri.data());
  ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
  ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, job.title.c_str());
  AddOptions(request, job);
  ipp_t* response = cupsDoRequest(http, request, ResourceOf(job).c_str());
  ipp_attribute_t* id = response == nullptr || ippGetStatusCode(response) > IPP_STATUS_OK_CONFLICTING
                            ? nullptr
                            : ippFindAttribute(response, "job-id", IPP_TAG_INTEGER);
  const int number = id != nullptr ? ippGetInteger(id, 0) : 0;
  ippDelete(response);
  return number;
}

[[noreturn]] void Refuse(const QueueJob& job) {
  std::string why;
  switch (cupsLastError()) {
    case IPP_STATUS_ERROR_NOT_FOUND:
      why = "não existe neste computador: escolha outra.";
      break;
    case IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS:
      why = "não aceita trabalhos agora: libere-a no servidor de impressão ou escolha outra.";
      break;
    case IPP_STATUS_ERROR_FORBIDDEN:
    case IPP_STATUS_ERROR_NOT_AUTHENTICATED:
    case IPP_STATUS_ERROR_NOT_AUTHORIZED:
    case IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED:
      why = "não pode ser usada por este usuário: peça a permissão ao administrador.";
      break;
    default:
      why = std::string("não recebeu o trabalho (") + cupsLastErrorString() + ").";
  }
  throw host::InputError("A fila de impressão \"" + job.queue + "\" " + why + " Nada foi impresso.");
}

enum class Sent { kTaken, kRefused, kNotConfirmed };

Sent Send(http_t* http, const QueueJob& job, int id, std::string_view document) {
  const char* const format = job.format == QueueFormat::kRaw ? CUPS_FORMAT_RAW : CUPS_FORMAT_PDF;
  if (cupsStartDocument(http, job.queue.c_str(), id, job.title.c_str(), format, 1) != HTTP_STATUS_CONTINUE) {
    return Sent::kRefused;
  }
  const bool sent = cupsWriteRequestData(http, document.data(), document.size()) == HTTP_STATUS_CONTINUE;
  // A server that answers nothing leaves no error behind, only no answer.
  ipp_t* response = cupsGetResponse(http, ResourceOf(job).c_str());
  const bool taken = response != nullptr && ippGetStatusCode(response) <= IPP_STATUS_OK_CONFLICTING;
  const bool answered = response != nullptr;
  ippDelete(response);
  if (sent && taken) return Sent::kTaken;
  return sent && !answered ? Sent::kNotConfirmed : Sent::kRefused;
}

}  // namespace

std::vector<std::string> QueueNames() {
  const Connection http = Connect(TimeLimits{});
  if (http == nullptr) return {};
  cups_dest_t* all = nullptr;
  const int count = cupsGetDests2(http.get(), &all);
  std::vector<std::string> names;
  for (int i = 0; i < count; ++i) {
    if (all[i].instance != nullptr) continue;
    names.insert(all[i].is_default != 0 ? names.begin() : names.end(), all[i].name);
  }
  cupsFreeDests(count, all);
  return names;
}

void SendToQueue(const QueueJob& job, std::string_view document, const TimeLimits& limits) {
  const Connection http = Connect(limits);
  if (http == nullptr) {
    throw host::InputError("A fila de impressão \"" + job.queue +
                           "\" não foi alcançada: o servidor de impressão deste computador (CUPS) não responde. "
                           "Nada foi impresso.");
  }
  const int id = CreateJob(http.get(), job);
  if (id == 0) Refuse(job);
  const Sent sent = Send(http.get(), job, id, document);
  if (sent == Sent::kTaken) return;
  const std::string why = cupsLastErrorString();
  cupsCancelJob2(http.get(), job.queue.c_str(), id, 0);
  if (sent == Sent::kNotConfirmed) {
    throw host::InputError("A fila de impressão \"" + job.queue +
                           "\" não confirmou o trabalho: confira o que saiu antes de imprimir de novo.");
  }
  throw host::InputError("A fila de impressão \"" + job.queue + "\" não recebeu o trabalho inteiro (" + why +
                         "). Nada foi impresso.");
}

#endif

}  // namespace app::printing
