#pragma once

#include <cstdint>

/// Enumerations of the published interface, with its misspelt names.
namespace ktrv {

enum class RunApplicationAt : std::int32_t { RuntAtClient = 0, RuntAtServer = 1 };
enum class ModeOfOperation : std::int32_t { Add = 0, Modify = 1 };
enum class TypeOfContact : std::int32_t { LocalContact = 0, SharedContact = 1 };
enum class UserType : std::int32_t { GeneralUser = 0, Administrator = 1 };
enum class TypeOfGroup : std::int32_t { LocalGroup = 0, SharedGroup = 1 };
enum class LoadGroupFor : std::int32_t { AddModify = 0, SelectReceipient = 1 };
enum class TypeOfFolder : std::int32_t {
  LocalFolder = 0,
  SharedFolder = 1,
  SharedRemoteFolder = 2
};

}  // namespace ktrv
