#pragma once

#include <cstdint>

/// The constants of ADO that the driver needs.
namespace ktrv::database::ado {

/// Data types of fields and parameters.
namespace AdoType {
inline constexpr std::int32_t SmallInt = 2;
inline constexpr std::int32_t Integer = 3;
inline constexpr std::int32_t Single = 4;
inline constexpr std::int32_t Double = 5;
inline constexpr std::int32_t Currency = 6;
inline constexpr std::int32_t Date = 7;
inline constexpr std::int32_t Boolean = 11;
inline constexpr std::int32_t Decimal = 14;
inline constexpr std::int32_t TinyInt = 16;
inline constexpr std::int32_t UnsignedTinyInt = 17;
inline constexpr std::int32_t UnsignedSmallInt = 18;
inline constexpr std::int32_t UnsignedInt = 19;
inline constexpr std::int32_t BigInt = 20;
inline constexpr std::int32_t UnsignedBigInt = 21;
inline constexpr std::int32_t Char = 129;
inline constexpr std::int32_t WChar = 130;
inline constexpr std::int32_t Numeric = 131;
inline constexpr std::int32_t DbDate = 133;
inline constexpr std::int32_t DbTimeStamp = 135;
inline constexpr std::int32_t VarNumeric = 139;
inline constexpr std::int32_t VarChar = 200;
inline constexpr std::int32_t LongVarChar = 201;
inline constexpr std::int32_t VarWChar = 202;
inline constexpr std::int32_t LongVarWChar = 203;
}  // namespace AdoType

/// Bits of an object's State.
namespace AdoState {
inline constexpr std::int32_t Closed = 0;
inline constexpr std::int32_t Open = 1;
inline constexpr std::int32_t Executing = 4;
}  // namespace AdoState

inline constexpr std::int32_t kCommandText = 1;      // adCmdText
inline constexpr std::int32_t kAsyncExecute = 0x10;  // adAsyncExecute
inline constexpr std::int32_t kInput = 1;            // adParamInput
inline constexpr std::int32_t kFieldIsLong = 0x80;   // adFldLong
inline constexpr std::int32_t kPrimaryKeys = 28;     // adSchemaPrimaryKeys

}  // namespace ktrv::database::ado
