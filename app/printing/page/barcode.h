// Bar codes as rectangles. Knows neither paper nor painter.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace app::printing {

/// A dark rectangle, from the upper left corner.
struct CodeBar {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

/// An encoded symbol. One module is the narrowest bar; the bars are counted in modules from the upper left corner of
/// the symbol, its quiet zones included.
struct Barcode {
  std::string kind;
  std::string value;          // as it was asked for, UTF-8
  std::string text;           // human-readable interpretation, with the check digit; empty for "qr"
  bool square = false;        // every module keeps its height (qr); otherwise bars are as high as the room
  int width = 0;              // modules, quiet zones included
  int height = 0;             // modules, quiet zones included; 1 unless square
  bool bearer = false;        // bars of its own along the upper and lower edge belong to the symbol (itf14)
  int quiet_left = 0;         // modules without bars at the left, part of width
  int quiet_right = 0;        // and at the right
  std::vector<CodeBar> bars;  // none touches another one in the same row of modules
};

/// Encodes `value`, UTF-8, as one of the kinds
/// - "code128": ASCII text; "code39": capitals, digits, blank and -.$/+%
/// - "ean13": 12 digits (the check digit is added) or 13 (it is checked)
/// - "ean14" (GS1-128 with application identifier 01) and "itf14": 13 digits or 14 likewise
/// - "gs1-128": element strings with their identifiers in brackets, "(01)17891234567892(10)000123001"; square brackets
///   do as well
/// - "qr": any text.
/// Blanks around the value do not count. Throws host::InputError, a sentence with kind and value, for an unknown kind
/// and for a value that the kind cannot hold.
Barcode EncodeBarcode(std::string_view kind, std::string_view value);

/// Whether EncodeBarcode takes the value. Throws host::InputError for an unknown kind.
bool CanEncode(std::string_view kind, std::string_view value);

/// The modulo-10 check digit of a GTIN's other digits (7 to 17 of them). Throws host::InputError for anything else.
char CheckDigit(std::string_view digits);

/// A symbol on a page or label, in whole dots of the printer, so that no bar is blurred or a dot wider than its like.
struct PlacedBarcode {
  double dot = 0;             // millimetres per dot
  int module = 0;             // dots per module
  int x = 0;                  // dots from the left edge of the page, quiet zone included
  int y = 0;                  // dots from its upper edge
  int width = 0;              // dots, quiet zones included
  int height = 0;             // dots, without the text
  std::vector<CodeBar> bars;  // in dots from the page's upper left corner
  std::string text;           // empty when none is wanted or the kind has none
  double text_x = 0;          // room of the text line below the bars, in millimetres from the page's corner
  double text_y = 0;
  double text_width = 0;
  double text_height = 0;
};

/// Where a symbol goes: a room in millimetres from the page's upper left corner.
struct BarcodeRoom {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  double text_height = 0;  // millimetres at the foot of the room kept for the human-readable text; 0 for none
  int dpi = 203;           // the printer's dots per inch
};

/// The symbol with the largest whole number of dots per module that fits into the room, in its middle (a linear one
/// fills its height). Throws host::InputError when not even one dot per module fits, naming kind, value and the
/// millimetres that it would need.
PlacedBarcode PlaceBarcode(const Barcode& code, const BarcodeRoom& room);

}  // namespace app::printing
