#include "tool/import/Import.h"

#include <algorithm>

#include "common/Error.h"
#include "data/ImportQueries.h"
#include "tool/Files.h"
#include "tool/JsonText.h"
#include "tool/Progress.h"
#include "tool/Query.h"
#include "tool/import/BlockWriter.h"
#include "tool/import/DuplicateIndex.h"
#include "tool/import/ImportPlaces.h"
#include "tool/import/RejectsFile.h"

namespace ktrv::tool {
namespace {

using data::ContactText;

constexpr std::size_t kUnitsOfBlock = std::size_t{4} * 1024 * 1024;  ///< of rows kept for rejects

DuplicateIndex::Person PersonOf(const Contact& contact) {
  return {contact.Text(ContactText::FirstName), contact.Text(ContactText::MiddleName),
          contact.Text(ContactText::LastName),  contact.Text(ContactText::CountryCode),
          contact.Text(ContactText::MobileNo),  contact.Text(ContactText::Email)};
}

/// The current row of a query for people.
DuplicateIndex::Person PersonOf(const Query& query) {
  return {query.Text(1), query.Text(2), query.Text(3), query.Text(4), query.Text(5), query.Text(6)};
}

std::filesystem::path RejectsPath(const ImportOptions& options) {
  if (options.Rejects.empty()) {
    return options.DryRun ? std::filesystem::path() : RejectsFile::PathBeside(PathOf(options.File));
  }
  std::filesystem::path path = PathOf(options.Rejects);
  if (std::filesystem::exists(path)) {
    throw Error(ErrorNumber::InvalidArgument,
                u"The file of rejects exists already: " + FromUtf8(options.Rejects));
  }
  return path;
}

/// Results for people, or as JSON.
class Report {
 public:
  Report(const ImportOptions& options, Console& console) : options_(options), console_(console) {}

  void Begin() {
    if (console_.Json) console_.Out << "{\"rejected\": [";
  }
  void Reject(std::int64_t line, StringView reason) {
    if (console_.Json) {
      console_.Out << (rejected_ == 0 ? "\n" : ",\n") << JsonOf(line, "reason", reason);
    } else {
      Tell(line, reason);
    }
    ++rejected_;
  }
  void Note(std::int64_t line, StringView text) {
    if (!console_.Json) return Tell(line, text);
    notes_ += (notes_.empty() ? "\n" : ",\n") + JsonOf(line, "text", text);
  }
  /// Also with JSON a message for people.
  void Tell(std::int64_t line, StringView text) {
    console_.Messages << (console_.IsInteractive ? "\r" : "") << options_.File << ':' << line
                      << ": " << ToUtf8(text) << '\n';
  }
  void LeftOut(const std::vector<String>& headings) {
    if (headings.empty()) return;
    console_.Messages << "not imported:";
    for (const String& heading : headings) {
      console_.Messages << (&heading == headings.data() ? " " : ", ") << ToUtf8(heading);
    }
    console_.Messages << '\n';
  }
  void Finish(const std::filesystem::path& rejects) {
    if (console_.Json) return PrintJsonMembers("}\n");
    console_.Out << (options_.DryRun ? "would add " : "added ") << Added;
    if (options_.OfDuplicates == Duplicates::Merge) console_.Out << ", merged " << Merged;
    console_.Out << ", skipped " << Skipped << " duplicates, rejected " << rejected_ << '\n';
    if (rejected_ > 0 && !rejects.empty()) {
      console_.Out << "rejected rows are in " << ToUtf8(rejects.u16string()) << '\n';
    }
  }
  /// Instead of Finish, if an error ends the import.
  void Break() {
    if (!console_.Json) return;
    PrintJsonMembers(",\n");
    console_.Written = JsonPart::Members;
  }
  bool HasRejects() const { return rejected_ > 0; }

  std::int64_t Added = 0;
  std::int64_t Merged = 0;
  std::int64_t Skipped = 0;

 private:
  /// Those after the rows.
  void PrintJsonMembers(const char* end) {
    console_.Out << "],\n\"notes\": [" << notes_ << "],\n\"added\": " << Added
                 << ", \"merged\": " << Merged << ", \"skipped\": " << Skipped << end;
  }
  static std::string JsonOf(std::int64_t line, const std::string& name, StringView text) {
    std::string json = "{\"line\": " + std::to_string(line) + ", \"" + name + "\": ";
    AppendJson(json, text);
    return json + '}';
  }

