// What a roll's label tells, read back from the bytes that its printer got.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace test {

struct ZplLabel {
  std::string order;
  std::string roll;     // "ROLO 012" without the word
  std::string code;     // of the fabric
  std::string lot;      // for people
  std::string weight;   // for people, "20,400 kg"
  std::string bars;     // of the lot, for the scanner
  std::string scanned;  // of the QR code
  std::vector<std::string> defects;
};

/// The labels in the order in which they were printed. Throws std::runtime_error for anything that is not a whole one.
std::vector<ZplLabel> ReadZplLabels(std::string_view bytes);

}  // namespace test
