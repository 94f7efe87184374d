#pragma once

#include <optional>

#include "common/Text.h"
#include "services/Enumerations.h"

namespace ktrv::forms {

/// What the folder editor is opened for.
struct FolderRequest {
  ModeOfOperation Mode = ModeOfOperation::Add;
  TypeOfFolder FolderType = TypeOfFolder::SharedFolder;
  String FolderIdText = {};  ///< decimal, of the folder to edit
};

/// A folder as its row has it.
struct SavedFolder {
  String Id;
  String Name;
  String Type;
  String Category;
};

/// What the folder editor leaves.
struct FolderResult {
  TypeOfFolder FolderType;           ///< follows the check box
  std::optional<SavedFolder> Saved;  ///< nothing when it was closed without saving
};

}  // namespace ktrv::forms
