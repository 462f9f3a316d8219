// Where bytes go: all of them, or none is called printed.
#include "app/printing/delivery/destination.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include "app/printing/delivery/cups_queue.h"
#include "host/errors.h"

namespace {

namespace fs = std::filesystem;
using app::printing::Address;
using app::printing::Caption;
using app::printing::Destination;
using app::printing::ParseAddress;
using app::printing::ParseDestination;
using app::printing::SendBytes;
using app::printing::TimeLimits;
using app::printing::ToText;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
using Kind = Destination::Kind;

// What a printer that stops would cost a test.
const TimeLimits kShort{milliseconds(500), milliseconds(300)};

std::string WhyRefused(const std::function<void()>& act) {
  try {
    act();
  } catch (const host::InputError& error) {
    return error.what();
  }
  return "nothing was refused";
}

std::string Whole(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// A label's bytes: every value there is.
std::string Bytes(std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) bytes += static_cast<char>(i * 7 + i / 251);
  return bytes;
}

class DestinationTest : public ::testing::Test {
 protected:
  DestinationTest() {
    std::string pattern = (fs::temp_directory_path() / "destination-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
  }
  ~DestinationTest() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }
  std::string In(const std::string& name) const { return (folder_ / name).string(); }

  fs::path folder_;
};

// --- as text -------------------------------------------------------------------------------------------------------

TEST_F(DestinationTest, WhatIsStoredIsReadBack) {
  for (const Destination& destination :
       {Destination{Kind::kQueue, "zebra"}, Destination{Kind::kDevice, "/dev/usb/lp0"},
        Destination{Kind::kAddress, "10.0.0.7:9100"}, Destination{Kind::kFile, "/tmp/a: b.txt"}}) {
    EXPECT_EQ(ParseDestination(ToText(destination), 'T'), destination);
  }
  const Destination printer{Kind::kPrinter, "Laser do escritório: 2"};
  EXPECT_EQ(ToText(printer), "impressora:Laser do escritório: 2");
  EXPECT_EQ(ParseDestination(ToText(printer), 'W'), printer);
}

TEST_F(DestinationTest, WhatAPersonWritesIsUnderstood) {
  EXPECT_EQ(ParseDestination(" Laser ", 'W'), (Destination{Kind::kPrinter, "Laser"}));
  EXPECT_EQ(ParseDestination("zebra", 'T'), (Destination{Kind::kQueue, "zebra"}));
  EXPECT_EQ(ParseDestination("/dev/usb/lp1", 'T'), (Destination{Kind::kDevice, "/dev/usb/lp1"}));
  EXPECT_EQ(ParseDestination("zebra.local:9101", 'T'), (Destination{Kind::kAddress, "zebra.local:9101"}));
  EXPECT_EQ(ParseDestination("./etiquetas", 'W'), (Destination{Kind::kFile, "./etiquetas"}));
  EXPECT_EQ(ParseDestination("C:\\etiquetas", 'T'), (Destination{Kind::kFile, "C:\\etiquetas"}));
  EXPECT_EQ(Caption(ParseDestination("fila:zebra", 'T')), "Fila zebra");
}

TEST_F(DestinationTest, AnAddressHasHostAndPort) {
  const auto expect = [](const std::string& text, const std::string& host, int port) {
    const Address address = ParseAddress(text);
    EXPECT_EQ(address.host, host);
    EXPECT_EQ(address.port, port);
  };
  expect("10.0.0.7:515", "10.0.0.7", 515);
  expect("zebra", "zebra", 9100);
  expect("[::1]:9100", "::1", 9100);
  expect("fe80::1", "fe80::1", 9100);
  for (const char* wrong : {":9100", "a:0", "a:65536", "a:9100x", "a:", "a b:9100", "", "a/b"}) {
    EXPECT_NE(WhyRefused([&] { ParseAddress(wrong); }).find("não é um endereço"), std::string::npos) << wrong;
  }
}

TEST_F(DestinationTest, PagesAndBytesGoWhereTheyCanBeUsed) {
  EXPECT_NE(WhyRefused([] { ParseDestination("rede:10.0.0.7:9100", 'W'); }).find("só aceita relatórios em texto"),
            std::string::npos);
  EXPECT_NE(WhyRefused([] { ParseDestination("impressora:Laser", 'T'); }).find("use a fila"), std::string::npos);
  EXPECT_EQ(WhyRefused([] { ParseDestination("fila:", 'T'); }), "Falta dizer para onde vai a impressão.");
  EXPECT_EQ(WhyRefused([] { ParseDestination("  ", 'W'); }), "Falta dizer para onde vai a impressão.");
}

// --- files ---------------------------------------------------------------------------------------------------------

TEST_F(DestinationTest, AFileIsReplacedWhole) {
  const std::string file = In("etiqueta.txt");
  const std::string bytes = Bytes(3000);
  EXPECT_EQ(SendBytes({Kind::kFile, file}, Bytes(9000), "WEtqTecRolo"), file);
  EXPECT_EQ(SendBytes({Kind::kFile, file}, bytes, "WEtqTecRolo"), file);
  EXPECT_EQ(Whole(file), bytes);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1);
}

