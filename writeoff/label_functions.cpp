#include "writeoff/label_functions.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "host/decimal.h"
#include "host/errors.h"
#include "host/text.h"

namespace writeoff {
namespace {

constexpr int kWidestLabel = 1000;

struct Pair {
  std::string_view accented;
  char plain;
};

// Labels in use were designed with these pairs, the two that look exchanged included.
constexpr std::array<Pair, 28> kAccents = {{{"à", 'a'}, {"â", 'a'}, {"ã", 'a'}, {"á", 'c'}, {"ç", 'a'}, {"ê", 'e'},
                                            {"é", 'e'}, {"í", 'i'}, {"ô", 'o'}, {"õ", 'o'}, {"ó", 'o'}, {"û", 'u'},
                                            {"ú", 'u'}, {"ü", 'u'}, {"À", 'A'}, {"Â", 'A'}, {"Ã", 'A'}, {"Á", 'A'},
                                            {"Ç", 'C'}, {"Ê", 'E'}, {"É", 'E'}, {"Í", 'I'}, {"Ô", 'O'}, {"Õ", 'O'},
                                            {"Ó", 'O'}, {"Û", 'U'}, {"Ú", 'U'}, {"Ü", 'U'}}};

// Codes 128 to 159 of Windows-1252 as code points; 0 where it has no character.
constexpr std::array<char16_t, 32> kUpperControls = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                                     0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

constexpr int kFirstUpperControl = 128;
constexpr int kFirstAlike = 160;  // from here on the codes are the code points

std::string Utf8(char16_t code_point) {
  const auto byte = [](int value) { return static_cast<char>(value); };
  if (code_point < 0x80) return {byte(code_point)};
  if (code_point < 0x800) return {byte(0xC0 | (code_point >> 6)), byte(0x80 | (code_point & 0x3F))};
  return {byte(0xE0 | (code_point >> 12)), byte(0x80 | ((code_point >> 6) & 0x3F)), byte(0x80 | (code_point & 0x3F))};
}

// 0 for a code that is no character (and for the code 0).
char16_t CodePoint(int code) {
  const bool alike = code < kFirstUpperControl || code >= kFirstAlike;
  return alike ? static_cast<char16_t>(code) : kUpperControls.at(static_cast<std::size_t>(code - kFirstUpperControl));
}

std::optional<int> WholeNumber(std::string_view text, int least, int most) {
  const auto number = host::ParseTypedInteger(text);
  const bool fits = number && !host::Trim(text).empty() && *number >= least && *number <= most;
  return fits ? number : std::nullopt;
}

}  // namespace

std::string TiraPontos(std::string_view text) {
  std::string kept;
  std::copy_if(text.begin(), text.end(), std::back_inserter(kept),
               [](char c) { return c != '.' && c != '-' && c != '/' && c != ','; });
  return kept;
}

std::string RemoveAcento(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    const auto pair = std::find_if(kAccents.begin(), kAccents.end(),
                                   [text](const Pair& known) { return text.substr(0, 2) == known.accented; });
    const bool accented = pair != kAccents.end();
    plain += accented ? pair->plain : text.front();
    text.remove_prefix(accented ? pair->accented.size() : 1);
  }
  return plain;
}

std::string Chr1(std::string_view code) {
  const auto number = WholeNumber(code, 0, 255);
  char16_t code_point = 0;
  if (number) code_point = CodePoint(*number);
  if (!number || (code_point == 0 && *number != 0)) {
    throw host::InputError("CHR1() precisa do código de um caractere, e tem \"" + std::string(code) + "\"");
  }
  return Utf8(code_point);
}

std::string ZeroE(std::string_view text, std::string_view length) {
  const auto number = WholeNumber(length, -kWidestLabel, kWidestLabel);
  if (!number) {
    throw host::InputError("ZeroE() precisa de um tamanho de até " + std::to_string(kWidestLabel) + ", e tem \"" +
                           std::string(length) + "\"");
  }
  const auto there = static_cast<int>(host::Length(text));
  return std::string(static_cast<std::size_t>(std::max(*number - there, 0)), '0') + std::string(text);
}

std::optional<std::string> LabelFunction(std::string_view name, const std::vector<std::string>& arguments) {
  const auto expect = [&](std::size_t count) {
    if (arguments.size() == count) return;
    throw host::InputError(std::string(name) + "() precisa de " + std::to_string(count) +
                           (count == 1 ? " valor" : " valores") + ", e tem " + std::to_string(arguments.size()));
  };
  if (name == "TiraPontos") {
    expect(1);
    return TiraPontos(arguments[0]);
  }
  if (name == "RemoveAcento") {
    expect(1);
    return RemoveAcento(arguments[0]);
  }
  if (name == "CHR1") {
    expect(1);
    return Chr1(arguments[0]);
  }
  if (name == "ZeroE") {
    expect(2);
    return ZeroE(arguments[0], arguments[1]);
  }
  return std::nullopt;
}

}  // namespace writeoff