  const ImportOptions& options_;
  Console& console_;
  std::string notes_;  ///< as JSON
  std::int64_t rejected_ = 0;
};

class Importer {
 public:
  Importer(const ImportOptions& options, Book& book, Console& console)
      : options_(options),
        connection_(book.Connection),
        rejects_(RejectsPath(options)),
        file_(OpenImportFile(PathOf(options.File), options.Format)),
        places_(book.Connection, !options.DryRun),
        writer_(book.Connection),
        progress_(console, "read"),
        report_(options, console) {
    progress_.Percent = [this] { return file_->Percent(); };
    writer_.FindsAllIds = options.OfDuplicates == Duplicates::Merge;
    if (!options.Folder.empty()) folder_ = places_.ChosenFolder(options.Folder);
    if (!options.Group.empty()) group_ = places_.ChosenGroup(options.Group);
  }

  int Run() {
    report_.LeftOut(file_->LeftOut());
    rejects_.Open(file_->Head());
    report_.Begin();
    try {
      ImportRows();
    } catch (...) {
      report_.Break();
      throw;
    }
    progress_.Finish(rows_);
    report_.Finish(rejects_.Path());
    return report_.HasRejects() ? ExitCode::Failed : ExitCode::Done;
  }

 private:
  void ImportRows() {
    if (options_.OfDuplicates != Duplicates::Add) ReadPeople();
    for (ImportRow row; file_->Next(row);) {
      Take(row);
      progress_.Count(++rows_);
      if (block_.size() >= options_.RowsOfBlock || blockUnits_ >= kUnitsOfBlock) WriteBlock();
    }
    WriteBlock();
    rejects_.Close();
  }

  void ReadPeople() {
    Query query(connection_, data::ImportQueries::kPeople);
    while (query.Next()) {
      const std::int64_t id = ToInteger(String(query.Text(0)));
      people_.Add(PersonOf(query), id);
      newest_ = std::max(newest_, id);
      ++stored_;
    }
  }

  /// Blocks were stored without finding the ids, because nothing needed them. Not called twice.
  void FindIdsOfAdded() {
    writer_.FindsAllIds = true;
    Query query(connection_, data::ImportQueries::PeopleAfter(ToDecimal(newest_)));
    while (query.Next()) {
      const auto known = people_.Find(PersonOf(query));
      if (known && people_.IdOf(*known) == DuplicateIndex::kUnknown) {
        people_.SetId(*known, ToInteger(String(query.Text(0))));
      }
    }
  }

  void Reject(std::int64_t line, StringView raw, StringView reason) {
    report_.Reject(line, reason);
    rejects_.Add(raw);
  }

  void Take(const ImportRow& row) {
    if (!row.Problem.empty()) return Reject(row.Line, row.Raw, row.Problem);
    CheckedContact checked = CheckContact(row.Values, options_.Dates);
    if (!checked.Refusal.empty()) return Reject(row.Line, row.Raw, checked.Refusal);
    if (String refusal = RefusalOfPlaces(row.Values); !refusal.empty()) {
      return Reject(row.Line, row.Raw, refusal);
    }
    for (const String& note : checked.Notes) report_.Note(row.Line, note);
    ImportEntry entry;
    entry.Line = row.Line;
    entry.Raw = row.Raw;
    entry.Values = std::move(checked.Cleaned);
    entry.FolderId = folder_ ? *folder_ : places_.FolderOf(row.Values.Folder);
    if (group_) entry.Groups.push_back(*group_);
    for (const String& name : row.Values.Groups) entry.Groups.push_back(places_.GroupOf(name));
    Place(std::move(entry));
  }

  String RefusalOfPlaces(const RawContact& contact) {
    for (const String& name : contact.Groups) {
      if (String refusal = ImportPlaces::RefusalOfGroup(name); !refusal.empty()) return refusal;
    }
    return folder_ ? String() : places_.RefusalOfFolder(contact.Folder);
  }

