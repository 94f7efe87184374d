#include "tests/adoserver/Refusal.h"

#include "database/DataError.h"

namespace ktrv::adoserver {
namespace {

String Description(std::int32_t number) {
  switch (number) {
    case kIllegalOperation:
      return u"Operation is not allowed in this context.";
    case kObjectInCollection:
      return u"Object is already in collection. Cannot append.";
    case ErrorNumber::StillExecuting:
      return u"Operation cannot be performed while executing asynchronously.";
    case kProviderNotFound:
      return u"Provider cannot be found. It may not be properly installed.";
    case kInvalidParameter:
      return u"Parameter object is improperly defined. Inconsistent or incomplete information was "
             u"provided.";
    case kParameterWithoutValue:
      return u"No value given for one or more required parameters.";
    case kCannotConvert:
      return u"Multiple-step operation generated errors. Check each status value.";
    default:
      return database::DataError(number).Description();
  }
}

}  // namespace

Error Refusal(std::int32_t number) {
  return Error(number, Description(number), u"ADODB");
}

}  // namespace ktrv::adoserver
