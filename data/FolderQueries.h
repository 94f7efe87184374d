#pragma once

#include <vector>

#include "data/CommandText.h"

/// The prepared statements of the folder editor. Hosts that trace statements match them, so the
/// irregular blanks stay, and so do the different sizes of the category in insert and update.
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
