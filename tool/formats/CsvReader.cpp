#include "tool/formats/CsvReader.h"

#include <algorithm>
#include <array>

namespace ktrv::tool {
namespace {

constexpr char16_t kQuote = u'"';
constexpr StringView kSeparatorLine = u"sep=";

constexpr StringView kNotClosed = u"A quotation mark is not closed before the end of the file";
constexpr StringView kBehindQuote = u"Text follows a closing quotation mark";
constexpr StringView kTooLong = u"The record is too long. A quotation mark may be missing";
constexpr StringView kTooManyFields = u"The record has too many fields";

bool IsLineBreak(char16_t unit) {
  return unit == u'\n' || unit == u'\r';
}

}  // namespace

// CsvRecord

StringView CsvRecord::Text(std::size_t field) const {
  if (field >= fields_.size()) return {};
  return StringView(texts_).substr(fields_[field].Begin, fields_[field].End - fields_[field].Begin);
}

void CsvRecord::Clear() {
  Raw.clear();
  Problem = {};
  texts_.clear();
  fields_.clear();
}

/// Fills a record within its limits.
class CsvReader::Building {
 public:
  explicit Building(CsvRecord& record) : record_(record) {}

  void BeginField() { field_ = {record_.texts_.size(), record_.texts_.size(), false}; }
  void EndField() {
    field_.End = record_.texts_.size();
    if (record_.fields_.size() < kMostFields) {
      record_.fields_.push_back(field_);
    } else {
      Complain(kTooManyFields);
    }
  }
  void SetQuoted() { field_.IsQuoted = true; }
  /// Text of the field.
  void Add(StringView text) {
    if (AddSyntax(text)) record_.texts_ += text;
  }
  /// Quotation marks and delimiters. \return whether it was kept
  bool AddSyntax(StringView text) {
    if (record_.Raw.size() + text.size() > kLongest) {
      Complain(kTooLong);
      return false;
    }
    record_.Raw += text;
    return true;
  }
  /// The first problem counts.
  void Complain(StringView problem) {
    if (record_.Problem.empty()) record_.Problem = problem;
  }

 private:
  CsvRecord& record_;
  CsvRecord::Field field_;
};

// CsvReader

CsvReader::CsvReader(TextSource& source, char16_t delimiter)
    : source_(source), delimiter_(delimiter) {
  const bool isGiven = delimiter != 0;
  if (Fill() && !isGiven) delimiter_ = MostFrequentDelimiter();
  SkipSeparatorLine(isGiven);
}

bool CsvReader::Fill() {
  if (at_ < text_.size()) return true;
  at_ = 0;
  return source_.Next(text_);
}

/// The delimiter is found in the first part of the text, which is larger than any list of headings.
char16_t CsvReader::MostFrequentDelimiter() const {
  constexpr std::array kCandidates{u',', u';', u'\t', u'|'};
  std::array<std::size_t, kCandidates.size()> counts{};
  bool isQuoted = false;
  bool isEmpty = true;  // empty lines at the start do not count
  for (const char16_t unit : text_) {
    if (unit == kQuote) isQuoted = !isQuoted;
    if (!isQuoted && IsLineBreak(unit) && !isEmpty) break;
    if (!IsLineBreak(unit)) isEmpty = false;
    const auto* found = std::find(kCandidates.begin(), kCandidates.end(), unit);
    if (!isQuoted && found != kCandidates.end()) {
      ++counts[static_cast<std::size_t>(found - kCandidates.begin())];
    }
  }
  const auto* most = std::max_element(counts.begin(), counts.end());
  return kCandidates[static_cast<std::size_t>(most - counts.begin())];
}

/// Spreadsheets put "sep=;" before the first record to name the delimiter.
void CsvReader::SkipSeparatorLine(bool isGiven) {
  const StringView start = StringView(text_).substr(0, kSeparatorLine.size() + 2);
  if (!EqualsIgnoringCase(start.substr(0, kSeparatorLine.size()), kSeparatorLine)) return;
  const StringView rest = start.substr(std::min(kSeparatorLine.size(), start.size()));
  if (rest.empty() || IsLineBreak(rest[0]) || (rest.size() > 1 && !IsLineBreak(rest[1]))) return;
  if (!isGiven) delimiter_ = rest[0];
  at_ = kSeparatorLine.size() + 1;
  if (Fill()) SkipLineBreak();
}

bool CsvReader::IsAtLineBreak() {
  return Fill() && IsLineBreak(text_[at_]);
}

void CsvReader::SkipLineBreak() {
  ++line_;
  const bool mayBeTwo = text_[at_++] == u'\r';
  if (mayBeTwo && Fill() && text_[at_] == u'\n') ++at_;
}

bool CsvReader::Next(CsvRecord& record) {
  while (IsAtLineBreak()) SkipLineBreak();
  if (!Fill()) return false;
  record.Clear();
  record.Line = line_;
  Building building(record);
  for (;;) {
    ReadField(building);
    if (!Fill()) break;
    if (IsAtLineBreak()) {
      SkipLineBreak();
      break;
    }
    building.AddSyntax(StringView(&text_[at_++], 1));  // the delimiter
  }
  return true;
}

void CsvReader::ReadField(Building& building) {
  building.BeginField();
  if (Fill() && text_[at_] == kQuote && delimiter_ != kQuote) {
    building.SetQuoted();
    ReadQuoted(building);
  }
  ReadPlain(building);
  building.EndField();
}

void CsvReader::ReadQuoted(Building& building) {
  const StringView quote(&kQuote, 1);
  building.AddSyntax(quote);
  ++at_;
  bool isAfterCr = false;
  while (Fill()) {
    const std::size_t begin = at_;
    for (; at_ < text_.size() && text_[at_] != kQuote; ++at_) {
      if (text_[at_] == u'\r' || (text_[at_] == u'\n' && !isAfterCr)) ++line_;
      isAfterCr = text_[at_] == u'\r';
    }
    building.Add(StringView(text_).substr(begin, at_ - begin));
    if (at_ == text_.size()) continue;
    building.AddSyntax(quote);
    ++at_;
    isAfterCr = false;
    if (!Fill() || text_[at_] != kQuote) {
      // Blanks between the quotation mark and the delimiter belong to no field.
      while (Fill() && text_[at_] == u' ' && delimiter_ != u' ') {
        building.AddSyntax(u" ");
        ++at_;
      }
      if (Fill() && text_[at_] != delimiter_ && !IsLineBreak(text_[at_])) {
        building.Complain(kBehindQuote);
      }
      return;
    }
    building.Add(quote);
    ++at_;
  }
  building.Complain(kNotClosed);
}

void CsvReader::ReadPlain(Building& building) {
  while (Fill()) {
    const std::size_t begin = at_;
    while (at_ < text_.size() && text_[at_] != delimiter_ && !IsLineBreak(text_[at_])) ++at_;
    building.Add(StringView(text_).substr(begin, at_ - begin));
    if (at_ < text_.size()) return;
  }
}

}  // namespace ktrv::tool
