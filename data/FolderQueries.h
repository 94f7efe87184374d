#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "common/Text.h"

/// The prepared commands of the folder editor: their names, texts and parameters. The blanks in the
/// texts, and the category's size that differs between insert and update, are those that hosts
/// which watch their statements know.
namespace ktrv::data::FolderQueries {

enum class ParameterKind {
  Integer,
  NarrowText,   ///< narrow for every dialect
  DialectText,  ///< narrow for "MYSQL", wide for every other dialect
};

struct Parameter {
  StringView Name;
  ParameterKind Kind = ParameterKind::Integer;
  std::int64_t Size = 0;  ///< characters of a text
};

struct Command {
  StringView Name;
  StringView Text;
  std::vector<Parameter> Parameters;
};

/// Indices into All().
enum class Name : std::size_t {
  InsertFolder,
  UpdateFolder,
  NameExists,
  NameExistsOther,
  CategoryMapped,
  CategoryMappedOther,
  FolderById,
  FolderByName,
  Categories,
};

inline constexpr std::size_t kCount = 9;

const std::array<Command, kCount>& All();

}  // namespace ktrv::data::FolderQueries
