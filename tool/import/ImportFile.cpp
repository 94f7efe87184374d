#include "tool/import/ImportFile.h"

#include <algorithm>
#include <fstream>

#include "common/Error.h"
#include "tool/formats/CsvReader.h"
#include "tool/formats/VCardReader.h"
#include "tool/import/Headings.h"
#include "tool/import/OwnCard.h"

namespace ktrv::tool {
namespace {

void RequireReadable(const std::ifstream& stream) {
  if (stream.is_open() && !stream.bad()) return;
  throw Error(ErrorNumber::DriverFailure, u"The file to import cannot be read");
}

Encoding EncodingOfFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  RequireReadable(stream);
  const Encoding found = DetectEncoding(stream);
  RequireReadable(stream);
  return found;
}

/// The stream and its text.
class OpenFile {
 public:
  OpenFile(const std::filesystem::path& path, std::optional<Encoding> encoding)
      : size_(std::filesystem::exists(path) ? std::filesystem::file_size(path) : 0),
        stream_(path, std::ios::binary),
        source_(stream_, encoding.value_or(Encoding::Utf8)) {}

  TextSource& Source() { return source_; }
  void Check() const { RequireReadable(stream_); }
  int Percent() {
    const auto place = stream_.tellg();  // -1 at the end
    if (place < 0 || size_ == 0) return 100;
    return static_cast<int>(static_cast<std::uintmax_t>(place) * 100 / size_);
  }

 private:
  std::uintmax_t size_;
  std::ifstream stream_;
  TextSource source_;
};

class CsvFile final : public ImportFile {
 public:
  CsvFile(const std::filesystem::path& path, const ImportFormat& format)
      : file_(path, format.Encoding), reader_(file_.Source(), format.Delimiter) {
    CsvRecord headings;
    const bool isThere = reader_.Next(headings);
    file_.Check();
    if (!isThere) throw Error(ErrorNumber::InvalidArgument, u"The file to import is empty");
    if (!headings.Problem.empty()) {
      throw Error(ErrorNumber::InvalidArgument,
                  u"The headings cannot be read: " + String(headings.Problem));
    }
    head_ = headings.Raw + u"\r\n";
    headings_.emplace(headings, format.Mapped);
  }

  bool Next(ImportRow& row) override {
    do {
      if (!reader_.Next(record_)) {
        file_.Check();
        return false;
      }
    } while (record_.IsEmpty() && record_.Problem.empty());
    row.Line = record_.Line;
    row.Raw = record_.Raw;
    row.Problem = record_.Problem;
    if (row.Problem.empty()) row.Values = headings_->Read(record_);
    return true;
  }
  int Percent() override { return file_.Percent(); }
  StringView Head() const override { return head_; }
  std::vector<String> LeftOut() const override { return headings_->LeftOut(); }

 private:
  OpenFile file_;
  CsvReader reader_;
  CsvRecord record_;
  String head_;
  std::optional<Headings> headings_;
};

class CardFile final : public ImportFile {
 public:
  CardFile(const std::filesystem::path& path, const ImportFormat& format)
      : file_(path, format.Encoding), reader_(file_.Source()) {}

  bool Next(ImportRow& row) override {
    if (!reader_.Next(card_)) {
      file_.Check();
      return false;
    }
    row.Line = card_.Line;
    row.Raw = card_.Raw;
    row.Problem = card_.Problem;
    if (row.Problem.empty()) row.Values = ContactOf(card_);
    return true;
  }
  int Percent() override { return file_.Percent(); }
  StringView Head() const override { return {}; }

 private:
  OpenFile file_;
  VCardReader reader_;
  VCard card_;
};

bool BeginsWithCard(const std::filesystem::path& path, std::optional<Encoding> encoding) {
  OpenFile file(path, encoding);
  file.Check();
  constexpr StringView kBegin = u"BEGIN:VCARD";
  String start;
  file.Source().Next(start);
  const std::size_t first = std::min(start.find_first_not_of(u" \t\r\n"), start.size());
  return EqualsIgnoringCase(StringView(start).substr(first, kBegin.size()), kBegin);
}

}  // namespace

std::unique_ptr<ImportFile> OpenImportFile(const std::filesystem::path& path,
                                           const ImportFormat& format) {
  if (std::filesystem::exists(path) && !std::filesystem::is_regular_file(path)) {
    throw Error(ErrorNumber::InvalidArgument,
                u"What is to be imported is not a regular file; store it in one");
  }
  ImportFormat known = format;
  if (!known.Encoding) known.Encoding = EncodingOfFile(path);
  if (BeginsWithCard(path, known.Encoding)) return std::make_unique<CardFile>(path, known);
  return std::make_unique<CsvFile>(path, known);
}

}  // namespace ktrv::tool
