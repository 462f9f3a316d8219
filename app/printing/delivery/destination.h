// Where a report goes.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace app::printing {

struct Destination {
  enum class Kind {
    kPrinter,  // of the operating system, by name: pages
    kQueue,    // of the computer's print server (CUPS), by name: bytes as they are
    kDevice,   // file of a device: "/dev/usb/lp0"; bytes
    kAddress,  // of a printer in the network: "10.0.0.7:9100"; bytes
    kFile      // a file, replaced at each print, or a folder that gets one file for each; pages or bytes
  };
  Kind kind = Kind::kPrinter;
  std::string place;

  bool operator==(const Destination&) const = default;
};

/// Print type 'W' makes pages, 'T' bytes.
inline bool MakesPages(char report_kind) { return report_kind != 'T'; }
/// True when that kind of destination takes what the print type makes.
bool Takes(Destination::Kind kind, char report_kind);
/// The print type that such a destination gets of a report that there is in both: the one wanted where it takes that.
char KindFor(Destination::Kind kind, char wanted);

/// The text under which a destination is stored, and which ParseDestination reads: "impressora:Laser", "fila:zebra",
/// "dispositivo:/dev/usb/lp0", "rede:10.0.0.7:9100", "arquivo:/home/ana/etiquetas".
std::string ToText(const Destination& destination);
/// Reads such a text. Without the word before the colon, "/dev/..." is a device, another text with a slash a file,
/// "host:9100" an address, and what remains the name of a printer or, for print type 'T', of a queue. Throws
/// host::InputError: it names nothing, an address without host or with an impossible port, a destination that does not
/// take what the print type makes.
Destination ParseDestination(std::string_view text, char report_kind);
/// For people: "Impressora Laser", "10.0.0.7:9100".
std::string Caption(const Destination& destination);

/// A network address in its parts.
struct Address {
  std::string host;
  int port;
};
/// "host:port", "host" (port 9100), "[::1]:9100". Throws host::InputError.
Address ParseAddress(std::string_view text);

/// How long a printer is waited for.
struct TimeLimits {
  std::chrono::milliseconds connect{3000};
  std::chrono::milliseconds write{5000};  // in which it does not take a single byte more
};

/// Sends these bytes as they are to a queue, device, address or file (a file is replaced when the new one is whole; a
/// folder gets a file named for `title`). Hands back the file that was written, empty when it was none. Returns only
/// when the destination has taken everything. Throws host::InputError, one sentence with what was refused, what to do
/// and, when a part of it is on its way already, that.
std::string SendBytes(const Destination& destination, std::string_view bytes, const std::string& title,
                      const TimeLimits& limits = {});

/// The file to write into for this destination: itself, or in a folder "TITLE-1.EXTENSION", the first number that is
/// free.
std::string FileFor(const std::string& file_or_folder, const std::string& title, const std::string& extension);

/// As SendBytes, for one kind of destination each.
void SendToAddress(const Address& address, std::string_view bytes, const TimeLimits& limits);
void SendToDevice(const std::string& path, std::string_view bytes, const TimeLimits& limits);
void WriteWholeFile(const std::string& path, std::string_view bytes);

}  // namespace app::printing
