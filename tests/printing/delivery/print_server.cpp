#include "tests/printing/delivery/print_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <string_view>
#include <utility>

namespace test {
namespace {

constexpr std::size_t kHangUpAfter = 20'000;  // bytes

std::string TextOf(ipp_t* request, const char* name, ipp_tag_t tag) {
  ipp_attribute_t* found = ippFindAttribute(request, name, tag);
  const char* text = found != nullptr ? ippGetString(found, 0, nullptr) : nullptr;
  return text != nullptr ? text : "";
}

void Respond(http_t* http, ipp_t* response) {
  httpClearFields(http);
  httpSetField(http, HTTP_FIELD_CONTENT_TYPE, "application/ipp");
  httpSetLength(http, ippLength(response));
  httpWriteResponse(http, HTTP_STATUS_OK);
  ippSetState(response, IPP_STATE_IDLE);
  while (ippWrite(http, response) == IPP_STATE_ATTRIBUTE) {
  }
  httpFlushWrite(http);
}

}  // namespace

PrintServer::PrintServer(std::string queue, Mood mood) : queue_(std::move(queue)), mood_(mood) {
  socket_ = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  bind(socket_, reinterpret_cast<sockaddr*>(&address), size);
  listen(socket_, 4);
  getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size);
  cupsSetServer(("127.0.0.1:" + std::to_string(ntohs(address.sin_port))).c_str());
  thread_ = std::thread([this] { Serve(); });
}

PrintServer::~PrintServer() {
  stopping_ = true;
  shutdown(socket_, SHUT_RDWR);
  thread_.join();
  close(socket_);
  cupsSetServer("127.0.0.1:1");  // nobody
}

std::vector<ReceivedJob> PrintServer::Jobs() {
  const std::lock_guard lock(mutex_);
  return jobs_;
}

void PrintServer::Serve() {
  while (!stopping_) {
    http_t* http = httpAcceptConnection(socket_, 1);
    if (http == nullptr) continue;
    Talk(http);
    httpClose(http);
  }
}

void PrintServer::Talk(http_t* http) {
  while (!stopping_) {
    if (httpWait(http, 50) == 0) continue;
    std::array<char, HTTP_MAX_URI> path{};
    http_state_t state = HTTP_STATE_WAITING;
    while ((state = httpReadRequest(http, path.data(), path.size())) == HTTP_STATE_WAITING) {
      if (httpError(http) != 0) return;
    }
    if (state == HTTP_STATE_ERROR || state == HTTP_STATE_UNKNOWN_METHOD || state == HTTP_STATE_UNKNOWN_VERSION) return;
    http_status_t status = HTTP_STATUS_CONTINUE;
    while ((status = httpUpdate(http)) == HTTP_STATUS_CONTINUE) {
    }
    if (status != HTTP_STATUS_OK) return;
    if (httpGetExpect(http) == HTTP_STATUS_CONTINUE) httpWriteResponse(http, HTTP_STATUS_CONTINUE);
    ipp_t* request = ippNew();
    ipp_state_t read = IPP_STATE_IDLE;
    while ((read = ippRead(http, request)) != IPP_STATE_DATA && read != IPP_STATE_ERROR) {
    }
    const bool goes_on = read == IPP_STATE_DATA && Answer(http, request);
    ippDelete(request);
    if (!goes_on) return;
  }
}

bool PrintServer::Answer(http_t* http, ipp_t* request) {
  ipp_t* response = ippNewResponse(request);
  bool goes_on = true;
  const std::string printer = TextOf(request, "printer-uri", IPP_TAG_URI);
  const bool known = printer.empty() || printer.ends_with("/" + queue_);
  if (!known) {
    ippSetStatusCode(response, IPP_STATUS_ERROR_NOT_FOUND);
  } else if (ippGetOperation(request) == IPP_OP_CREATE_JOB) {
    MakeJob(request, response);
  } else if (ippGetOperation(request) == IPP_OP_SEND_DOCUMENT) {
    goes_on = TakeDocument(http, request, response);
  } else if (ippGetOperation(request) == IPP_OP_CANCEL_JOB) {
    const std::lock_guard lock(mutex_);
    if (!jobs_.empty()) jobs_.back().canceled = true;
  } else {
    ippAddString(response, IPP_TAG_PRINTER, IPP_TAG_NAME, "printer-name", nullptr, queue_.c_str());
    ippAddString(response, IPP_TAG_PRINTER, IPP_TAG_URI, "printer-uri-supported", nullptr,
                 ("ipp://127.0.0.1/printers/" + queue_).c_str());
    ippAddInteger(response, IPP_TAG_PRINTER, IPP_TAG_ENUM, "printer-state", IPP_PSTATE_IDLE);
    ippAddInteger(response, IPP_TAG_PRINTER, IPP_TAG_ENUM, "printer-type", 0);
  }
  if (goes_on) Respond(http, response);
  ippDelete(response);
  return goes_on;
}

void PrintServer::MakeJob(ipp_t* request, ipp_t* response) {
  if (mood_ == Mood::kTakesNoJobs) {
    ippSetStatusCode(response, IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS);
    return;
  }
  const std::lock_guard lock(mutex_);
  ReceivedJob& job = jobs_.emplace_back();
  job.title = TextOf(request, "job-name", IPP_TAG_NAME);
  if (ipp_attribute_t* copies = ippFindAttribute(request, "copies", IPP_TAG_INTEGER)) {
    job.copies = ippGetInteger(copies, 0);
  }
  job.media = TextOf(request, "media", IPP_TAG_KEYWORD);
  if (job.media.empty()) job.media = TextOf(request, "media", IPP_TAG_NAME);
  ippAddInteger(response, IPP_TAG_JOB, IPP_TAG_INTEGER, "job-id", static_cast<int>(jobs_.size()));
  ippAddInteger(response, IPP_TAG_JOB, IPP_TAG_ENUM, "job-state", IPP_JSTATE_HELD);
}

bool PrintServer::TakeDocument(http_t* http, ipp_t* request, ipp_t* response) {
  std::string document;
  std::array<char, 16384> part{};
  for (ssize_t count = 0; (count = httpRead2(http, part.data(), part.size())) > 0;) {
    document.append(part.data(), static_cast<std::size_t>(count));
    if (mood_ == Mood::kHangsUp && document.size() > kHangUpAfter) return false;
  }
  {
    const std::lock_guard lock(mutex_);
    jobs_.back().document = document;
    jobs_.back().format = TextOf(request, "document-format", IPP_TAG_MIMETYPE);
    jobs_.back().whole = true;
  }
  if (mood_ == Mood::kRefuses) ippSetStatusCode(response, IPP_STATUS_ERROR_DOCUMENT_FORMAT_NOT_SUPPORTED);
  while (mood_ == Mood::kSilent && !stopping_) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  return mood_ != Mood::kSilent;
}

}  // namespace test
