// Bar codes as a scanner reads them at the weighing station.
#pragma once

#include <string>
#include <string_view>

namespace writeoff {

struct BarCode {
  enum class Kind {
    kOther,      // none of the kinds below: it means nothing here
    kWeighed,    // 19 digits: EAN-13 and the weight in grams
    kPackage,    // 14 or 15 digits: packaging indicator of one or two digits, body, check digit
    kRollLabel,  // 9 characters: the lot of a label made before the roll
  };
  Kind kind = Kind::kOther;
  std::string ean13;      // of kWeighed
  double weight = 0;      // of kWeighed, in kilograms
  std::string indicator;  // of kPackage
  std::string body;       // of kPackage: 12 digits, an EAN-13 without its check digit
  std::string lot;        // of kRollLabel
};

/// By the length in characters. The longer kinds are digits only: anything else of their length is kOther. Check digits
/// are not looked at.
BarCode ReadBarCode(std::string_view text);

}  // namespace writeoff
