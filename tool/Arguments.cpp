#include "tool/Arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <memory>
#include <sstream>

#include "common/Passwords.h"
#include "tool/Check.h"
#include "tool/Create.h"
#include "tool/Export.h"
#include "tool/Listing.h"
#include "tool/import/Import.h"

namespace ktrv::tool {
namespace {

constexpr const char* kFooter =
    "The connection string is taken from --connect, --connect-file, or the environment variable\n"
    "ADDRESSBOOK_CONNECT.\n"
    "Exit codes: 0 done; 1 failed, or something remains to be mended; 2 wrong arguments.";

/// The command with its options.
template <class Options>
Command With(int (*run)(const Options&, Book&, Console&), const Options& options) {
  return [run, options](Book& book, Console& console) { return run(options, book, console); };
}

void AddCommonOptions(CLI::App& app, Arguments& parsed) {
  auto* connect =
      app.add_option("--connect", parsed.Connect, "ODBC connection string")->type_name("STRING");
  app.add_option("--connect-file", parsed.ConnectFile,
                 "file that contains the connection string; only its owner may be able to read it")
      ->type_name("FILE")
      ->excludes(connect);
  app.add_option("--dialect", parsed.Dialect,
                 "dialect of the query texts; default: ORACLE on Oracle, else SQL")
      ->check(CLI::IsMember({"SQL", "ORACLE"}, CLI::ignore_case));
  app.add_flag("--json", parsed.Json, "results as JSON");
}

void AddListing(CLI::App& app, Arguments& parsed) {
  auto* list = app.add_subcommand("list", "Lists the contacts and groups outside any folder");
  auto listing = std::make_shared<ListOptions>();
  list->add_option("--folder", listing->Folder, "of this folder instead: its name, or #ID");
  list->callback([&parsed, listing] { parsed.Run = With(List, *listing); });

  auto* show = app.add_subcommand("show", "Shows all columns of a contact");
  auto showing = std::make_shared<ShowOptions>();
  show->add_option("ID", showing->ContactId, "id of the contact")->required();
  show->callback([&parsed, showing] { parsed.Run = With(Show, *showing); });

  app.add_subcommand("folders", "Lists the folders")->callback([&parsed] { parsed.Run = Folders; });
  app.add_subcommand("groups", "Lists the groups")->callback([&parsed] { parsed.Run = Groups; });

  auto* members = app.add_subcommand("members", "Lists the members of a group");
  auto membersOf = std::make_shared<MembersOptions>();
  members->add_option("GROUP", membersOf->Group, "name of the group, or #ID")->required();
  members->add_flag("--expand", membersOf->Expand, "as the recipients of a message to the group");
  members->callback([&parsed, membersOf] { parsed.Run = With(Members, *membersOf); });
}

void AddExport(CLI::App& app, Arguments& parsed) {
  static const std::map<std::string, FileFormat> kFormats = {{"csv", FileFormat::Csv},
                                                             {"vcard", FileFormat::VCard4},
                                                             {"vcard3", FileFormat::VCard3},
                                                             {"json", FileFormat::Json}};
  auto* command = app.add_subcommand("export", "Writes contacts to a file; by default all");
  auto options = std::make_shared<ExportOptions>();
  auto* folder = command->add_option("--folder", options->Folder, "of this folder: name, or #ID");
  auto* group = command->add_option("--group", options->Group, "of this group: name, or #ID")
                    ->excludes(folder);
  command->add_flag("--all")->description("all contacts")->excludes(folder)->excludes(group);
  command->add_option("--format", options->Format, "csv, vcard (4.0), vcard3 (3.0) or json")
      ->transform(CLI::CheckedTransformer(kFormats, CLI::ignore_case).description(""));
  command->add_option("--output", options->Output, "the file; by default standard output");
  command->add_flag("--bom", options->ByteOrderMark, "start CSV with a byte order mark");
  command->callback([&parsed, options] { parsed.Run = With(Export, *options); });
}

void AddImportFormat(CLI::App& command, ImportOptions& options) {
  command
      .add_option_function<std::string>(
          "--encoding",
          [&options](const std::string& name) {
            options.Format.Encoding = EncodingOf(FromUtf8(name));
            if (!options.Format.Encoding) throw CLI::ValidationError("--encoding", name);
          },
          "utf-8, utf-16le, utf-16be or windows-1252; by default found out")
      ->type_name("NAME");
  command
      .add_option_function<std::string>(
          "--delimiter",
          [&options](const std::string& name) {
            const String unit = name == "tab" ? String(u"\t") : FromUtf8(name);
            if (unit.size() != 1) throw CLI::ValidationError("--delimiter", "takes one character");
            options.Format.Delimiter = unit[0];
          },
          "of CSV: a character, or tab; by default found out")
      ->type_name("CHARACTER");
  command
      .add_option("--map", options.Format.Mapped,
                  "of CSV: a heading and its column, as in \"Tel=MOBILENO\"; more than once")
      ->type_name("HEADING=COLUMN")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  static const std::map<std::string, DateOrder> kOrders = {{"mdy", DateOrder::MonthFirst},
                                                           {"dmy", DateOrder::DayFirst}};
  command.add_option("--dates", options.Dates, "how dates like 4/5/1990 are meant: mdy or dmy")
      ->transform(CLI::CheckedTransformer(kOrders, CLI::ignore_case).description(""));
}

void AddImport(CLI::App& app, Arguments& parsed) {
  static const std::map<std::string, Duplicates> kDuplicates = {
      {"skip", Duplicates::Skip}, {"merge", Duplicates::Merge}, {"add", Duplicates::Add}};
  auto* command = app.add_subcommand("import", "Adds the contacts of a CSV file or of vCards");
  auto options = std::make_shared<ImportOptions>();
  command->add_option("FILE", options->File, "CSV or vCards; recognised by its contents")
      ->required();
  command->add_option("--folder", options->Folder, "put them into this folder: name, or #ID");
  command->add_option("--group", options->Group, "make them members of this group: name, or #ID");
  command->add_flag("--dry-run", options->DryRun, "only tell what would happen");
  command
      ->add_option("--duplicates", options->OfDuplicates,
                   "contacts that are there: skip, merge (fill their gaps) or add")
      ->transform(CLI::CheckedTransformer(kDuplicates, CLI::ignore_case).description(""));
  command->add_option("--rejects", options->Rejects,
                      "file for rows that are not imported; by default beside FILE");
  AddImportFormat(*command, *options);
  command->callback([&parsed, options] { parsed.Run = With(Import, *options); });
}

void AddCreate(CLI::App& app, Arguments& parsed) {
  auto* command = app.add_subcommand("create", "Creates the tables of the address book");
  auto options = std::make_shared<CreateOptions>();
  command->add_flag("--host-tables", options->HostTables,
                    "also stand-ins for the tables of the host, for experiments");
  command->callback([&parsed, options] {
    parsed.Run = With(Create, *options);
    parsed.CreatesDatabase = true;
  });
}

void AddCheck(CLI::App& app, Arguments& parsed) {
  auto* command = app.add_subcommand("check", "Tells what is wrong with the address book");
  auto options = std::make_shared<CheckOptions>();
  auto* repair = command->add_flag("--repair", options->Repair, "repair what can be repaired");
  command->add_flag("--yes", options->Yes, "without asking")->needs(repair);
  command
      ->add_option("--removed", options->Removed,
                   "file for the rows that a repair removes or changes")
      ->needs(repair)
      ->capture_default_str();
  command->callback([&parsed, options] { parsed.Run = With(Check, *options); });
}

/// Prints what the arguments ask for, or what is wrong with them. \return the exit code
int Tell(const CLI::App& app, const CLI::ParseError& error, Console& console) {
  std::ostringstream complaint;
  const bool asked = app.exit(error, console.Out, complaint) == 0;
  console.Messages << ToUtf8(HidePasswords(FromUtf8(complaint.str())));
  return asked ? ExitCode::Done : ExitCode::Usage;
}

/// Tells of arguments that nothing takes. One that is no option may be a part of a connection
/// string, so it is not repeated.
int TellUnexpected(const std::vector<std::string>& arguments, Console& console) {
  console.Messages << "unexpected arguments:";
  for (const std::string& argument : arguments) {
    const bool isOption = argument.starts_with("--");
    console.Messages << ' ' << (isOption ? argument.substr(0, argument.find('=')) : "...");
  }
  console.Messages << "\nRun with --help for more information.\n";
  return ExitCode::Usage;
}

}  // namespace

std::variant<Arguments, int> ParseArguments(std::vector<std::string> arguments, Console& console) {
  CLI::App app("Lists, imports, exports, checks and creates the shared address book.",
               "addressbook");
  Arguments parsed;
  app.footer(kFooter);
  app.set_version_flag("--version", "addressbook " KTRV_VERSION);
  app.require_subcommand(1);
  app.fallthrough();
  AddCommonOptions(app, parsed);
  AddListing(app, parsed);
  AddExport(app, parsed);
  AddImport(app, parsed);
  AddCreate(app, parsed);
  AddCheck(app, parsed);
  std::reverse(arguments.begin(), arguments.end());  // as CLI11 takes them
  try {
    app.parse(arguments);
  } catch (const CLI::ExtrasError&) {
    return TellUnexpected(app.remaining(true), console);
  } catch (const CLI::ParseError& error) {
    return Tell(app, error, console);
  }
  return parsed;
}

}  // namespace ktrv::tool