TEST_F(DestinationTest, AFolderGetsAFileForEachPrint) {
  EXPECT_EQ(SendBytes({Kind::kFile, folder_.string()}, "um", "WEtqTecRolo"), In("WEtqTecRolo-1.txt"));
  EXPECT_EQ(SendBytes({Kind::kFile, folder_.string()}, "dois", "WEtqTecRolo"), In("WEtqTecRolo-2.txt"));
  EXPECT_EQ(Whole(In("WEtqTecRolo-1.txt")), "um");
  EXPECT_EQ(Whole(In("WEtqTecRolo-2.txt")), "dois");
}

TEST_F(DestinationTest, AFileThatCannotBeWrittenIsNamed) {
  const std::string why = WhyRefused([&] { SendBytes({Kind::kFile, In("nada/etiqueta.txt")}, "x", "R"); });
  EXPECT_NE(why.find("Não foi possível gravar o arquivo \"" + In("nada/etiqueta.txt") + "\""), std::string::npos)
      << why;
}

// --- devices -------------------------------------------------------------------------------------------------------

TEST_F(DestinationTest, ADeviceGetsOneJobAfterTheOther) {
  const std::string device = In("lp0");
  std::ofstream(device).close();
  EXPECT_EQ(SendBytes({Kind::kDevice, device}, "^XA1^XZ", "R"), "");
  SendBytes({Kind::kDevice, device}, Bytes(1000), "R");
  EXPECT_EQ(Whole(device), "^XA1^XZ" + Bytes(1000));
}

class Fifo {
 public:
  explicit Fifo(const std::string& path) : path_(path) { mkfifo(path.c_str(), 0600); }
  ~Fifo() { Join(); }
  Fifo(const Fifo&) = delete;
  Fifo& operator=(const Fifo&) = delete;
  void OpenReader() { reader_ = open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); }
  /// Reads slowly, on its own, until the writer closes.
  void ReadSlowly() {
    thread_ = std::thread([this] {
      char part[4096];
      for (;;) {
        const ssize_t count = read(reader_, part, sizeof part);
        if (count > 0) got_.append(part, static_cast<std::size_t>(count));
        if (count == 0 && !got_.empty()) break;
        std::this_thread::sleep_for(milliseconds(1));
      }
    });
  }
  void Join() {
    if (thread_.joinable()) thread_.join();
    if (reader_ >= 0) close(reader_);
    reader_ = -1;
  }
  const std::string& Got() const { return got_; }

 private:
  std::string path_;
  int reader_ = -1;
  std::thread thread_;
  std::string got_;
};

