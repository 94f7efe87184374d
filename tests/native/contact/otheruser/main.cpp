// Another user's process, which works with one contact through the contact editor and ends:
//   otheruser CONNECTION edit ID CITY    gives the contact another city
//   otheruser CONNECTION add NAME        adds a contact
//   otheruser CONNECTION delete ID       deletes the contact
// Ends with 0 when that is done.
#include <cstdio>
#include <memory>
#include <string_view>
#include <vector>

#include "database/odbc/OdbcDriver.h"
#include "forms/contact/frmNewContact.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::tests {
namespace {

using Arguments = std::vector<String>;

bool Save(Workplace place, const Arguments& arguments) {
  const bool edits = arguments[1] == u"edit";
  forms::ContactRequest request;
  if (edits) {
    request.EditContactId = arguments[2];
    request.Mode = ModeOfOperation::Modify;
  }
  forms::frmNewContact form(std::move(place), request);
  form.Load();
  edits ? form.txtCity.SetText(arguments.at(3)) : form.txtFname.SetText(arguments[2]);
  form.cmdSave.UserClicks();
  return !form.IsLoaded();
}

bool Delete(BookDatabase& database, const Arguments& arguments) {
  database.Renew();
  return database.Open().Execute(u"DELETE FROM SMS_ABCONTACTS WHERE ID = " + arguments[2]) == 1;
}

bool Work(const Arguments& arguments) {
  ktrv::database::OdbcDriver driver;
  ScriptedScreen screen;
  FakeOperatingSystem system;
  Services services(screen, system);
  services.LogFilePath = u"log";
  BookDatabase database(
      {[&](StringView) -> ktrv::database::Driver& { return driver; }, screen.Dispatcher.Post()});
  database.ConnectionString = arguments.at(0);
  if (arguments.at(1) == u"delete") return Delete(database, arguments);
  if (Save({services, database.Another(), {}}, arguments)) return true;
  std::fputs(ToUtf8(system.TextOf(u"log")).c_str(), stderr);
  return false;
}

}  // namespace
}  // namespace ktrv::tests

int main(int argc, char** argv) {
  using namespace ktrv;
  tests::Arguments arguments;
  for (int index = 1; index < argc; ++index) arguments.push_back(FromUtf8(argv[index]));
  try {
    return tests::Work(arguments) ? 0 : 1;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "otheruser: %s\n", failure.what());
    return 1;
  }
}
