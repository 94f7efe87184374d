#pragma once

#include <vector>

#include "data/CommandText.h"

/// The prepared commands of the folder editor: their texts and parameters. The blanks in the
/// texts, and the category's size that differs between insert and update, are those that hosts
/// which watch their statements know.
namespace ktrv::data::FolderQueries {

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

const std::vector<CommandText>& All();

}  // namespace ktrv::data::FolderQueries
