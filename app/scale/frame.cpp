// The formats that are read; each is sent by many makers' indicators, named here is where it is described.
//
// | frame (CR is the terminator, _ a blank)            | described in                                         |
// | -------------------------------------------------- | ---------------------------------------------------- |
// | 0020.50 CR    __20,50 CR    20.50_kg CR LF         | CAS "10 bytes", A&D "NU", printers' plain output     |
// | STX 0020.50 ETX     STX 0020.50 CR                 | answers to ENQ; point-of-sale scales                 |
// | STX IIIII ETX (NNNNN, SSSSS)                       | the same: unstable, negative, overload               |
// | ST,GS,+0020.50kg CR LF   ST,NT,+__20.50_g          | A&D standard format (AD-4402, AD-4406, AD-4329)      |
// |   ST US OL LO HD; GS NT TR PT or G N T             |   stable, unstable, out of range, held; kind         |
// | ST,+0020.50,_kg CR LF    ST,GS,___20.50,kg         | A&D "CSV"; Tiger TI-02 and others                    |
// | ST,GS,<id><lamps>,0020.50_kg CR LF                 | CAS "22 bytes" (CI-600D, NT-200)                     |
// | STX A B C 002050 000000 CR [checksum]              | Mettler Toledo continuous (Wildcat, IND445)          |
// | STX A B C 002050 CR [checksum]                     | the same, short (Cardinal 225 "Toledo short")        |
// | STX _  20.50KG_ CR LF   (K L T G, G N, _ M O I Z)  | Condec / Rice Lake stream (482, 682), Transcell      |
// | CR +0020.5_ _kg_g__ ETX   (m, o before the unit)   | Cardinal stream (Rice Lake 482, 682), Cardinal SB-200|
// | LF 20.50 kgGR CR ETX                               | Adam MDW                                             |
// | S_S_____20.50_kg CR LF   (S D, S I, S +, S -)      | Mettler Toledo MT-SICS                               |
// | +___20.500_kg_ CR LF   (no unit: not stable)       | Sartorius, 16 and 22 characters                      |
// | ____20.50_kg_?_NET CR LF   (? not stable)          | Ohaus Defender 3000                                  |
//
// docs/scale.md names the manuals. Where one frame could be read in two ways no weight is taken from it:
// - A number without decimal sign is whole: the frame states no decimals, and what the maker meant is not in it.
// - "G" or "T" alone behind a number may be gram or gross, tonne or tare.
// - In a run of frames without STX the first one may have lost its beginning: it counts only when it can be seen to be
//   whole, or when it is all that arrived (an answer, a key pressed on the indicator).
#include "app/scale/frame.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "app/scale/reading.h"
#include "host/errors.h"

