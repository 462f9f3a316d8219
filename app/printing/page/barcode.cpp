#include "app/printing/page/barcode.h"

#include <zint.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/errors.h"

namespace app::printing {
namespace {

// How one kind is asked of the library, and what stays empty beside its bars: GS1 General Specifications, section 5
// (EAN and ITF symbols, GS1-128), ISO/IEC 15417, 16388 and 18004 for the others.
struct Kind {
  std::string_view name;
  int symbology;
  int input_mode;
  int quiet_left;
  int quiet_right;
  std::size_t digits;  // of a GTIN with its check digit; 0 when the kind is no GTIN
};

constexpr std::array kKinds{
    Kind{"code128", BARCODE_CODE128, DATA_MODE, 10, 10, 0}, Kind{"ean13", BARCODE_EANX, DATA_MODE, 11, 7, 13},
    Kind{"ean14", BARCODE_EAN14, DATA_MODE, 10, 10, 14},    Kind{"itf14", BARCODE_ITF14, DATA_MODE, 10, 10, 14},
    Kind{"gs1-128", BARCODE_GS1_128, GS1_MODE, 10, 10, 0},  Kind{"qr", BARCODE_QRCODE, UNICODE_MODE, 4, 4, 0},
    Kind{"code39", BARCODE_CODE39, DATA_MODE, 10, 10, 0},
};

constexpr int kUtf8 = 26;       // the extended channel interpretation of UTF-8 text
constexpr int kBearer = 2;      // modules; what is printed dot by dot needs no thicker ones
constexpr double kLowest = 2;   // millimetres of bars that a scanner's line can still hit
constexpr double kInch = 25.4;  // millimetres
constexpr double kLargest = 10000;

// A value as long as a page does not belong into a message.
std::string Shortened(std::string_view value) {
  constexpr std::size_t kMost = 60;  // bytes
  if (value.size() <= kMost) return std::string(value);
  std::size_t end = kMost;
  while (end > 0 && (static_cast<unsigned char>(value[end]) & 0xc0) == 0x80) --end;  // not within a character
  return std::string(value.substr(0, end)) + "…";
}

[[noreturn]] void Refuse(std::string_view kind, std::string_view value, const std::string& reason) {
  throw host::InputError("Código de barras " + std::string(kind) + " \"" + Shortened(value) + "\": " + reason + ".");
}

const Kind& KindNamed(std::string_view name, std::string_view value) {
  const auto found = std::find_if(kKinds.begin(), kKinds.end(), [name](const Kind& kind) { return kind.name == name; });
  if (found == kKinds.end()) {
    Refuse(name, value, "tipo desconhecido; há code128, ean13, ean14, itf14, gs1-128, qr e code39");
  }
  return *found;
}

std::string_view WithoutBlanksAround(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool AllDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// From the right every other digit weighs 3 (GS1 General Specifications, section 7.9): the digit left of the check
// digit first.
char SumToTens(std::string_view digits) {
  int sum = 0;
  int weight = 3;
  for (std::size_t i = digits.size(); i > 0; --i) {
    sum += (digits[i - 1] - '0') * weight;
    weight = 4 - weight;
  }
  return static_cast<char>('0' + (10 - sum % 10) % 10);
}

// The digits without the check digit, which the library adds.
std::string GtinBody(const Kind& kind, const std::string& value) {
  if (!AllDigits(value)) Refuse(kind.name, value, "só aceita dígitos");
  const std::size_t body = kind.digits - 1;
  if (value.size() != body && value.size() != kind.digits) {
    Refuse(kind.name, value,
           "tem " + std::to_string(value.size()) + " dígitos em vez de " + std::to_string(kind.digits));
  }
  std::string digits = value.substr(0, body);
  if (value.size() == kind.digits && value.back() != SumToTens(digits)) {
    Refuse(kind.name, value, std::string("dígito verificador errado; seria ") + SumToTens(digits));
  }
  return digits;
}

void CheckCharacters(const Kind& kind, const std::string& value) {
  // Accents could be written, but many scanners read other letters in their place.
  const auto printable = [](char c) { return c >= ' ' && c <= '~'; };
  if (kind.name != "qr" && !std::all_of(value.begin(), value.end(), printable)) {
    Refuse(kind.name, value, "tem acentos ou caracteres de controle");
  }
  // The library would write small letters as capitals: what is scanned would not be what was printed.
  if (kind.name == "code39" &&
      value.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 -.$/+%") != std::string::npos) {
    Refuse(kind.name, value, "só aceita letras maiúsculas sem acento, dígitos, espaço e -.$/+%");
  }
}

std::string ReasonOf(int failure) {
  switch (failure) {
    case ZINT_ERROR_TOO_LONG:
      return "longo demais";
    case ZINT_ERROR_INVALID_CHECK:
      return "dígito verificador errado";
    case ZINT_ERROR_INVALID_DATA:
      return "tem caracteres ou identificadores que este código não escreve";
    default:
      return "não pode ser escrito (zint " + std::to_string(failure) + ")";
  }
}

struct SymbolDelete {
  void operator()(zint_symbol* symbol) const { ZBarcode_Delete(symbol); }
};
using Symbol = std::unique_ptr<zint_symbol, SymbolDelete>;

Symbol Encoded(const Kind& kind, const std::string& value, const std::string& data) {
  Symbol symbol(ZBarcode_Create());
  if (!symbol) Refuse(kind.name, value, "falta memória");
  symbol->symbology = kind.symbology;
  symbol->input_mode = kind.input_mode;
  if (kind.name == "gs1-128" && data.front() == '(') symbol->input_mode |= GS1PARENS_MODE;
  if (kind.name == "qr") {
    symbol->option_1 = 2;  // a symbol of which a seventh may be torn or smeared
    const bool ascii =
        std::all_of(data.begin(), data.end(), [](char c) { return static_cast<unsigned char>(c) < 128; });
    if (!ascii) symbol->eci = kUtf8;
  }
  const auto* bytes = reinterpret_cast<const unsigned char*>(data.data());
  const int failure = ZBarcode_Encode(symbol.get(), bytes, static_cast<int>(data.size()));
  if (failure >= ZINT_ERROR) Refuse(kind.name, value, ReasonOf(failure));
  // Among the warnings are GS1 data that break the rules of their identifier: a wrong check digit, a month 13.
  if (failure == ZINT_WARN_NONCOMPLIANT) Refuse(kind.name, value, "contraria as regras do seu identificador");
  return symbol;
}

bool Dark(const zint_symbol& symbol, int row, int column) {
  return ((symbol.encoded_data[row][column / 8] >> (column % 8)) & 1) != 0;
}

std::vector<CodeBar> BarsOf(const zint_symbol& symbol, int left, int top) {
  std::vector<CodeBar> bars;
  for (int row = 0; row < symbol.rows; ++row) {
    for (int column = 0; column < symbol.width;) {
      int end = column;
      while (end < symbol.width && Dark(symbol, row, end)) ++end;
      if (end > column) bars.push_back({left + column, top + row, end - column, 1});
      column = std::max(end, column + 1);
    }
  }
  return bars;
}

// "12,3": what a person reads.
std::string Millimetres(double length) {
  const auto tenths = static_cast<long>(std::ceil(length * 10 - 1e-6));
  return std::to_string(tenths / 10) + "," + std::to_string(tenths % 10) + " mm";
}

// The dots that lie wholly between two edges.
struct Span {
  int from;
  int to;
  int Length() const { return to - from; }
};

Span WholeDots(double from, double length, double dot) {
  constexpr double kSlack = 1e-6;  // an edge that is a whole dot in arithmetic
  const int first = static_cast<int>(std::ceil(from / dot - kSlack));
  return {first, std::max(first, static_cast<int>(std::floor((from + length) / dot + kSlack)))};
}

bool Sensible(const BarcodeRoom& room) {
  const auto within = [](double value, double least) { return value >= least && value <= kLargest; };
  return within(room.x, -kLargest) && within(room.y, -kLargest) && within(room.width, 0) && within(room.height, 0) &&
         within(room.text_height, 0) && room.dpi >= 1 && room.dpi <= 10000;
}

// Bars of one module's height are stretched over the symbol's.
std::vector<CodeBar> InDots(const Barcode& code, const PlacedBarcode& placed) {
  std::vector<CodeBar> bars;
  bars.reserve(code.bars.size() + 2);
  for (const CodeBar& bar : code.bars) {
    const int top = code.square ? bar.y * placed.module : 0;
    const int height = code.square ? bar.height * placed.module : placed.height;
    bars.push_back({placed.x + bar.x * placed.module, placed.y + top, bar.width * placed.module, height});
  }
  if (code.bearer) {
    const int left = placed.x + code.quiet_left * placed.module;
    const int width = placed.width - (code.quiet_left + code.quiet_right) * placed.module;
    const int thick = kBearer * placed.module;
    bars.push_back({left, placed.y, width, thick});
    bars.push_back({left, placed.y + placed.height - thick, width, thick});
  }
  return bars;
}

}  // namespace

char CheckDigit(std::string_view digits) {
  if (!AllDigits(digits) || digits.size() < 7 || digits.size() > 17) {
    throw host::InputError("Dígito verificador: \"" + std::string(digits) + "\" não são 7 a 17 dígitos.");
  }
  return SumToTens(digits);
}

Barcode EncodeBarcode(std::string_view kind, std::string_view value) {
  const std::string wanted(WithoutBlanksAround(value));
  const Kind& found = KindNamed(kind, wanted);
  if (wanted.empty()) Refuse(kind, wanted, "não há valor");
  CheckCharacters(found, wanted);
  const std::string data = found.digits > 0 ? GtinBody(found, wanted) : wanted;
  const Symbol symbol = Encoded(found, wanted, data);

  Barcode code;
  code.kind = kind;
  code.value = wanted;
  code.square = found.name == "qr";
  code.bearer = found.name == "itf14";
  code.quiet_left = found.quiet_left;
  code.quiet_right = found.quiet_right;
  code.width = symbol->width + found.quiet_left + found.quiet_right;
  const int above = code.square ? found.quiet_left : 0;
  code.height = symbol->rows + 2 * above;
  code.bars = BarsOf(*symbol, found.quiet_left, above);
  if (!code.square) code.text = reinterpret_cast<const char*>(symbol->text);
  return code;
}

bool CanEncode(std::string_view kind, std::string_view value) {
  (void)KindNamed(kind, value);
  try {
    (void)EncodeBarcode(kind, value);
    return true;
  } catch (const host::InputError&) {
    return false;
  }
}

PlacedBarcode PlaceBarcode(const Barcode& code, const BarcodeRoom& room) {
  if (!Sensible(room)) Refuse(code.kind, code.value, "tamanho, posição ou dpi sem sentido");
  const double text_height = code.text.empty() ? 0 : room.text_height;
  PlacedBarcode placed;
  placed.dot = kInch / room.dpi;
  const Span across = WholeDots(room.x, room.width, placed.dot);
  const Span down = WholeDots(room.y, std::max(0.0, room.height - text_height), placed.dot);
  placed.module = across.Length() / code.width;
  if (code.square) placed.module = std::min(placed.module, down.Length() / code.height);
  const double needed = code.square ? code.height * placed.dot : kLowest;
  if (placed.module < 1 || (!code.square && down.Length() * placed.dot < kLowest - placed.dot)) {
    Refuse(code.kind, code.value,
           "não cabe; precisa de " + Millimetres(code.width * placed.dot) + " x " + Millimetres(needed + text_height));
  }
  placed.width = placed.module * code.width;
  placed.height = code.square ? placed.module * code.height : down.Length();
  placed.x = across.from + (across.Length() - placed.width) / 2;
  placed.y = down.from + (down.Length() - placed.height) / 2;
  placed.bars = InDots(code, placed);
  if (text_height > 0) {
    placed.text = code.text;
    placed.text_x = room.x;
    placed.text_y = room.y + room.height - text_height;
    placed.text_width = room.width;
    placed.text_height = text_height;
  }
  return placed;
}

}  // namespace app::printing
