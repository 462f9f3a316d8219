// What goes through the computer's print server.
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <string>

#include "app/printing/delivery/cups_queue.h"
#include "app/printing/delivery/delivery.h"
#include "host/errors.h"
#include "tests/printing/delivery/print_server.h"

namespace {

using app::printing::Choice;
using app::printing::Deliver;
using app::printing::Destination;
using app::printing::Printout;
using app::printing::QueueNames;
using app::printing::SendBytes;
using app::printing::TestPrintout;
using app::printing::TimeLimits;
using std::chrono::milliseconds;
using test::PrintServer;
using Clock = std::chrono::steady_clock;
using Kind = Destination::Kind;
using Mood = PrintServer::Mood;

const TimeLimits kShort{milliseconds(1000), milliseconds(700)};
const Destination kZebra{Kind::kQueue, "zebra"};

std::string WhyRefused(const std::function<void()>& act) {
  try {
    act();
  } catch (const host::InputError& error) {
    return error.what();
  }
  return "nothing was refused";
}

std::string Bytes(std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) bytes += static_cast<char>(i * 7 + i / 251);
  return bytes;
}

TEST(Queue, BytesArriveAsTheyAre) {
  PrintServer server("zebra");
  const std::string bytes = Bytes(300'000);
  EXPECT_EQ(SendBytes(kZebra, bytes, "WEtqTecRolo", kShort), "");
  const auto jobs = server.Jobs();
  ASSERT_EQ(jobs.size(), 1u);
  EXPECT_TRUE(jobs[0].document == bytes) << jobs[0].document.size();
  EXPECT_EQ(jobs[0].format, "application/vnd.cups-raw");
  EXPECT_EQ(jobs[0].title, "WEtqTecRolo");
  EXPECT_TRUE(jobs[0].whole);
  EXPECT_FALSE(jobs[0].canceled);
}

TEST(Queue, PagesArriveAsPdfInTheirOwnSize) {
  PrintServer server("laser");
  Printout page = TestPrintout('W', "laser", "10/03/2026");
  const auto job = Deliver(page, {{Kind::kPrinter, "laser"}, 3}, kShort);
  EXPECT_EQ(job.destination, "laser");
  EXPECT_EQ(job.file, "");
  page.width = 100;
  page.height = 60;
  Deliver(page, {{Kind::kPrinter, "laser"}, 1}, kShort);
  const auto jobs = server.Jobs();
  ASSERT_EQ(jobs.size(), 2u);
  EXPECT_EQ(jobs[0].document.substr(0, 5), "%PDF-");
  EXPECT_EQ(jobs[0].format, "application/pdf");
  EXPECT_EQ(jobs[0].copies, 3);
  EXPECT_EQ(jobs[0].media, "A4");
  EXPECT_EQ(jobs[1].media, "Custom.100x60mm");
}

TEST(Queue, AQueueThatTheServerDoesNotKnow) {
  PrintServer server("laser");
  const std::string why = WhyRefused([] { SendBytes(kZebra, "x", "R", kShort); });
  EXPECT_EQ(why, "A fila de impressão \"zebra\" não existe neste computador: escolha outra. Nada foi impresso.");
  EXPECT_TRUE(server.Jobs().empty());
}

TEST(Queue, AQueueThatIsClosed) {
  const PrintServer server("zebra", Mood::kTakesNoJobs);
  const std::string why = WhyRefused([] { SendBytes(kZebra, "x", "R", kShort); });
  EXPECT_NE(why.find("\"zebra\" não aceita trabalhos agora"), std::string::npos) << why;
}

TEST(Queue, WhatIsRefusedIsTakenBack) {
  PrintServer server("zebra", Mood::kRefuses);
  const std::string why = WhyRefused([] { SendBytes(kZebra, Bytes(1000), "R", kShort); });
  EXPECT_NE(why.find("\"zebra\" não recebeu o trabalho inteiro"), std::string::npos) << why;
  EXPECT_NE(why.find("Nada foi impresso."), std::string::npos) << why;
  ASSERT_EQ(server.Jobs().size(), 1u);
  EXPECT_TRUE(server.Jobs()[0].canceled);
}

TEST(Queue, AServerThatHangsUpIsTold) {
  PrintServer server("zebra", Mood::kHangsUp);
  const auto begin = Clock::now();
  const std::string why = WhyRefused([] { SendBytes(kZebra, Bytes(8'000'000), "R", kShort); });
  EXPECT_LT(Clock::now() - begin, milliseconds(8000));
  EXPECT_NE(why.find("\"zebra\" não "), std::string::npos) << why;
  ASSERT_EQ(server.Jobs().size(), 1u);
  EXPECT_FALSE(server.Jobs()[0].whole);
}

TEST(Queue, AServerThatSaysNothingMoreIsTold) {
  const PrintServer server("zebra", Mood::kSilent);
  const auto begin = Clock::now();
  const std::string why = WhyRefused([] { SendBytes(kZebra, Bytes(1000), "R", kShort); });
  EXPECT_LT(Clock::now() - begin, milliseconds(8000));
  EXPECT_NE(why.find("\"zebra\" não confirmou o trabalho: confira o que saiu"), std::string::npos) << why;
}

TEST(Queue, WithoutAServerThereAreNoQueues) {
  { const PrintServer gone("zebra"); }
  EXPECT_TRUE(QueueNames().empty());
  const std::string why = WhyRefused([] { SendBytes(kZebra, "x", "R", kShort); });
  EXPECT_NE(why.find("o servidor de impressão deste computador (CUPS) não responde"), std::string::npos) << why;
}

}  // namespace