namespace app::scale {
namespace {

constexpr char kStx = '\x02';
constexpr char kEtx = '\x03';
constexpr std::size_t kNone = std::string_view::npos;
// No frame of the table is longer than 26 characters.
constexpr std::size_t kLongestFrame = 40;

struct Frame {
  std::string_view text;  // between its marks
  bool framed = false;    // begun by STX
};

// What may stand between two frames and belongs to neither.
bool IsFiller(char c) { return c == '\r' || c == '\n' || c == '\0' || c == '\x04' || c == '\x06' || c == kEtx; }

std::string_view WithoutFiller(std::string_view text) {
  while (!text.empty() && IsFiller(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsFiller(text.back())) text.remove_suffix(1);
  return text;
}

bool IsBlank(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c == ' ' || IsFiller(c); });
}

std::size_t FindEnd(std::string_view text, char terminator) {
  const auto found =
      std::find_if(text.begin(), text.end(), [terminator](char c) { return c == terminator || c == kEtx; });
  return found == text.end() ? kNone : static_cast<std::size_t>(found - text.begin());
}

// From each STX to the mark that ends the frame; what stands outside (the rest of a frame whose beginning was not
// heard, a checksum) is nobody's.
std::vector<Frame> FramedFrames(std::string_view received, char terminator) {
  std::vector<Frame> frames;
  for (std::size_t start = received.find(kStx); start != kNone; start = received.find(kStx)) {
    received.remove_prefix(start + 1);
    const std::size_t end = FindEnd(received, terminator);
    const std::size_t again = received.find(kStx);
    if (end == kNone) break;
    if (again < end) continue;  // a checksum that looks like STX, or a frame that broke off
    frames.push_back({received.substr(0, end), true});
    received.remove_prefix(end + 1);
  }
  return frames;
}

bool BeginsWithStatus(std::string_view text) {
  return text.size() > 2 && text[2] == ',' && text[0] >= 'A' && text[0] <= 'Z' && text[1] >= 'A' && text[1] <= 'Z';
}

// Pieces between two ends. The first one is a frame when a mark or its status stands before it, or when nothing
// follows it.
std::vector<Frame> PlainFrames(std::string_view received, char terminator) {
  std::vector<Frame> frames;
  bool begun = IsFiller(received.front());
  for (std::size_t end = FindEnd(received, terminator); end != kNone; end = FindEnd(received, terminator)) {
    const std::string_view text = WithoutFiller(received.substr(0, end));
    received.remove_prefix(end + 1);
    if (IsBlank(text)) continue;
    if (begun || BeginsWithStatus(text) || IsBlank(received)) frames.push_back({text, false});
    begun = true;
  }
  return frames;
}

Reading ReadFrame(const Frame& frame) {
  if (frame.text.size() > kLongestFrame) return Reading::Refused(Refusal::kTooLong);
  if (frame.framed) {
    if (const auto reading = ReadStatusFrame(frame.text)) return *reading;
  }
  if (const auto reading = ReadLampFrame(frame.text)) return *reading;
  return ReadTextFrame(WithoutFiller(frame.text));
}

// Every whole frame says the same, or there is no weight.
Reading ReadAll(std::string_view received, char terminator) {
  if (IsBlank(received)) return Reading::Refused(Refusal::kNothing);
  const auto frames = received.find(kStx) != kNone ? FramedFrames(received, terminator)  //
                                                   : PlainFrames(received, terminator);
  if (frames.empty()) return Reading::Refused(Refusal::kCutOff);
  const Reading first = ReadFrame(frames.front());
  if (first.refusal) return first;
  for (const Frame& frame : frames) {
    const Reading next = ReadFrame(frame);
    if (next.refusal) return next;
    if (next.kilograms < first.kilograms || next.kilograms > first.kilograms) {
      return Reading::Refused(Refusal::kWavering);
    }
  }
  return first;
}

}  // namespace

const char* SentenceOf(Refusal refusal) {
  switch (refusal) {
    case Refusal::kNothing:
      return "A balança não respondeu.";
    case Refusal::kCutOff:
      return "A leitura da balança veio cortada; pese outra vez.";
    case Refusal::kUnstable:
      return "O peso ainda não está estável; espere a balança parar e pese outra vez.";
    case Refusal::kWavering:
      return "O peso mudou durante a leitura; espere a balança parar e pese outra vez.";
    case Refusal::kNegative:
      return "A balança mostra um peso negativo; confira o zero e a tara da balança.";
    case Refusal::kOverload:
      return "A balança está com sobrecarga.";
    case Refusal::kTare:
      return "A balança mandou a tara em vez do peso.";
    case Refusal::kHeld:
      return "A balança está com um peso retido; solte a retenção e pese outra vez.";
    case Refusal::kScaleError:
      return "A balança acusou um erro; veja o mostrador dela.";
    case Refusal::kNoDigits:
      return "A balança não mandou nenhum número.";
    case Refusal::kTwoNumbers:
      return "A balança mandou mais de um número e não se sabe qual é o peso.";
    case Refusal::kUnit:
      return "A balança mandou o peso em uma unidade que não é kg, g nem t.";
    case Refusal::kTooLong:
      return "A leitura da balança é comprida demais para ser um peso.";
    case Refusal::kNotUnderstood:
      return "A leitura da balança não foi entendida; confira a velocidade, a paridade e o protocolo da balança (F10).";
  }
  return "";
}

double WeightOfFrame(std::string_view received, char terminator) {
  const Reading reading = ReadAll(received, terminator);
  if (reading.refusal) throw host::InputError(SentenceOf(*reading.refusal));
  return reading.kilograms;
}

}  // namespace app::scale
