#include "tool/RowPrinter.h"

#include <algorithm>
#include <utility>

#include "tool/JsonText.h"
#include "tool/Utf8.h"

namespace ktrv::tool {
namespace {

constexpr std::size_t kRowsForWidths = 200;

/// The characters of a text in UTF-8.
std::size_t Characters(const std::string& text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

/// The text on one line: control characters become blanks.
std::string OneLine(std::optional<StringView> cell) {
  std::string text;
  AppendUtf8(text, cell.value_or(StringView()));
  const auto isControl = [](char unit) {
    const auto byte = static_cast<unsigned char>(unit);
    return byte < 0x20 || byte == 0x7F;
  };
  std::replace_if(text.begin(), text.end(), isControl, ' ');
  return text;
}

std::string LowerCase(std::string text) {
  for (char& letter : text) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter + ('a' - 'A'));
  }
  return text;
}

}  // namespace

RowPrinter::RowPrinter(Console& console, std::vector<std::string> names)
    : console_(console), names_(std::move(names)) {}

void RowPrinter::Print(const std::vector<std::optional<StringView>>& cells) {
  if (console_.Json) return PrintJson(cells);
  std::vector<std::string> line;
  line.reserve(cells.size());
  for (const auto& cell : cells) line.push_back(OneLine(cell));
  if (!widths_.empty()) return PrintLine(line);
  held_.push_back(std::move(line));
  if (held_.size() == kRowsForWidths) PrintHeld();
}

void RowPrinter::Finish() {
  if (console_.Json) {
    console_.Out << (isFirst_ ? "[]\n" : "\n]\n");
  } else if (widths_.empty()) {
    PrintHeld();
  }
}

void RowPrinter::PrintJson(const std::vector<std::optional<StringView>>& cells) {
  std::string json = std::exchange(isFirst_, false) ? "[\n{" : ",\n{";
  for (std::size_t column = 0; column < cells.size(); ++column) {
    json += column == 0 ? "\"" : ", \"";
    json += LowerCase(names_[column]) + "\": ";
    AppendJsonOrNull(json, cells[column]);
  }
  console_.Out << json << '}';
  console_.Written = JsonPart::Rows;
}

void RowPrinter::PrintHeld() {
  held_.insert(held_.begin(), names_);
  widths_.assign(names_.size(), 0);
  for (const auto& line : held_) {
    for (std::size_t column = 0; column < line.size(); ++column) {
      widths_[column] = std::max(widths_[column], Characters(line[column]));
    }
  }
  for (const auto& line : std::exchange(held_, {})) PrintLine(line);
}

void RowPrinter::PrintLine(const std::vector<std::string>& cells) {
  std::string text;
  for (std::size_t column = 0; column < cells.size(); ++column) {
    text += cells[column];
    const std::size_t width = Characters(cells[column]);
    if (width < widths_[column]) text.append(widths_[column] - width, ' ');
    text += "  ";
  }
  text.erase(text.find_last_not_of(' ') + 1);
  console_.Out << text << '\n';
}

}  // namespace ktrv::tool
