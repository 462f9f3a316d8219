#include "support/zpl_label.h"

#include <cstddef>
#include <stdexcept>
#include <utility>

namespace test {
namespace {

constexpr std::string_view kStart = "^XA";
constexpr std::string_view kEnd = "^XZ\n";
constexpr std::string_view kText = "^FD";
constexpr std::string_view kTextEnd = "^FS";

// "_7E" stands for a character that is a command.
std::string Plain(std::string_view written) {
  std::string text;
  for (std::size_t at = 0; at < written.size(); ++at) {
    if (written[at] != '_') {
      text += written[at];
      continue;
    }
    text += static_cast<char>(std::stoi(std::string(written.substr(at + 1, 2)), nullptr, 16));
    at += 2;
  }
  return text;
}

bool Begins(std::string_view text, std::string_view beginning) { return text.substr(0, beginning.size()) == beginning; }

// What stands below its caption belongs to it.
void Take(std::string_view command, const std::string& text, std::string& caption, ZplLabel& label) {
  if (command.find("^BC") != std::string_view::npos) {
    label.bars = text;
  } else if (command.find("^BQ") != std::string_view::npos) {
    label.scanned = text.substr(text.find(',') + 1);
  } else if (command.find("^B2") != std::string_view::npos) {
    return;
  } else if (Begins(text, "Ordem ")) {
    label.order = text.substr(6);
  } else if (Begins(text, "ROLO ")) {
    label.roll = text.substr(5);
    caption = "DESCRICAO";
  } else if (text == "PESO LÍQUIDO" || text == "LOTE" || text == "PEÇAS" || text == "DEFEITOS") {
    caption = text;
  } else if (caption == "DESCRICAO") {
    caption = "CODIGO";
  } else if (caption == "DEFEITOS") {
    label.defects.push_back(text);
  } else if (std::string* const value = caption == "CODIGO"         ? &label.code
                                        : caption == "PESO LÍQUIDO" ? &label.weight
                                        : caption == "LOTE"         ? &label.lot
                                                                    : nullptr) {
    *value = text;
    caption.clear();
  }
}

ZplLabel ReadLabel(std::string_view commands) {
  ZplLabel label;
  std::string caption;
  for (std::size_t at = 0; (at = commands.find("^FO", at)) != std::string_view::npos;) {
    const std::size_t end = commands.find(kTextEnd, at);
    if (end == std::string_view::npos) throw std::runtime_error("a label's field has no end");
    const std::string_view field = commands.substr(at, end - at);
    const std::size_t text = field.find(kText);
    if (text != std::string_view::npos) {
      Take(field.substr(0, text), Plain(field.substr(text + kText.size())), caption, label);
    }
    at = end;
  }
  return label;
}

}  // namespace

std::vector<ZplLabel> ReadZplLabels(std::string_view bytes) {
  std::vector<ZplLabel> labels;
  while (!bytes.empty()) {
    const std::size_t end = bytes.find(kEnd);
    if (!Begins(bytes, kStart) || end == std::string_view::npos || bytes.find(kStart, 1) < end) {
      throw std::runtime_error("no whole label: " + std::string(bytes.substr(0, 80)));
    }
    labels.push_back(ReadLabel(bytes.substr(0, end)));
    bytes.remove_prefix(end + kEnd.size());
  }
  return labels;
}

}  // namespace test
