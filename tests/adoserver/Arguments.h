#pragma once

#include "database/ado/Value.h"

namespace ktrv::adoserver {

using database::ado::Value;

/// The arguments of a call in their order; what is behind the last or left out is missing.
class Arguments {
 public:
  explicit Arguments(const DISPPARAMS& passed) : passed_(passed) {}

  bool Has(UINT index) const;
  /// The argument, followed when it is a reference to a variant. \pre Has(index)
  const VARIANT& At(UINT index) const;

  // All refuse a value of another type with InvalidArgument.
  String Text(UINT index) const;
  std::int32_t Number(UINT index) const;
  std::int32_t Number(UINT index, std::int32_t otherwise) const;
  IDispatch* Object(UINT index) const;

  /// Gives the number to a caller who wants it. Refuses a plain value.
  void Return(UINT index, LONG number) const;

 private:
  VARIANT* Passed(UINT index) const;

  const DISPPARAMS& passed_;
};

}  // namespace ktrv::adoserver
