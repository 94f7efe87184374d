#include "database/DataError.h"

namespace ktrv::database {
namespace {

StringView Description(std::int32_t number) {
  switch (number) {
    case ErrorNumber::InvalidArgument:
      return u"Arguments are of the wrong type, are out of acceptable range, or are in conflict "
             u"with one another.";
    case ErrorNumber::NoCurrentRecord:
      return u"Either BOF or EOF is True, or the current record has been deleted. Requested "
             u"operation requires a current record.";
    case ErrorNumber::NotUpdatable:
      return u"Current Recordset does not support updating. This may be a limitation of the "
             u"provider, or of the selected locktype.";
    case ErrorNumber::ItemNotFound:
      return u"Item cannot be found in the collection corresponding to the requested name or "
             u"ordinal.";
    case ErrorNumber::DataConversion:
      return u"Application uses a value of the wrong type for the current operation.";
    case ErrorNumber::ObjectClosed:
      return u"Operation is not allowed when the object is closed.";
    case ErrorNumber::ObjectOpen:
      return u"Operation is not allowed when the object is open.";
    case ErrorNumber::InvalidConnection:
      return u"The connection cannot be used to perform this operation. It is either closed or "
             u"invalid in this context.";
    case ErrorNumber::OperationCancelled:
      return u"Operation has been cancelled by the user.";
    case ErrorNumber::NoCommandText:
      return u"Command text was not set for the command object.";
    case ErrorNumber::TimedOut:
      return u"Query timeout expired";
    case ErrorNumber::RowChanged:
      return u"Row cannot be located for updating. Some values may have been changed since it was "
             u"last read.";
    case ErrorNumber::RowGone:
      return u"Key value for this row was changed or deleted at the data store. The local row is "
             u"now deleted.";
    default:
      return u"The operation failed.";
  }
}

}  // namespace

Error DataError(std::int32_t number) {
  return Error(number, String(Description(number)));
}

}  // namespace ktrv::database
