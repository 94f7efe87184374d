#include "tool/Check.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "common/Error.h"
#include "database/Transaction.h"
#include "tool/Files.h"
#include "tool/JsonText.h"
#include "tool/Query.h"
#include "tool/RowCheck.h"
#include "tool/StructureCheck.h"

namespace ktrv::tool {
namespace {

std::vector<Finding> FindAll(database::Connection& connection, Console& console) {
  Structure structure = CheckStructure(connection);
  std::vector<Finding> findings = CheckRows(connection, structure, console);
  std::move(structure.Findings.begin(), structure.Findings.end(), std::back_inserter(findings));
  return findings;
}

void PrintText(const std::vector<Finding>& findings, std::ostream& out) {
  for (const Finding& finding : findings) {
    out << ToUtf8(finding.What) << ": " << finding.Count << '\n';
    for (const String& example : finding.Examples) out << "    " << ToUtf8(example) << '\n';
    const auto shown = static_cast<std::int64_t>(finding.Examples.size());
    if (shown > 0 && finding.Count > shown) {
      out << "    and " << finding.Count - shown << " more\n";
    }
    out << "  " << ToUtf8(finding.Causes) << '\n';
    out << "  Repair: "
        << (finding.Repair.empty() ? "none; somebody has to decide." : ToUtf8(finding.Repair) + ".")
        << "\n\n";
  }
  if (findings.empty()) out << "Nothing is wrong.\n";
}

void PrintJson(const std::vector<Finding>& findings, std::ostream& out) {
  std::string json = "[";
  for (const Finding& finding : findings) {
    json += json.size() > 1 ? ",\n{" : "\n{";
    json += "\"code\": \"" + finding.Code + "\", \"count\": " + std::to_string(finding.Count) +
            ", \"what\": ";
    AppendJson(json, finding.What);
    json += ", \"causes\": ";
    AppendJson(json, finding.Causes);
    json += ", \"repair\": ";
    AppendJsonOrNull(
        json, finding.Repair.empty() ? std::nullopt : std::optional<StringView>(finding.Repair));
    json += ", \"examples\": [";
    for (std::size_t index = 0; index < finding.Examples.size(); ++index) {
      if (index > 0) json += ", ";
      AppendJson(json, finding.Examples[index]);
    }
    json += "]}";
  }
  out << json << (findings.empty() ? "]\n" : "\n]\n");
}

void Print(const std::vector<Finding>& findings, Console& console) {
  console.Json ? PrintJson(findings, console.Out) : PrintText(findings, console.Out);
}

bool IsRepairable(const Finding& finding) {
  return !finding.Repair.empty();
}

bool IsAgreed(Console& console) {
  console.Messages << "Repair what can be repaired? [y/N] " << std::flush;
  std::string answer;
  std::getline(console.In, answer);
  return answer.starts_with('y') || answer.starts_with('Y');
}

/// The file for the rows that a repair removes or changes.
class FormerRows {
 public:
  /// \param name in UTF-8. \throws Error if it cannot be written
  explicit FormerRows(const std::string& name)
      : name_(name),
        isLineOpen_(EndsWithinALine(name)),
        file_(PathOf(name), std::ios::binary | std::ios::app) {
    if (!file_) throw CannotWrite(u"nothing was repaired");
  }

  /// Appends rows. \return false if that fails; what it has appended is taken back
  bool Append(const std::vector<std::string>& rows) {
    std::error_code ignored;
    const auto size = std::filesystem::file_size(PathOf(name_), ignored);
    if (isLineOpen_ && !rows.empty()) file_ << '\n';
    for (const std::string& row : rows) file_ << row << '\n';
    file_.close();
    if (file_) return true;
    std::filesystem::resize_file(PathOf(name_), size, ignored);
    return false;
  }

  Error CannotWrite(StringView consequence) const {
    return Error(ErrorNumber::DriverFailure,
                 u"The file " + FromUtf8(name_) + u" cannot be written; " + String(consequence));
  }

 private:
  static bool EndsWithinALine(const std::string& name) {
    std::ifstream file(PathOf(name), std::ios::binary);
    file.seekg(-1, std::ios::end);
    const int last = file.get();
    return file && last != '\n';
  }

