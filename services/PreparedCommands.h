#pragma once

#include <utility>
#include <vector>

#include "data/CommandText.h"
#include "data/Dialect.h"
#include "database/Command.h"
#include "services/BookDatabase.h"

namespace ktrv {

/// The prepared statements of one window on its connection, which is opened if necessary. Call
/// Prepare first. The engine prepares each statement on its first execution, so a text that it
/// rejects fails only there. Connection replaces a stale link.
/// \param Name enumerates the texts, in their order
template <class Name>
class PreparedCommands {
 public:
  /// \param database must outlive the commands.
  explicit PreparedCommands(BookDatabase& database) : database_(database) {}

  void Prepare(const std::vector<data::CommandText>& texts) {
    std::vector<database::Command> commands(texts.size());  // all or none
    auto* command = commands.data();
    for (const data::CommandText& text : texts) {
      command->SetActiveConnection(database_.Connection.get());
      command->SetCommandText(text.Text);
      command->Prepared = true;
      for (const auto& parameter : text.Parameters) {
        command->Append(String(parameter.Name), TypeOf(parameter.Kind), parameter.Size);
      }
      ++command;
    }
    commands_ = std::move(commands);
  }
  /// Releases the commands and the connection.
  void Release() { commands_.clear(); }
  bool ArePrepared() const { return !commands_.empty(); }

  /// \throws Error ObjectNotSet before Prepare
  const database::Command& At(Name name) const { return commands_[IndexOf(name)]; }

  /// Executes the statement with one value per parameter. \throws Error as At and
  /// database::Command::Execute do
  database::Recordset Execute(Name name, std::vector<Variant> values = {}) {
    return Connected(name).Execute(std::move(values));
  }

  /// Executes the statement for many rows, each with one value per parameter.
  /// \throws Error as At and database::Command::ExecuteTogether do
  database::Command::Together ExecuteTogether(Name name, std::vector<std::vector<Variant>> rows) {
    return Connected(name).ExecuteTogether(std::move(rows));
  }

  /// The first column of the first row; 0 when there is no row.
  std::int64_t Count(Name name, const Variant& value) {
    const database::Recordset rows = Execute(name, {value});
    return rows.EndOfFile() ? 0 : ToInteger(rows.Field(rows.Columns().front().Name));
  }

 private:
  database::Command& Connected(Name name) {
    database::Command& command = commands_[IndexOf(name)];
    database_.Open();
    return command;
  }
  std::size_t IndexOf(Name name) const {
    if (commands_.empty()) {
      throw Error(ErrorNumber::ObjectNotSet);
    }
    return static_cast<std::size_t>(name);
  }
  database::DataType TypeOf(data::ParameterKind kind) const {
    using database::DataType;
    if (kind == data::ParameterKind::Integer) return DataType::Integer;
    const bool narrow =
        kind == data::ParameterKind::NarrowText || data::WantsNarrowText(database_.DbType);
    return narrow ? DataType::VarChar : DataType::VarWChar;
  }

  BookDatabase& database_;
  std::vector<database::Command> commands_;
};

}  // namespace ktrv