TEST_F(DestinationTest, ASlowDeviceGetsEverything) {
  Fifo fifo(In("lp0"));
  fifo.OpenReader();
  fifo.ReadSlowly();
  const std::string bytes = Bytes(400'000);  // several times what a pipe holds
  SendBytes({Kind::kDevice, In("lp0")}, bytes, "R", kShort);
  fifo.Join();
  EXPECT_TRUE(fifo.Got() == bytes) << fifo.Got().size();
}

TEST_F(DestinationTest, ADeviceThatStopsIsToldInTime) {
  Fifo fifo(In("lp0"));
  fifo.OpenReader();
  const auto begin = Clock::now();
  const std::string why = WhyRefused([&] { SendBytes({Kind::kDevice, In("lp0")}, Bytes(400'000), "R", kShort); });
  EXPECT_LT(Clock::now() - begin, milliseconds(2000));
  EXPECT_NE(why.find("deixou de receber em 65536 de 400000 bytes"), std::string::npos) << why;
  EXPECT_NE(why.find("confira o que saiu"), std::string::npos) << why;
}

TEST_F(DestinationTest, AReaderThatGoesAwayDoesNotEndTheProgram) {
  Fifo fifo(In("lp0"));
  fifo.OpenReader();
  const auto bytes = Bytes(400'000);  // made before: the reader must not be gone by then
  std::thread leaving([&fifo] {
    std::this_thread::sleep_for(milliseconds(100));
    fifo.Join();
  });
  const std::string why = WhyRefused([&] { SendBytes({Kind::kDevice, In("lp0")}, bytes, "R", kShort); });
  leaving.join();
  EXPECT_NE(why.find("deixou de receber"), std::string::npos) << why;
}

TEST_F(DestinationTest, ADeviceThatCannotBeWrittenSaysWhy) {
  const auto why = [](const std::string& path) {
    return WhyRefused([&] { SendBytes({Kind::kDevice, path}, "x", "R", kShort); });
  };
  EXPECT_NE(why(In("lp9")).find("lp9\" não existe: confira se a impressora está ligada"), std::string::npos);
  EXPECT_NE(why(folder_.string()).find("é uma pasta"), std::string::npos);
  const Fifo fifo(In("fifo"));
  EXPECT_NE(why(In("fifo")).find("não tem ninguém que receba"), std::string::npos);
  EXPECT_NE(why("/dev/full").find("deixou de receber em 0 de 1 bytes"), std::string::npos);
  if (geteuid() == 0) return;  // nothing is forbidden to it
  std::ofstream(In("locked")).close();
  fs::permissions(In("locked"), fs::perms::owner_read);
  EXPECT_NE(why(In("locked")).find("não pode ser escrito por este usuário"), std::string::npos);
}

// --- the network ---------------------------------------------------------------------------------------------------

// A printer on this computer that takes one connection.
class Listener {
 public:
  explicit Listener(int receive_buffer = 0) : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
    if (receive_buffer > 0) setsockopt(socket_, SOL_SOCKET, SO_RCVBUF, &receive_buffer, sizeof receive_buffer);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bind(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address);
    listen(socket_, 1);
    socklen_t size = sizeof address;
    getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size);
    port_ = ntohs(address.sin_port);
  }
  ~Listener() { Stop(); }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  Destination Where() const { return {Kind::kAddress, "127.0.0.1:" + std::to_string(port_)}; }
  /// On its own: reads to the end, or `most` bytes and then cuts the connection.
  void Read(std::size_t most = SIZE_MAX) {
    thread_ = std::thread([this, most] {
      const int peer = accept(socket_, nullptr, nullptr);
      char part[65536];
      while (got_.size() < most) {
        const ssize_t count = recv(peer, part, std::min(sizeof part, most - got_.size()), 0);
        if (count <= 0) break;
        got_.append(part, static_cast<std::size_t>(count));
      }
      close(peer);
    });
  }
  void Stop() {
    if (thread_.joinable()) thread_.join();
    if (socket_ >= 0) close(socket_);
    socket_ = -1;
  }
  const std::string& Got() const { return got_; }

 private:
  int socket_;
  int port_ = 0;
  std::thread thread_;
  std::string got_;
};

TEST_F(DestinationTest, APrinterInTheNetworkGetsEveryByte) {
  for (const std::size_t size : {std::size_t{1}, std::size_t{700}, std::size_t{5'000'000}}) {
    Listener listener;
    listener.Read();
    const std::string bytes = Bytes(size);
    EXPECT_EQ(SendBytes(listener.Where(), bytes, "R"), "");
    listener.Stop();
    EXPECT_TRUE(listener.Got() == bytes) << listener.Got().size() << " of " << size;
  }
}

TEST_F(DestinationTest, ALabelIsWithThePrinterInNoTime) {
  Listener listener;
  listener.Read();
  const auto begin = Clock::now();
  SendBytes(listener.Where(), Bytes(1500), "R");
  EXPECT_LT(Clock::now() - begin, milliseconds(50));
}

TEST_F(DestinationTest, ARefusedConnectionIsToldAtOnce) {
  Listener listener;
  const Destination nobody = listener.Where();
  listener.Stop();
  const auto begin = Clock::now();
  const std::string why = WhyRefused([&] { SendBytes(nobody, "x", "R", kShort); });
  EXPECT_LT(Clock::now() - begin, milliseconds(1000));
  EXPECT_NE(why.find(nobody.place + " recusou a conexão: confira se está ligada"), std::string::npos) << why;
  EXPECT_NE(why.find("Nada foi impresso."), std::string::npos) << why;
}

TEST_F(DestinationTest, ANameThatNobodyHasIsToldInTime) {
  const auto begin = Clock::now();
  const std::string why = WhyRefused([&] { SendBytes({Kind::kAddress, "impressora.invalid:9100"}, "x", "R", kShort); });
  EXPECT_LT(Clock::now() - begin, milliseconds(2000));
  EXPECT_NE(why.find("impressora.invalid:9100 não foi encontrada"), std::string::npos) << why;
}

TEST_F(DestinationTest, AnAddressWhereNothingAnswersIsToldInTime) {
  const auto begin = Clock::now();
  // Set aside for documentation: packets there are lost, or refused by a network that knows it.
  const std::string why = WhyRefused([&] { SendBytes({Kind::kAddress, "192.0.2.1:9100"}, "x", "R", kShort); });
  EXPECT_LT(Clock::now() - begin, milliseconds(2000));
  EXPECT_NE(why.find("A impressora 192.0.2.1:9100 "), std::string::npos) << why;
  EXPECT_NE(why.find("Nada foi impresso."), std::string::npos) << why;
}

TEST_F(DestinationTest, APrinterThatNeverReadsIsToldInTime) {
  const Listener listener(4096);
  const auto begin = Clock::now();
  const std::string why = WhyRefused([&] { SendBytes(listener.Where(), Bytes(20'000'000), "R", kShort); });
  EXPECT_LT(Clock::now() - begin, milliseconds(5000));
  EXPECT_NE(why.find("deixou de receber em "), std::string::npos) << why;
  EXPECT_NE(why.find(" de 20000000 bytes"), std::string::npos) << why;
}

TEST_F(DestinationTest, WhatThePrinterDidNotTakeIsNotPrinted) {
  // All of it fits into what the system keeps for a slow reader: without asking further it would seem printed.
  const Listener listener(2048);
  const std::string why = WhyRefused([&] { SendBytes(listener.Where(), Bytes(60'000), "R", kShort); });
  EXPECT_NE(why.find("deixou de receber em "), std::string::npos) << why;
  EXPECT_NE(why.find(" de 60000 bytes"), std::string::npos) << why;
}

TEST_F(DestinationTest, AConnectionCutInTheMiddleIsTold) {
  Listener listener(4096);
  listener.Read(10'000);
  const std::string why = WhyRefused([&] { SendBytes(listener.Where(), Bytes(20'000'000), "R", kShort); });
  EXPECT_NE(why.find("deixou de receber"), std::string::npos) << why;
}

// --- the print server ----------------------------------------------------------------------------------------------

TEST_F(DestinationTest, AQueueOfAServerThatIsNotThere) {
  const auto begin = Clock::now();
  const std::string why = WhyRefused([&] { SendBytes({Kind::kQueue, "zebra"}, "x", "R", kShort); });
  EXPECT_LT(Clock::now() - begin, milliseconds(3000));
  EXPECT_NE(why.find("A fila de impressão \"zebra\" "), std::string::npos) << why;
  EXPECT_NE(why.find("Nada foi impresso."), std::string::npos) << why;
}

}  // namespace
