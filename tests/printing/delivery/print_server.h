// A print server of one queue, on a port of this computer.
#pragma once

#include <cups/cups.h>
#include <cups/http.h>

#include <atomic>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace test {

/// A job as it arrived.
struct ReceivedJob {
  std::string title;
  std::string format;
  std::string document;
  int copies = 0;
  std::string media;
  bool whole = false;     // its document came to its end
  bool canceled = false;  // it was taken back
};

/// As long as it lives it is the server that the program prints with.
class PrintServer {
 public:
  enum class Mood {
    kTakes,
    kTakesNoJobs,  // says so when a job is made
    kRefuses,      // refuses the document
    kHangsUp,      // in the middle of it
    kSilent        // takes the document and never says a word again
  };
  explicit PrintServer(std::string queue, Mood mood = Mood::kTakes);
  ~PrintServer();
  PrintServer(const PrintServer&) = delete;
  PrintServer& operator=(const PrintServer&) = delete;

  std::vector<ReceivedJob> Jobs();

 private:
  void Serve();
  void Talk(http_t* http);
  bool Answer(http_t* http, ipp_t* request);
  bool TakeDocument(http_t* http, ipp_t* request, ipp_t* response);
  void MakeJob(ipp_t* request, ipp_t* response);

  std::string queue_;
  Mood mood_;
  int socket_ = -1;
  std::atomic<bool> stopping_ = false;
  std::mutex mutex_;
  std::vector<ReceivedJob> jobs_;
  std::thread thread_;
};

}  // namespace test