  /// Decides what becomes of a valid row.
  void Place(ImportEntry entry) {
    const DuplicateIndex::Person person = PersonOf(entry.Values);
    std::optional<std::size_t> known;
    if (options_.OfDuplicates != Duplicates::Add) known = people_.Find(person);
    if (!known) {
      if (options_.OfDuplicates != Duplicates::Add) {
        entry.Person = people_.Add(person);
        lines_.push_back(entry.Line);
        added_.emplace_back(entry.Person, block_.size());
      }
      return Put(std::move(entry));
    }
    const bool isMerged = options_.OfDuplicates == Duplicates::Merge;
    entry.What = isMerged ? ImportEntry::Kind::Merge : ImportEntry::Kind::Join;
    entry.Person = *known;
    if (!people_.HasName(*known, person)) report_.Note(entry.Line, WhoIs(*known));
    const bool needsId = !options_.DryRun && !entry.Groups.empty();
    if (needsId && people_.IdOf(*known) == DuplicateIndex::kUnknown) {
      FindIdsOfAdded();
      if (people_.IdOf(*known) == DuplicateIndex::kUnknown) {
        return Reject(entry.Line, entry.Raw, u"Another user has deleted the contact meanwhile");
      }
    }
    entry.Id = people_.IdOf(*known);
    if (entry.Id == DuplicateIndex::kNotStored) {
      const auto original =
          std::lower_bound(added_.begin(), added_.end(), std::pair(*known, std::size_t{0}));
      entry.Original = original->second;
      if (isMerged) FillGaps(block_[original->second].Values, entry.Values);
      entry.What = ImportEntry::Kind::Join;
    }
    (isMerged ? report_.Merged : report_.Skipped) += 1;
    const bool isNothing =
        entry.What == ImportEntry::Kind::Join && entry.Groups.empty() && !entry.Original;
    if (!isNothing) Put(std::move(entry));
  }

  /// A note that a row is taken for this person.
  String WhoIs(std::size_t known) {
    if (known >= stored_) {
      return u"taken for the contact of line " + ToDecimal(lines_[known - stored_]);
    }
    Query query(connection_, data::ImportQueries::NameOf(ToDecimal(people_.IdOf(known))));
    DuplicateIndex::Person person;
    if (query.Next()) person = {query.Text(0), query.Text(1), query.Text(2)};
    return u"taken for the contact \"" + person.FullName() + u"\"";
  }

  void Put(ImportEntry entry) {
    blockUnits_ += entry.Raw.size();
    block_.push_back(std::move(entry));
  }

  void WriteBlock() {
    if (!options_.DryRun && !block_.empty()) Write();
    Finish(block_.size());
    block_.clear();
    added_.clear();
    blockUnits_ = 0;
  }

  /// Counts the first entries of the block, which are written.
  void Finish(std::size_t count) {
    for (std::size_t at = 0; at < count; ++at) {
      const ImportEntry& entry = block_[at];
      const bool isAdded = entry.What == ImportEntry::Kind::Add;
      if (!entry.Refusal.empty()) {
        if (!isAdded) {
          (options_.OfDuplicates == Duplicates::Merge ? report_.Merged : report_.Skipped) -= 1;
        } else if (options_.OfDuplicates != Duplicates::Add) {
          people_.Remove(entry.Person);
        }
        Reject(entry.Line, entry.Raw, entry.Refusal);
      } else if (isAdded) {
        ++report_.Added;
        if (options_.OfDuplicates != Duplicates::Add) {
          people_.SetId(entry.Person, entry.Id > 0 ? entry.Id : DuplicateIndex::kUnknown);
        }
      }
    }
  }

  void Write() {
    try {
      writer_.Write(block_);
    } catch (const Error&) {
      NoteStop();
      Finish(writer_.Finished());
      throw;
    }
  }

  void NoteStop() {
    const std::size_t stop = writer_.Finished();
    String note = u"stopped here; ";
    if (options_.OfDuplicates != Duplicates::Add) {
      note += u"run the same import again to continue, what is stored is skipped";
    } else if (writer_.Unknown() == 0) {
      note += u"rows above this line are stored, and none from here on";
    } else {
      note += u"rows above this line are stored; whether those from here to line " +
              ToDecimal(block_[stop + writer_.Unknown() - 1].Line) +
              u" are, all or none of them, is unknown: look for them";
    }
    report_.Tell(block_[stop].Line, note);
  }

  const ImportOptions& options_;
  database::Connection& connection_;
  RejectsFile rejects_;
  std::unique_ptr<ImportFile> file_;
  ImportPlaces places_;
  BlockWriter writer_;
  Progress progress_;
  Report report_;
  std::optional<std::int64_t> folder_;
  std::optional<std::int64_t> group_;
  DuplicateIndex people_;
  std::int64_t newest_ = 0;  ///< id in the database at first
  std::size_t stored_ = 0;   ///< people in the database at first; then come those of the file
  std::vector<std::int64_t> lines_;  ///< of people of the file
  std::vector<ImportEntry> block_;
  std::size_t blockUnits_ = 0;
  std::vector<std::pair<std::size_t, std::size_t>> added_;  ///< person and place in the block
  std::int64_t rows_ = 0;
};

}  // namespace

int Import(const ImportOptions& options, Book& book, Console& console) {
  return Importer(options, book, console).Run();
}

}  // namespace ktrv::tool
