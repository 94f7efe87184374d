#include "tool/Check.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "common/Error.h"
#include "database/Transaction.h"
#include "tool/Files.h"
#include "tool/JsonText.h"
#include "tool/RowCheck.h"
#include "tool/StructureCheck.h"

namespace ktrv::tool {
namespace {

/// The findings on rows come first: their repair is one transaction, and on some engines a CREATE
/// ends it.
std::vector<Finding> FindAll(database::Connection& connection, Structure structure) {
  std::vector<Finding> findings = CheckRows(connection, structure);
  std::move(structure.Findings.begin(), structure.Findings.end(), std::back_inserter(findings));
  return findings;
}

std::vector<Finding> FindAll(database::Connection& connection) {
  return FindAll(connection, CheckStructure(connection));
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

/// Appends the rows that a repair removes or changes. \throws Error
void WriteLost(const std::vector<Finding>& findings, const std::string& name) {
  std::ofstream file(PathOf(name), std::ios::binary | std::ios::app);
  for (const Finding& finding : findings) {
    if (!IsRepairable(finding)) continue;
    for (const std::string& row : finding.Lost) file << row << '\n';
  }
  file.close();
  if (!file) {
    throw Error(ErrorNumber::DriverFailure,
                u"The file " + FromUtf8(name) + u" cannot be written; nothing was repaired");
  }
}

void Repair(const CheckOptions& options, Book& book, Console& console) {
  // Before the transaction: some engines end it when a table is missing.
  Structure structure = CheckStructure(book.Connection);
  database::Transaction transaction(book.Connection);
  // Again: somebody may have worked since the question.
  const std::vector<Finding> findings = FindAll(book.Connection, std::move(structure));
  const bool anyLost = std::any_of(findings.begin(), findings.end(),
                                   [](const Finding& finding) { return !finding.Lost.empty(); });
  if (anyLost) WriteLost(findings, options.Removed);
  for (const Finding& finding : findings) {
    if (IsRepairable(finding)) finding.Mend(book.Connection);
  }
  transaction.Commit();
  for (const Finding& finding : findings) {
    if (IsRepairable(finding)) {
      console.Messages << "repaired " << finding.Code << ": " << finding.Count << '\n';
    }
  }
  if (anyLost) {
    console.Messages << "the former rows are in " << options.Removed << '\n';
  }
}

}  // namespace

int Check(const CheckOptions& options, Book& book, Console& console) {
  std::vector<Finding> findings = FindAll(book.Connection);
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
    if (!IsAgreed(console)) return ExitCode::Failed;
  }
  Repair(options, book, console);
  findings = FindAll(book.Connection);
  Print(findings, console);
  return findings.empty() ? ExitCode::Done : ExitCode::Failed;
}

}  // namespace ktrv::tool
