#pragma once

#include <optional>

#include "common/Text.h"
#include "services/Enumerations.h"

namespace ktrv::forms {

/// Arguments of the folder editor.
struct FolderRequest {
  ModeOfOperation Mode = ModeOfOperation::Add;
  TypeOfFolder FolderType = TypeOfFolder::SharedFolder;
  String FolderIdText = {};  ///< decimal id of the folder to edit
};

/// A saved folder, as stored in its row.
struct SavedFolder {
  String Id;
  String Name;
  String Type;
  String Category;
};

/// Result of the folder editor.
struct FolderResult {
  TypeOfFolder FolderType;           ///< selected by the check box
  std::optional<SavedFolder> Saved;  ///< nullopt if closed without saving
};

}  // namespace ktrv::forms