  std::string name_;
  bool isLineOpen_;
  std::ofstream file_;
};

void TellRepaired(const Finding& finding, const Mended& mended, Console& console) {
  console.Messages << "repaired " << finding.Code << ": " << mended.Count << '\n';
}

void TellFormer(const std::vector<std::string>& rows, const std::string& file, Console& console) {
  console.Messages << "former rows that are not in " << file << ":\n";
  for (const std::string& row : rows) console.Messages << row << '\n';
}

void TellFile(const std::string& file, Console& console) {
  console.Messages << "the former rows are in " << file << '\n';
}

void RepairRows(const CheckOptions& options, const Structure& structure, Book& book,
                Console& console) {
  // Again: somebody may have worked since the question.
  std::vector<Finding> findings = CheckRows(book.Connection, structure, console);
  std::erase_if(findings, [](const Finding& finding) { return !IsRepairable(finding); });
  if (findings.empty()) return;
  FormerRows file(options.Removed);
  const bool rollsBack =
      RollsBackRows(book.Connection, u"'SMS_ABCONTACTS', 'SMS_ABGROUPS', 'SMS_ABGROUPMAPS'");
  std::vector<Mended> mended(findings.size());
  std::vector<std::string> former;
  const auto collect = [&] {
    for (Mended& each : mended) std::ranges::move(each.Former, std::back_inserter(former));
  };
  // It begins with the statements that change rows: each tests again what it needs, as of now. If
  // queries came first, MariaDB would refuse to change what another user changed since.
  database::Transaction transaction(book.Connection);
  try {
    for (std::size_t at = 0; at < findings.size(); ++at) {
      findings[at].Mend(book.Connection, mended[at]);
    }
  } catch (...) {
    if (!transaction.RollBack() || !rollsBack) {
      collect();
      console.Messages << "the repair may be stored in part\n";
      if (!file.Append(former)) {
        TellFormer(former, options.Removed, console);
      } else if (!former.empty()) {
        TellFile(options.Removed, console);
      }
    }
    throw;
  }
  collect();
  if (!file.Append(former)) {
    if (transaction.RollBack() && rollsBack) throw file.CannotWrite(u"nothing was repaired");
    TellFormer(former, options.Removed, console);
    throw file.CannotWrite(u"the repair may not be undone");
  }
  transaction.Commit();
  for (std::size_t at = 0; at < findings.size(); ++at) {
    TellRepaired(findings[at], mended[at], console);
  }
  if (!former.empty()) TellFile(options.Removed, console);
}

void RepairStructure(const Structure& structure, Book& book, Console& console) {
  for (const Finding& finding : structure.Findings) {
    if (!IsRepairable(finding)) continue;
    database::Transaction transaction(book.Connection);
    Mended mended;
    finding.Mend(book.Connection, mended);
    transaction.Commit();
    TellRepaired(finding, mended, console);
  }
}

void Repair(const CheckOptions& options, Book& book, Console& console) {
  // Before the rows' transaction: some engines end it when a table is missing, or by a CREATE.
  const Structure structure = CheckStructure(book.Connection);
  RepairRows(options, structure, book, console);
  RepairStructure(structure, book, console);
}

}  // namespace

int Check(const CheckOptions& options, Book& book, Console& console) {
  std::vector<Finding> findings = FindAll(book.Connection, console);
  const bool repairable = std::any_of(findings.begin(), findings.end(), IsRepairable);
  if (!options.Repair || !repairable) {
    Print(findings, console);
    return findings.empty() ? ExitCode::Done : ExitCode::Failed;
  }
  if (!options.Yes) {
    PrintText(findings, console.Messages);
    if (!console.IsInteractive) {
      console.Messages << "addressbook: a repair that cannot ask needs --yes\n";
      return ExitCode::Usage;
    }
    if (!IsAgreed(console)) {
      if (console.Json) PrintJson(findings, console.Out);
      return ExitCode::Failed;
    }
  }
  Repair(options, book, console);
  findings = FindAll(book.Connection, console);
  Print(findings, console);
  return findings.empty() ? ExitCode::Done : ExitCode::Failed;
}

}  // namespace ktrv::tool
