#include "forms/folder/FolderCommands.h"

#include <utility>

#include "data/Dialect.h"

namespace ktrv::forms {
namespace {

using data::FolderQueries::ParameterKind;
using database::DataType;

DataType TypeOf(ParameterKind kind, StringView dialectWord) {
  switch (kind) {
    case ParameterKind::Integer:
      return DataType::Integer;
    case ParameterKind::NarrowText:
      return DataType::VarChar;
    case ParameterKind::DialectText:
      break;
  }
  return data::WantsNarrowText(dialectWord) ? DataType::VarChar : DataType::VarWChar;
}

}  // namespace

void FolderCommands::Prepare() {
  const auto& definitions = data::FolderQueries::All();
  for (std::size_t index = 0; index < definitions.size(); ++index) {
    database::Command command;
    command.SetActiveConnection(database_.Connection.get());
    command.SetCommandText(String(definitions[index].Text));
    for (const auto& parameter : definitions[index].Parameters) {
      command.Append(String(parameter.Name), TypeOf(parameter.Kind, database_.DbType),
                     parameter.Size);
    }
    command.Prepared = true;
    commands_[index] = std::move(command);
  }
}

const database::Command& FolderCommands::At(FolderCommand name) const {
  const auto& command = commands_[static_cast<std::size_t>(name)];
  if (!command) {
    throw Error(ErrorNumber::ObjectNotSet, u"Object variable or With block variable not set");
  }
  return *command;
}

database::Recordset FolderCommands::Execute(FolderCommand name, std::vector<Variant> values) {
  At(name);
  database_.Open();
  return commands_[static_cast<std::size_t>(name)]->Execute(std::move(values));
}

}  // namespace ktrv::forms
