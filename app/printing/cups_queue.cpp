#include "app/printing/cups_queue.h"

#include <cstdint>
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

class Options {
 public:
  explicit Options(const QueueJob& job) {
    for (const auto& [name, value] : job.options) count_ = cupsAddOption(name.c_str(), value.c_str(), count_, &first_);
  }
  ~Options() { cupsFreeOptions(count_, first_); }
  Options(const Options&) = delete;
  Options& operator=(const Options&) = delete;

  int Count() const { return count_; }
  cups_option_t* First() const { return first_; }

 private:
  int count_ = 0;
  cups_option_t* first_ = nullptr;
};

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

bool Send(http_t* http, const QueueJob& job, int id, std::string_view document) {
  const char* const format = job.format == QueueFormat::kRaw ? CUPS_FORMAT_RAW : CUPS_FORMAT_PDF;
  if (cupsStartDocument(http, job.queue.c_str(), id, job.title.c_str(), format, 1) != HTTP_STATUS_CONTINUE)
    return false;
  const bool sent = cupsWriteRequestData(http, document.data(), document.size()) == HTTP_STATUS_CONTINUE;
  const ipp_status_t finished = cupsFinishDocument(http, job.queue.c_str());
  return sent && finished <= IPP_STATUS_OK_CONFLICTING;
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
  const Options options(job);
  const int id = cupsCreateJob(http.get(), job.queue.c_str(), job.title.c_str(), options.Count(), options.First());
  if (id == 0) Refuse(job);
  if (Send(http.get(), job, id, document)) return;
  const ipp_status_t why = cupsLastError();
  const std::string text = cupsLastErrorString();
  cupsCancelJob2(http.get(), job.queue.c_str(), id, 0);
  throw host::InputError("A fila de impressão \"" + job.queue + "\" não recebeu o trabalho inteiro (" +
                         (text.empty() ? std::string(ippErrorString(why)) : text) + "). Nada foi impresso.");
}

#endif

}  // namespace app::printing
