// The computer's print server.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/printing/delivery/destination.h"

namespace app::printing {

enum class QueueFormat {
  kRaw,  // to the printer as it is
  kPdf   // pages, made ready for the printer by the server
};

struct QueueJob {
  std::string queue;
  std::string title;
  QueueFormat format = QueueFormat::kRaw;
  std::vector<std::pair<std::string, std::string>> options;  // of the server: {"copies", "2"}
};

/// Names of the queues, the server's default one first; empty when there is no server.
std::vector<std::string> QueueNames();

/// Hands the document to the server, whole or not at all: a job that did not get everything is taken back. Throws
/// host::InputError, one sentence: no server, no such queue, refused by the server.
void SendToQueue(const QueueJob& job, std::string_view document, const TimeLimits& limits);

}  // namespace app::printing
